// The grid against a linear scan, and what a scan can't see: who owns the objects, the order of an answer, and the
// limits between the places of an object and between the kinds of query.

#include <geometry/clip/spatial_hash_container.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>

#include <geometry/path/path_object_polyline.h>
#include <gtest/gtest.h>

namespace geometry
{

namespace
{

using Rect = CBoundingRect<double>;
using Objects = std::vector<CPathObjectBase*>;

constexpr double Cell = 2000000.0;

struct SDiagonal : CPathObjectPolyline
{
    static inline int living = 0;
    explicit SDiagonal(Rect const & r) : CPathObjectPolyline({r.minX, r.minY}, {r.maxX, r.maxY}) { ++living; }
    ~SDiagonal() override { --living; }
};

Objects Query(CPathObjectHash const & hash, Rect const & rect)
{
    Objects out;
    hash.GetObjectsInRect(rect, out);
    return out;
}

} // namespace

// In an answer an object of several cells comes before one of a single cell, a large one after it: large begins above
// ten thousand cells by the differences.
TEST(SpatialHash, CellsAndCandidatesOfOneObject)
{
    using Row = std::tuple<char const*, Rect, std::pair<int, int>, Rect, std::size_t, bool>;
    for (auto const & [name, object, columns, query, found, isLarge] :
         {Row{"CellZeroIsTwiceAsWide", {1 - Cell, -1, Cell - 1, 1}, {0, 0}, {Cell - 1, 0, Cell, 9}, 1, false},
          Row{"NegativeSideOnTheGrid", {-Cell, -3 * Cell, -1, 0}, {-1, 0}, {-9, -9, 9, 9}, 1, false},
          Row{"LessThanOneApartIsCandidate", {0, 0, 9.2, 9}, {0, 0}, {9.7, 0, 12, 9}, 1, false},
          Row{"OneApartIsNot", {0, 0, 9, 9}, {0, 0}, {10, 0, 12, 9}, 0, false},
          Row{"TenThousandIsNotLarge", {0, 0, 100 * Cell, 100 * Cell}, {0, 100}, {7e7, 7e7, 7e7, 7e7}, 1, false},
          Row{"OneColumnIsNotLarge", {0, -1073 * Cell, 0, 1073 * Cell}, {0, 0}, {0, 7e7, 0, 7e7}, 1, false},
          Row{"LargeIsFoundAnywhere", {0, 0, 101 * Cell, 101 * Cell}, {0, 101}, {7e7, 7e7, 7e7, 7e7}, 1, true},
          Row{"BeyondIntegers", {-1e300, -1e300, 1e300, 1e300}, {-1073, 1073}, {-1e300, 5, 1e300, 1e300}, 1, true},
          Row{"NaNQueryEnds", {5, 5, 9, 9}, {0, 0}, {NAN, NAN, NAN, NAN}, 0, false}})
    {
        CPathObjectHash hash;
        hash.Add(new SDiagonal(object));
        EXPECT_EQ(std::pair(hash.GetCellRange().minX, hash.GetCellRange().maxX), columns) << name;
        EXPECT_EQ(Query(hash, query).size(), found) << name;
        hash.Add(new SDiagonal(Rect(0, 0, 1, 1)));
        EXPECT_EQ(Query(hash, Rect(0, 0, 1, 1)).back() == hash.GetObjects()[0], isLarge) << name;
    }
    EXPECT_EQ(SDiagonal::living, 0);
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
    hash.Add(nullptr);
    for (int i = 0; i < 300; ++i)
    {
        hash.Add(new SDiagonal(nextRect()));
        hash.Add(hash.GetObjects()[0]); // has it already
    }
    while (hash.GetObjects().size() > 1) // down to where a wide query walks no cells
    {
        Rect const rect = nextRect();
        Objects const found = Query(hash, rect);
        for (auto const* object : hash.GetObjects())
        {
            bool const isIn = ToIntegerRect(object->GetBoundingRect()).Overlaps(ToIntegerRect(rect));
            ASSERT_EQ(std::count(found.begin(), found.end(), object), isIn);
        }
        std::unique_ptr<CPathObjectBase> const taken(
            hash.Remove(hash.GetObjects()[random() % hash.GetObjects().size()]));
        EXPECT_TRUE(taken && !hash.Remove(taken.get()));
        hash.RecalculateCellRange();
    }
    std::unique_ptr<CPathObjectBase> const last(hash.GetObjects()[0]);
    hash.Clear(); // gives the objects up
    EXPECT_TRUE(hash.IsEmpty() && hash.GetCellRange().minX > hash.GetCellRange().maxX && SDiagonal::living == 1);
}

// 999 cells and fewer, or 11 objects and more: cell by cell. Else in adding order, whatever the addresses.
TEST(SpatialHash, OrderOfAnAnswer)
{
    CPathObjectHash hash;
    Objects byColumn(11);
    for (int const column : {0, 3, 6, 9, 1, 4, 7, 10, 2, 5, 8})
    {
        hash.Add(new SDiagonal(Rect(-2 * Cell * column, 0, -2 * Cell * column + 1, 1)));
        byColumn[10 - column] = hash.GetObjects().back();
    }
    Rect const narrow(-998 * Cell, 0, 0, 9), wide(-999 * Cell, 0, 0, 9);
    EXPECT_TRUE(Query(hash, narrow) == byColumn && Query(hash, wide) == byColumn);
    delete hash.Remove(byColumn.front());
    byColumn.erase(byColumn.begin());
    EXPECT_TRUE(Query(hash, narrow) == byColumn && Query(hash, wide) == hash.GetObjects());
}

} // namespace geometry
