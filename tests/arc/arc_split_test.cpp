// Cutting arcs: order of the cuts, which points are cuts at all, flags and pieces.
#include <algorithm>
#include <memory>

#include <gtest/gtest.h>

#include <geometry/path/path_object_polyline.h>

#include "arc/arc_samples.h"
#include "arc/arc_split.h"

using namespace arc_samples;
using geometry::CPathObjectArc;
using geometry::CPathObjectBase;
using geometry::CPathObjectPolyline;

namespace
{

using List = CPathObjectBase::SplitPositionList;

/// The pieces of one object, owned.
struct Pieces
{
    std::vector<std::unique_ptr<CPathObjectBase>> objects;
    std::string flags; // one digit a piece

    Pieces(CPathObjectBase const & object, List const & positions)
    {
        std::vector<CPathObjectBase::SplitPiece> made;
        object.DoSplits(positions, made);
        for (auto const & piece : made)
        {
            objects.emplace_back(piece.first);
            flags += static_cast<char>('0' + piece.second);
        }
    }
};

CPathObjectArc Upper(bool ccw = true)
{
    return CPathObjectArc(Point(ccw ? 5 : -5, 0), Point(ccw ? -5 : 5, 0), Point(), ccw);
}

} // namespace

TEST(ArcSplit, WhatIsACut)
{
    auto const arc = [](Point const & start, Point const & end, Point const & centre, bool ccw)
    { return std::shared_ptr<CPathObjectBase>(new CPathObjectArc(start, end, centre, ccw)); };
    auto const line = [](std::vector<Point> const & v)
    { return std::shared_ptr<CPathObjectBase>(new CPathObjectPolyline(v.begin(), v.end())); };
    struct Row
    {
        char const* name;
        std::shared_ptr<CPathObjectBase> other;
        bool found;
        char const* mine; // flags of the pieces of the upper half circle from (5, 0) to (-5, 0)
        char const* theirs;
    };
    Row const rows[] = {
        {"far away", arc({99, 0}, {98, 1}, {98, 0}, true), false, "", ""},
        {"crosses once", arc({3, 0}, {3, 8}, {3, 4}, true), true, "01", "01"},
        {"crosses twice", arc({-8, 3}, {8, 3}, {0, -72}, false), true, "011", "011"},
        {"touches inside both", arc({5, 10}, {-5, 10}, {0, 10}, false), true, "04", "04"},
        {"its end lies here", arc({3, 8}, {3, 4}, {3, 6}, false), true, "", ""},
        {"its start lies here", arc({3, 4}, {3, 8}, {3, 6}, true), true, "01", "3"},
        {"identical", arc({5, 0}, {-5, 0}, {0, 0}, true), true, "3", "3"},
        {"same track backward", arc({-5, 0}, {5, 0}, {0, 0}, false), true, "", ""},
        {"overlaps", arc({3, 4}, {-3, -4}, {0, 0}, true), true, "01", "3"},
        {"whole circle", arc({0, -5}, {0, -5}, {0, 0}, true), true, "3", "01"},
        {"line crosses twice", line({{-9, 3}, {9, 3}}), true, "011", "011"},
        {"line crosses once", line({{0, 1}, {0, 9}}), true, "01", "01"},
        {"tangent", line({{-5, 5}, {5, 5}}), false, "04", ""},
        {"tangent at its vertex", line({{-5, 5}, {0, 5}, {5, 9}}), true, "01", "03"},
        {"vertex on the arc", line({{3, 0}, {3, 4}, {9, 9}}), true, "01", "03"},
        {"last vertex on the arc", line({{3, 0}, {3, 4}}), false, "", ""},
        {"first vertex on the arc", line({{3, 4}, {3, 0}}), true, "01", "3"},
        {"through the start", line({{4, -1}, {6, 1}}), true, "3", "01"},
        {"through the end", line({{-4, -1}, {-6, 1}}), false, "", ""},
    };
    for (Row const & row : rows)
    {
        for (bool reversedRoles : {false, true})
        {
            CPathObjectArc const upper = Upper();
            CPathObjectBase const & base = upper;
            List mine, theirs;
            auto const result = reversedRoles ? row.other->DetermineSplitPositions(base, theirs, mine)
                                              : base.DetermineSplitPositions(*row.other, mine, theirs);
            EXPECT_EQ(row.found, result == CPathObjectBase::eSplitPositionsFound) << row.name;
            EXPECT_EQ(row.mine, Pieces(upper, mine).flags) << row.name;
            EXPECT_EQ(row.theirs, Pieces(*row.other, theirs).flags) << row.name;
        }
    }
}

