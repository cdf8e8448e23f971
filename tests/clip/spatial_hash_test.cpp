// The grid against a linear scan, and what a scan can't see: who owns the objects, the order of an answer, and the
// limits between the places of an object and between the kinds of query.

#include <geometry/clip/spatial_hash_container.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include <geometry/path/path_object_polyline.h>
#include <gtest/gtest.h>

namespace geometry
{

namespace
{

using Rect = CBoundingRect<double>;
using Objects = std::vector<CPathObjectBase*>;
using Token = std::shared_ptr<int>;

constexpr double Cell = 2000000.0;

/// A diagonal that holds a token while it lives.
struct SDiagonal : CPathObjectPolyline
{
    explicit SDiagonal(Rect const & rect, Token token = nullptr)
        : CPathObjectPolyline({rect.minX, rect.minY}, {rect.maxX, rect.maxY}), m_Token(std::move(token))
    {
    }
    Token m_Token;
};

Objects Query(CPathObjectHash const & hash, Rect const & rect)
{
    Objects out;
    hash.GetObjectsInRect(rect, out);
    return out;
}

} // namespace

TEST(SpatialHash, CellsAndCandidatesOfOneObject)
{
    double const huge = 1e300, nan = std::nan("");
    struct SRow
    {
        char const* m_Name;
        Rect m_Object;
        std::pair<int, int> m_Columns;
        Rect m_Query;
        std::size_t m_Found;
    } const rows[] = {
        {"CellZeroIsTwiceAsWide", {1 - Cell, -1, Cell - 1, 1}, {0, 0}, {Cell - 1, 0, Cell, 9}, 1},
        {"SideOnTheGrid", {0, 0, Cell, 0}, {0, 1}, {-5, -5, Cell + 5, 5}, 1},
        {"NegativeSideOnTheGrid", {-Cell, -3 * Cell, -1, 0}, {-1, 0}, {-9, -9, 9, 9}, 1},
        {"LessThanOneApartIsCandidate", {0, 0, 9.2, 9}, {0, 0}, {9.7, 0, 12, 9}, 1},
        {"OneApartIsNot", {0, 0, 9, 9}, {0, 0}, {10, 0, 12, 9}, 0},
        {"LargeIsFoundAnywhere", {0, 0, 101 * Cell, 101 * Cell}, {0, 101}, {7e7, 7e7, 7e7, 7e7}, 1},
        {"BeyondIntegers", {-huge, -huge, huge, huge}, {-1073, 1073}, {-huge, 5, huge, huge}, 1},
        {"FarCorner", {huge, huge, huge, huge}, {1073, 1073}, {huge, huge, huge, huge}, 1},
        {"NaNQueryEnds", {5, 5, 9, 9}, {0, 0}, {nan, nan, nan, nan}, 0},
    };
    for (auto const & row : rows)
    {
        SCOPED_TRACE(row.m_Name);
        CPathObjectHash hash;
        hash.Add(new SDiagonal(row.m_Object));
        EXPECT_EQ(std::pair(hash.GetCellRange().minX, hash.GetCellRange().maxX), row.m_Columns);
        EXPECT_EQ(Query(hash, row.m_Query).size(), row.m_Found);
        std::unique_ptr<CPathObjectBase> const taken(hash.Remove(hash.GetObjects().front()));
        EXPECT_TRUE(taken && hash.IsEmpty() && Query(hash, row.m_Query).empty());
    }
}

TEST(SpatialHash, AgreesWithALinearScan)
{
    std::mt19937 random(20240521);
    std::uniform_real_distribution<double> position(-40 * Cell, 40 * Cell), exponent(0.0, 8.4);
    auto const nextRect = [&]
    {
        double const x = position(random), y = position(random);
        return Rect(x, y, x + std::pow(10.0, exponent(random)), y + std::pow(10.0, exponent(random)));
    };
    CPathObjectHash hash;
    for (int i = 0; i < 300; ++i)
    {
        hash.Add(new SDiagonal(nextRect()));
    }
    for (int round = 0; hash.GetObjects().size() > 5; ++round) // down to where a wide query walks no cells
    {
        Rect const rect = nextRect();
        Objects found = Query(hash, rect), expected;
        std::copy_if(hash.GetObjects().begin(), hash.GetObjects().end(), std::back_inserter(expected),
                     [&](auto* object)
                     { return ToIntegerRect(object->GetBoundingRect()).Overlaps(ToIntegerRect(rect)); });
        std::sort(found.begin(), found.end());
        std::sort(expected.begin(), expected.end());
        ASSERT_EQ(found, expected) << "round " << round; // none twice, none missing
        if (round % 3 == 0)
        {
            delete hash.Remove(hash.GetObjects()[random() % hash.GetObjects().size()]);
            round % 2 == 0 ? hash.RecalculateCellRange() : void();
        }
    }
}

TEST(SpatialHash, OwnsFromAddToRemoveOrClear)
{
    auto const token = std::make_shared<int>(0);
    auto const mine = std::make_unique<SDiagonal>(Rect(0, 0, 1, 1), token);
    {
        CPathObjectHash hash;
        hash.Add(nullptr);
        hash.Add(mine.get());
        hash.Clear();
        EXPECT_TRUE(hash.IsEmpty() && hash.GetCellRange().minX > hash.GetCellRange().maxX);
        hash.Add(new SDiagonal(Rect(5 * Cell, 0, 9 * Cell, Cell), token));
        hash.Add(mine.get());
        hash.Add(mine.get());
        EXPECT_EQ(hash.GetObjects().size(), 2U);
        EXPECT_TRUE(hash.Remove(mine.get()) == mine.get() && hash.Remove(mine.get()) == nullptr);
        EXPECT_EQ(hash.GetCellRange().minX, 0); // until it is formed anew
        hash.RecalculateCellRange();
        EXPECT_EQ(hash.GetCellRange().minX, 5);
    }
    EXPECT_EQ(token.use_count(), 2);
}

// An object of several cells comes before one of a single cell, a large one after it.
TEST(SpatialHash, LargeBeginsAboveTenThousandByTheDifferences)
{
    using Row = std::pair<Rect, bool>;
    for (auto const & [rect, isLarge] :
         {Row({0, 0, 100 * Cell, 100 * Cell}, false), Row({0, 0, 101 * Cell, 101 * Cell}, true),
          Row({0, -1073 * Cell, 0, 1073 * Cell}, false)})
    {
        CPathObjectHash hash;
        hash.Add(new SDiagonal(rect));
        hash.Add(new SDiagonal(Rect(0, 0, 1, 1)));
        EXPECT_EQ(Query(hash, Rect(0, 0, 1, 1)).front(), hash.GetObjects()[isLarge ? 1 : 0]);
    }
}

// 999 cells and fewer, or 11 objects and more: cell by cell. Else in adding order, whatever the addresses.
TEST(SpatialHash, OrderOfAnAnswer)
{
    CPathObjectHash hash;
    Objects byColumn(11);
    for (int i = 0; i < 11; ++i)
    {
        double const column = i * 3 % 11;
        hash.Add(new SDiagonal(Rect(-2 * Cell * column, 0, -2 * Cell * column + 1, 1)));
        byColumn[10 - i * 3 % 11] = hash.GetObjects().back();
    }
    Rect const narrow(-998 * Cell, 0, 0, 9), wide(-999 * Cell, 0, 0, 9);
    EXPECT_EQ(Query(hash, narrow), byColumn);
    EXPECT_EQ(Query(hash, wide), byColumn);
    std::unique_ptr<CPathObjectBase> const taken(hash.Remove(byColumn.front()));
    byColumn.erase(byColumn.begin());
    EXPECT_EQ(Query(hash, narrow), byColumn);
    EXPECT_EQ(Query(hash, wide), hash.GetObjects());
}

} // namespace geometry
