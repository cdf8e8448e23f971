// The search structures against loops over everything, with rectangles in chains and in no order.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include <geometry/path/path_object_polyline.h>

#include "numeric/nearby_pieces.h"
#include "numeric/scatter_index.h"
#include "path/split_helpers.h"

namespace geometry
{

namespace
{

using Rects = std::vector<CBoundingRect<double>>;

/// Each within a few steps of the one before it, or anywhere; some large.
Rects MakeRects(std::mt19937 & random, std::size_t count, bool isChain)
{
    auto const upTo = [&](int most) { return std::uniform_int_distribution<int>(0, most)(random); };
    Rects rects;
    for (int x = 0, y = 0; rects.size() < count; x = isChain ? x + upTo(8) - 3 : upTo(400), y += upTo(8) - 4)
    {
        int const size = upTo(40) == 0 ? 300 : 5;
        rects.emplace_back(x, y, x + upTo(size), y + upTo(size));
    }
    return rects;
}

template <typename Number, typename Passes>
std::vector<Number> Filtered(Rects const & rects, Passes const & passes)
{
    std::vector<Number> found;
    for (std::size_t i = 0; i < rects.size(); ++i)
        if (passes(rects[i])) found.push_back(static_cast<Number>(i));
    return found;
}

TEST(Index, FindsWhatLoopsFindInTheirOrder)
{
    std::mt19937 random(20);
    for (std::size_t const count : {1, 7, 8, 9, 64, 65, 600})
    {
        Rects const rects = MakeRects(random, count, true);
        Rects const queries = MakeRects(random, 200, true);
        CChainIndex const index(rects);
        CNearbyPieces nearby(index);
        Rects const loose = MakeRects(random, count, false);
        CScatterIndex const scattered(loose);
        for (std::size_t i = 0; i < queries.size(); ++i)
        {
            CBoundingRect<double> const & query = queries[i];
            if (i % CNearbyPieces::BlockSize == 0)
            {
                CBoundingRect<double> around;
                std::size_t const end = std::min(i + CNearbyPieces::BlockSize, queries.size());
                std::for_each(&queries[i], &queries[0] + end, [&](auto const & rect) { around.Include(rect); });
                nearby.LookUp(around);
            }
            auto const overlaps = [&](CBoundingRect<double> const & rect) { return query.Overlaps(rect); };
            auto const meets = [&](CBoundingRect<double> const & r)
            { return r.minX <= query.maxX && r.maxX >= query.minX && r.minY <= query.maxY && r.maxY >= query.minY; };
            auto const isAround = [&](CBoundingRect<double> const & rect) { return rect.ContainsRect(query); };
            auto const searched = [&](auto const & passes)
            {
                std::vector<std::size_t> found;
                nearby.Search(passes, [&](std::size_t k) { found.push_back(k); });
                return found;
            };
            ASSERT_EQ(searched(overlaps), Filtered<std::size_t>(rects, overlaps)) << count;
            ASSERT_EQ(searched(isAround), Filtered<std::size_t>(rects, isAround)) << count;
            ASSERT_EQ(scattered.Find(query), Filtered<std::uint32_t>(loose, meets)) << count;
        }
    }
}

TEST(Index, EntriesOfCutsAreFoundAgainInAnyOrder)
{
    std::mt19937 random(21);
    CPathObjectPolyline line;
    for (int i = 0; i < 3000; ++i)
        line.AddVertex(i, i % 2);
    auto const points = line.GetPointsBegin();
    CPathObjectBase::SplitPositionList list;
    CSplitEntryFinder const finder;
    for (int round = 0, at = 0; round < 20000; ++round)
    {
        int const step = std::uniform_int_distribution<int>(-20, 20)(random);
        at = round % 50 == 0 ? std::uniform_int_distribution<int>(0, 2998)(random) : std::clamp(at + step, 0, 2998);
        auto & entry = FindOrAddSplitEntry(list, points + at, points + at + 1, line.GetPointsEnd());
        ASSERT_EQ(entry.first.first - points, at);
        entry.second.emplace_back(round, at);
    }
    std::size_t cuts = 0;
    auto const isBefore = [](auto const & a, auto const & b) { return a.first.first < b.first.first; };
    ASSERT_EQ(
        std::adjacent_find(list.begin(), list.end(), [&](auto const & a, auto const & b) { return !isBefore(a, b); }),
        list.end());
    for (auto const & entry : list)
    {
        cuts += entry.second.size();
        for (auto const & cut : entry.second)
            ASSERT_EQ(cut.y, entry.first.first - points);
    }
    EXPECT_EQ(cuts, 20000U);
}

} // namespace

} // namespace geometry