TEST(ArcSplit, SamePointFromTwoPartnersGivesAPieceWithoutLength)
{
    CPathObjectArc const upper = Upper();
    List mine, theirs;
    for (int i = 0; i < 2; ++i)
    {
        upper.DetermineSplitPositions(CPathObjectPolyline(Point(0, 1), Point(6, 7)), mine, theirs);
        theirs.clear();
    }
    Pieces const pieces(upper, mine);
    ASSERT_EQ("011", pieces.flags);
    EXPECT_TRUE(pieces.objects[1]->IsSingleSegment() && pieces.objects[1]->CalculateLength() == 0.0);
    EXPECT_TRUE(pieces.objects[1]->GetBoundingRect().ContainsPoint(3, 4));
}

TEST(ArcSplit, CutsAtTheStartAreNeverOvertaken)
{
    for (bool ccw : {true, false})
    {
        CPathObjectArc const upper = Upper(ccw);
        CPathObjectArc const circle(Point(5, 0), Point(5, 0), Point(), ccw);
        for (CPathObjectArc const* arc : {&upper, &circle})
        {
            std::vector<CPathObjectBase::SplitPoint> points;
            for (Point const & p : {Point(0, 5), Point(4, 3), arc->GetStartPoint(), Point(-4, 3), Point(3, 4)})
            {
                InsertArcSplitPoint(*arc, points, CPathObjectBase::SplitPoint(p.x, p.y));
            }
            List const list{{{}, points}};
            Pieces const pieces(*arc, list);
            EXPECT_EQ("31111", pieces.flags);
            double total = 0;
            for (std::size_t i = 0; i < pieces.objects.size(); ++i)
            {
                total += pieces.objects[i]->CalculateLength();
                EXPECT_TRUE(i == 0 || pieces.objects[i]->GetStartPoint() == pieces.objects[i - 1]->GetEndPoint());
            }
            EXPECT_NEAR(arc->CalculateLength(), total, 1e-13); // in path order, or the lengths would wrap round
        }
    }
}

// Cuts collected from many partners: the pieces laid end to end retrace the arc and run its way.
TEST(ArcSplit, PiecesRetraceTheArc)
{
    CRandom random(12);
    for (int i = 0; i < 500; ++i)
    {
        CPathObjectArc const arc = i % 5 == 0 ? CPathObjectArc(Point(1, 2), 40) : random.Arc().ToArc(random.Coin());
        List mine, theirs;
        std::size_t found = 0;
        for (int k = 0; k < 8; ++k)
        {
            CPathObjectPolyline const line(random.PointIn(-100, 100), random.PointIn(-100, 100));
            CPathObjectArc const partner = random.Arc().ToArc(random.Coin());
            CPathObjectBase const* const other = k % 2 == 0 ? static_cast<CPathObjectBase const*>(&line) : &partner;
            static_cast<CPathObjectBase const &>(arc).DetermineSplitPositions(*other, mine, theirs);
            std::size_t const cuts = theirs.empty() ? 0 : theirs.front().second.size();
            EXPECT_EQ(cuts == 0 ? 0 : cuts + 1, Pieces(*other, theirs).objects.size()) << i;
            found += cuts;
            theirs.clear();
        }
        Pieces const pieces(arc, mine);
        ASSERT_EQ(found == 0 ? "" : "0" + std::string(found, '1'), pieces.flags) << i;
        double total = 0;
        for (std::size_t k = 0; k < pieces.objects.size(); ++k)
        {
            total += pieces.objects[k]->CalculateLength();
            Point const mid = pieces.objects[k]->GetInbetweenPoint();
            EXPECT_TRUE(arc.IsPointOnPath(mid.x, mid.y)) << i;
        }
        EXPECT_TRUE(found == 0 || std::fabs(total - arc.CalculateLength()) < 1e-6) << i;
    }
}
