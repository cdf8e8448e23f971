// Cutting arcs: which points are cuts at all, flags, and pieces that retrace the track.
#include <gtest/gtest.h>

#include "arc/arc_samples.h"

namespace geometry
{

using namespace test;

namespace
{

using List = CPathObjectBase::SplitPositionList;

/// The flags of the pieces, one digit each. Laid end to end they retrace the object: cuts out of order would wrap
/// round.
std::string Flags(CPathObjectBase const & object, List const & positions)
{
    std::vector<CPathObjectBase::SplitPiece> pieces;
    object.DoSplits(positions, pieces);
    std::string flags;
    double total = 0;
    for (auto const & [piece, flag] : pieces)
    {
        total += piece->CalculateLength();
        flags += static_cast<char>('0' + flag);
        delete piece;
    }
    EXPECT_NEAR(pieces.empty() ? 0.0 : object.CalculateLength(), total, 1e-12);
    return flags;
}

} // namespace

TEST(ArcSplit, WhatIsACut)
{
    auto const arc = [](Point const & start, Point const & end, Point const & centre, bool ccw)
    { return std::make_shared<CPathObjectArc>(start, end, centre, ccw); };
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
        {"line crosses twice", Line({{-9, 3}, {9, 3}}), true, "011", "011"},
        {"tangent", Line({{-5, 5}, {5, 5}}), false, "04", ""},
        {"tangent at its vertex", Line({{-5, 5}, {0, 5}, {5, 9}}), true, "01", "03"},
        {"vertex on the arc", Line({{3, 0}, {3, 4}, {9, 9}}), true, "01", "03"},
        {"last vertex on the arc", Line({{3, 0}, {3, 4}}), false, "", ""},
        {"first vertex on the arc", Line({{3, 4}, {3, 0}}), true, "01", "3"},
        {"through the start", Line({{4, -1}, {6, 1}}), true, "3", "01"},
        {"through the end", Line({{-4, -1}, {-6, 1}}), false, "", ""},
    };
    CPathObjectArc const upper({5, 0}, {-5, 0}, {}, true);
    CPathObjectBase const & base = upper;
    for (Row const & row : rows)
    {
        for (bool swapped : {false, true})
        {
            List mine, theirs;
            auto const result = swapped ? row.other->DetermineSplitPositions(base, theirs, mine)
                                        : base.DetermineSplitPositions(*row.other, mine, theirs);
            EXPECT_EQ(row.found, result == CPathObjectBase::eSplitPositionsFound) << row.name;
            EXPECT_EQ(row.mine, Flags(upper, mine)) << row.name;
            EXPECT_EQ(row.theirs, Flags(*row.other, theirs)) << row.name;
        }
    }
}

// Crossings and touches, some of them twice, which gives a piece without length; a cut at the start stays the first.
TEST(ArcSplit, CutsOfManyPartnersStandInPathOrder)
{
    for (bool ccw : {true, false})
    {
        CPathObjectArc const circle({5, 0}, {5, 0}, {}, ccw);
        List mine, theirs;
        for (Point const & p : {Point(-4, 3), Point(3, 4), Point(5, 0), Point(4, 3), Point(3, 4)})
        {
            circle.DetermineSplitPositions(CPathObjectPolyline(Point(0, 1), Point(2 * p.x, 2 * p.y - 1)), mine, theirs);
        }
        circle.DetermineSplitPositions(CPathObjectPolyline(Point(-9, 5), Point(9, 5)), mine, theirs);
        circle.DetermineSplitPositions(CPathObjectPolyline(Point(-9, 5), Point(9, 5)), mine, theirs);
        EXPECT_EQ(ccw ? "3111441" : "3144111", Flags(circle, mine));
    }
}

} // namespace geometry
