// The arc object: what follows from its four points, how it changes and joins.
#include <cfloat>

#include <gtest/gtest.h>

#include "arc/arc_samples.h"
#include "support/test_access.h"

namespace geometry
{

using namespace test;

// Length, rectangle, mid-point, direction and chords of random arcs, against their angles; then reversed and mirrored.
TEST(Arc, FollowsFromItsAngles)
{
    CRandom random(5);
    for (int i = 0; i < 3000; ++i)
    {
        AngleArc const a = random.Arc(i % 2 == 0 ? 0.001 : 1.0);
        bool const ccw = random.Coin();
        CPathObjectArc const arc = a.ToArc(ccw);
        EXPECT_NEAR(a.radius * a.size, arc.CalculateLength(), 1e-9);
        EXPECT_LT(Distance(a.At(0.5), arc.GetInbetweenPoint()), 1e-8) << i;

        CBoundingRect<double> sampled;
        for (int k = 0; k <= 1000; ++k)
        {
            sampled.Include(a.At(k / 1000.0));
        }
        auto const & rect = arc.GetBoundingRect();
        EXPECT_LT(Distance({sampled.minX, sampled.minY}, {rect.minX, rect.minY}), 1e-3) << i;
        EXPECT_LT(Distance({sampled.maxX, sampled.maxY}, {rect.maxX, rect.maxY}), 1e-3) << i;

        CPathObjectArc derived; // the direction from four points
        derived.SetArc(arc.GetStartPoint(), arc.GetEndPoint(), arc.GetCentre(), arc.GetInbetweenPoint(), -1);
        EXPECT_EQ(ccw, derived.IsCounterClockwise()) << i;

        auto const chords = CTestAccess::GetArcPoints(arc);
        EXPECT_TRUE(chords.front() == arc.GetStartPoint() && chords.back() == arc.GetEndPoint()) << i;
        double turned = 0;
        for (std::size_t k = 1; k < chords.size(); ++k)
        {
            EXPECT_NEAR(a.radius, Distance(a.centre, chords[k]), 1e-9);
            turned += 2 * std::asin(std::min(1.0, Distance(chords[k - 1], chords[k]) / 2 / a.radius));
        }
        EXPECT_NEAR(a.size, turned, 1e-5) << i; // each chord once, none backward

        CPathObjectArc changed(arc);
        changed.Reverse();
        EXPECT_TRUE(changed.IsCoincidentWith(arc) && arc.CalculateLength() == changed.CalculateLength());
        EXPECT_EQ(std::vector<Point>(chords.rbegin(), chords.rend()), Vertices(changed));
        changed.Scale(-2, 2); // mirrors
        changed.RotateDegrees(90);
        EXPECT_EQ(ccw, changed.IsCounterClockwise());
        EXPECT_NEAR(2 * arc.CalculateLength(), changed.CalculateLength(), 1e-9);
    }
}

TEST(Arc, CirclesAreClockwiseAndChordsStandOnOneGrid)
{
    EXPECT_EQ(17u, Vertices(CPathObjectArc({1, 0}, {0, 1}, {}, true)).size());
    EXPECT_EQ(49u, Vertices(CPathObjectArc({1, 0}, {0, 1}, {}, false)).size());
    CPathObjectArc circle(Point(3, 4), 2); // its chords begin at the right, wherever it starts
    EXPECT_EQ(65u, Vertices(circle).size());
    EXPECT_TRUE(circle.IsFullCircle() && circle.GetStartPoint() == Point(1, 4));
    EXPECT_TRUE(Vertices(circle)[0] == Point(5, 4) && Vertices(circle)[16] == Point(3, 2));
    circle.Scale(-1, 3);
    EXPECT_EQ(eDirectionClockwise, CTestAccess::GetDirection(circle)); // a closed arc keeps its direction
}

TEST(Arc, JoinsArcsOfOneCircle)
{
    CPathObjectArc const a = AngleArc{{}, 10, 0, 1}.ToArc(true), b = AngleArc{{}, 10, 1, 1}.ToArc(true);
    CPathObjectArc const backward = AngleArc{{}, 10, 1, 1}.ToArc(false), unset;
    for (CPathObjectBase* result : {a.Append(&b), b.Prepend(&a), a.MergeWith(&b), b.MergeWith(&a)})
    {
        std::unique_ptr<CPathObjectBase> const joined(result);
        ASSERT_NE(nullptr, joined);
        EXPECT_TRUE(joined->GetStartPoint() == a.GetStartPoint() && joined->GetEndPoint() == b.GetEndPoint());
        EXPECT_NEAR(20, joined->CalculateLength(), 1e-12);
    }
    EXPECT_EQ(nullptr, b.Append(&a));
    for (CPathObjectArc const* other : {&backward, &unset})
    {
        EXPECT_TRUE(a.MergeWith(other) == nullptr && other->MergeWith(&a) == nullptr);
    }
}

// An arc without points, and one that got a polyline's points through the base, answer without reading points.
TEST(Arc, WithoutFourPointsTakesPartInNothing)
{
    CPathObjectArc arcs[2];
    static_cast<CPathObjectBase &>(arcs[1]) = CPathObjectPolyline(Point(1, 2), Point(3, 4));
    CPathObjectArc const circle(Point(), 1);
    for (CPathObjectArc & arc : arcs)
    {
        arc.Reverse();
        arc.TryToCorrectProblems();
        arc.Translate(1, 1);
        std::vector<Point> points;
        EXPECT_TRUE(!arc.IsValid() && arc.IsDegenerate() && Vertices(arc).empty());
        EXPECT_FALSE(arc.IsPointOnPath(0, 0) || arc.IsFullCircle() || arc.IsCoincidentWith(arc));
        EXPECT_EQ(0u, arc.IntersectWithVerticalProbeLine(Point()) + arc.WindAroundPoint(Point()));
        EXPECT_FALSE(arc.IntersectWithPath(circle, points) || circle.IntersectWithPath(arc, points));
        EXPECT_EQ(DBL_MAX, circle.SquareDistanceToPath(arc, points.emplace_back(), points.emplace_back()));
    }
}

// NaN, infinities, overflow and subnormal numbers: the chords end.
TEST(Arc, BadInputHasFewChords)
{
    double const values[] = {NAN, INFINITY, -INFINITY, 1e300, -1e300, 5e-324, 0, 1, 2};
    CRandom random(7);
    auto const any = [&] { return values[static_cast<int>(random.In(0, 9))]; };
    for (int i = 0; i < 20000; ++i)
    {
        CPathObjectArc arc({any(), any()}, {any(), any()}, {any(), any()}, random.Coin(), any());
        i % 2 == 0 ? arc.TryToCorrectProblems() : void();
        EXPECT_LE(Vertices(arc).size(), 67u);
    }
}

} // namespace geometry
