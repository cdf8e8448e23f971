// The polyline as an object: clean-up, joins, its relations to points and other polylines, cutting.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "path/segment_kernels.h"
#include "path/split_helpers.h"
#include "support/builders.h"

namespace geometry
{
namespace
{

using test::Line;
using test::Point;
using test::RectLine;
using test::Vertices;
using Path = std::vector<Point>;

constexpr double inf = std::numeric_limits<double>::infinity();

std::unique_ptr<CPathObjectPolyline> LineOf(Path const & path)
{
    auto line = std::make_unique<CPathObjectPolyline>();
    for (Point const & p : path)
    {
        line->AddVertex(p.x, p.y);
    }
    return line;
}

TEST(PolylineCleanup, RemovesDuplicatesSpikesAndCollinearVertices)
{
    struct TCase
    {
        char const* name;
        Path before;
        bool mayRemoveStart;
        Path after;
    };
    TCase const cases[] = {
        {"collinear", {{0, 0}, {1, 1}, {2, 2}}, false, {{0, 0}, {2, 2}}},
        {"duplicate", {{0, 0}, {0, 0}, {1, 0}}, false, {{0, 0}, {1, 0}}},
        {"spike alone", {{0, 0}, {1, 0}, {0, 0}}, false, {{0, 0}}},
        {"spike, pair before looked at again",
         {{0, 0}, {1, 0}, {1, 1}, {1, 0}, {2, 5}},
         false,
         {{0, 0}, {1, 0}, {2, 5}}},
        {"nested spikes", {{0, 0}, {1, 0}, {1, 1}, {3, 2}, {1, 1}, {1, 0}, {5, 5}}, false, {{0, 0}, {1, 0}, {5, 5}}},
        {"fold back on a slope without sign", {{0, 0}, {2, 0}, {1, 0}}, false, {{0, 0}, {1, 0}}},
        {"fold back on a vertical stays", {{0, 0}, {0, 2}, {0, 1}}, false, {{0, 0}, {0, 2}, {0, 1}}},
        {"vertical", {{0, 0}, {0, 1}, {0, 2}, {1, 2}}, false, {{0, 0}, {0, 2}, {1, 2}}},
        {"rounding doesn't hide a vertical", {{1, 0}, {1 + 4e-16, 1}, {1, 2}}, false, {{1, 0}, {1, 2}}},
        {"start in an edge stays",
         {{1, 0}, {2, 0}, {2, 2}, {0, 2}, {0, 0}, {1, 0}},
         false,
         {{1, 0}, {2, 0}, {2, 2}, {0, 2}, {0, 0}, {1, 0}}},
        {"start in an edge goes when it may",
         {{1, 0}, {2, 0}, {2, 2}, {0, 2}, {0, 0}, {1, 0}},
         true,
         {{2, 0}, {2, 2}, {0, 2}, {0, 0}, {2, 0}}},
        {"all on one line, closed", {{0, 0}, {1, 0}, {3, 0}, {0, 0}}, true, {{3, 0}}},
        {"empty", {}, true, {}},
        {"single", {{4, 5}}, true, {{4, 5}}},
    };
    for (TCase const & c : cases)
    {
        auto const line = LineOf(c.before);
        line->Cleanup(c.mayRemoveStart);
        Path const after = Vertices(*line);
        EXPECT_EQ(after, c.after) << c.name;
        CPathObjectPolyline fresh(*line);
        fresh.RecalculateBoundingRect();
        EXPECT_EQ(line->GetBoundingRect().maxX, fresh.GetBoundingRect().maxX) << c.name;
        EXPECT_EQ(line->GetBoundingRect().maxY, fresh.GetBoundingRect().maxY) << c.name;
    }
}

TEST(Polyline, ArgumentsMayReferIntoTheObject)
{
    CPathObjectPolyline line({1.0, 2.0}, {3.0, 4.0});
    for (int i = 0; i < 20; ++i)
    {
        line.AddVertex(line.GetStartPoint().x, line.GetStartPoint().y);
        line.InsertVertex(0, line.GetEndPoint().x, line.GetEndPoint().y);
        line.AppendVertex(line.GetStartPoint());
        line.PrependVertex(line.GetEndPoint());
    }
    for (Point const & p : Vertices(line))
    {
        EXPECT_TRUE(p == Point(1.0, 2.0) || p == Point(3.0, 4.0));
    }
    line.RemoveVertex(1000);
    EXPECT_EQ(Vertices(line).size(), 82U);
}

TEST(SegmentKernels, IntersectionsOfTwoSegments)
{
    struct TCase
    {
        char const* name;
        Point a0, a1, b0, b1;
        bool ends;
        Path expected;
    };
    TCase const cases[] = {
        {"crossing", {0, 0}, {2, 2}, {0, 2}, {2, 0}, false, {{1, 1}, {1, 1}}},
        {"overlap, two inner ends", {0, 0}, {4, 0}, {1, 0}, {9, 0}, true, {{1, 0}, {4, 0}}},
        {"overlap, end not counted", {0, 0}, {4, 0}, {1, 0}, {9, 0}, false, {{1, 0}, {1, 0}}},
        {"touching ends count", {0, 0}, {1, 0}, {1, 0}, {2, 0}, true, {{1, 0}, {1, 0}}},
        {"touching end of a doesn't count", {0, 0}, {1, 0}, {1, 0}, {2, 0}, false, {}},
        {"end of b on the inside of a", {0, 0}, {2, 0}, {1, 1}, {1, 0}, false, {}},
        {"start of b on the inside of a", {0, 0}, {2, 0}, {1, 0}, {1, 1}, false, {{1, 0}, {1, 0}}},
        {"parallel", {0, 0}, {2, 0}, {0, 1}, {2, 1}, true, {}},
        {"same", {0, 0}, {2, 1}, {0, 0}, {2, 1}, true, {{0, 0}, {2, 1}}},
        {"reversed", {0, 0}, {2, 1}, {2, 1}, {0, 0}, false, {}},
    };
    for (TCase const & c : cases)
    {
        Point first;
        Point second;
        bool const found = IntersectSegments(c.a0, c.a1, c.b0, c.b1, c.ends, c.ends, first, second);
        EXPECT_EQ(found, !c.expected.empty()) << c.name;
        if (found && !c.expected.empty())
        {
            EXPECT_EQ((Path{first, second}), c.expected) << c.name;
        }
    }
}

TEST(PolylineRelations, DistanceAgreesWithSamplesAndIsSymmetric)
{
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> place(-10.0, 10.0);
    for (int round = 0; round < 200; ++round)
    {
        CPathObjectPolyline a;
        CPathObjectPolyline b;
        for (int i = 0; i < 4; ++i)
        {
            a.AddVertex(place(random), place(random));
            b.AddVertex(place(random) + 15.0, place(random));
        }
        Point onA, onB, backB, backA;
        double const distance = a.SquareDistanceToPath(b, onA, onB);
        EXPECT_NEAR(distance, b.SquareDistanceToPath(a, backB, backA), 1e-10);
        EXPECT_NEAR(distance, SquareDistance(onA, onB), 1e-10);
        double sampled = inf;
        Path const p = Vertices(a);
        for (std::size_t i = 1; i < p.size(); ++i)
        {
            for (double t = 0.0; t <= 1.0; t += 1.0 / 256)
            {
                Point closest;
                sampled = std::min(sampled, b.SquareDistanceToPoint(p[i - 1].x + t * (p[i].x - p[i - 1].x),
                                                                    p[i - 1].y + t * (p[i].y - p[i - 1].y), closest));
            }
        }
        EXPECT_LE(distance, sampled + 1e-12);
        EXPECT_NEAR(std::sqrt(distance), std::sqrt(sampled), 0.12) << "half a sampling step";
    }
}

TEST(PolylineRelations, ProbeLineIsHalfOpenAndWindingSigned)
{
    auto const square = RectLine(0, 0, 1, 1);
    struct TCase
    {
        Point point;
        unsigned int crossings;
    };
    for (TCase const & c :
         {TCase{{0.5, 0.5}, 1}, {{0.5, -1}, 2}, {{0.5, 2}, 0}, {{0, 0.5}, 1}, {{1, 0.5}, 0}, {{0.5, 1}, 0}})
    {
        EXPECT_EQ(square->IntersectWithVerticalProbeLine(c.point), c.crossings) << c.point.x << ' ' << c.point.y;
    }
    EXPECT_EQ(square->WindAroundPoint({0.5, 0.5}), 1U);
    square->Reverse();
    EXPECT_EQ(square->WindAroundPoint({0.5, 0.5}), 0xFFFFFFFFU);
    EXPECT_EQ(square->WindAroundPoint({1.5, 0.5}), 0U);
}

using Pieces = std::vector<CPathObjectBase::SplitPiece>;

std::string Cut(CPathObjectPolyline const & line, CPathObjectBase::SplitPositionList const & list)
{
    Pieces pieces;
    line.DoSplits(list, pieces);
    std::string flags;
    Path track;
    for (auto const & piece : pieces)
    {
        std::unique_ptr<CPathObjectBase> const owned(piece.first);
        flags += static_cast<char>('0' + piece.second);
        EXPECT_TRUE(track.empty() || track.back() == owned->GetStartPoint()) << "pieces lie end to end";
        for (Point const & p : Vertices(*owned))
        {
            track.push_back(p);
        }
    }
    if (!pieces.empty())
    {
        auto const retraced = LineOf(track);
        retraced->Cleanup(false);
        CPathObjectPolyline original(line);
        original.Cleanup(false);
        EXPECT_EQ(Vertices(*retraced), Vertices(original)) << "the pieces retrace the polyline";
    }
    return flags;
}

TEST(PolylineSplit, FlagsTellHowEachPieceBegins)
{
    struct TCase
    {
        char const* name;
        Path mine, theirs;
        char const* myFlags;
        char const* theirFlags;
    };
    TCase const cases[] = {
        {"crossing inside both", {{0, 0}, {2, 2}}, {{0, 2}, {2, 0}}, "01", "01"},
        {"at an inner vertex", {{0, 0}, {1, 0}, {2, 1}}, {{1, -1}, {1, 1}}, "03", "01"},
        {"at the first vertex", {{1, 0}, {2, 1}}, {{1, -1}, {1, 1}}, "3", "01"},
        {"at the last vertex nothing", {{0, 0}, {1, 0}}, {{1, -1}, {1, 1}}, "", ""},
        {"two on one segment", {{0, 0}, {9, 0}}, {{5, 1}, {5, -1}, {2, -1}, {2, 1}}, "011", "011"},
        {"overlap", {{0, 0}, {9, 0}}, {{2, 1}, {2, 0}, {5, 0}, {5, 1}}, "011", "033"},
        {"apart", {{0, 0}, {1, 1}}, {{5, 5}, {6, 6}}, "", ""},
    };
    for (TCase const & c : cases)
    {
        auto const mine = LineOf(c.mine);
        auto const theirs = LineOf(c.theirs);
        CPathObjectBase::SplitPositionList myList, theirList;
        auto const found = mine->DetermineSplitPositions(*theirs, myList, theirList);
        EXPECT_EQ(found == CPathObjectBase::eSplitPositionsFound, !myList.empty()) << c.name;
        EXPECT_EQ(Cut(*mine, myList), c.myFlags) << c.name;
        EXPECT_EQ(Cut(*theirs, theirList), c.theirFlags) << c.name;
    }
}

} // namespace
} // namespace geometry
