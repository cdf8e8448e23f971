// Circles and sweeps against points, lines and each other: the limits of touching in tables, the rest by angles as an
// independent oracle.
#include "arc/sweep_kernels.h"

#include <gtest/gtest.h>

#include "arc/arc_geometry.h"
#include "arc/arc_samples.h"

namespace geometry
{

using namespace test;

TEST(IntersectCircleCircle, TellsTheCasesApart)
{
    struct Row
    {
        double r1;
        Point c2; // the first circle is about the origin
        double r2;
        ECirclePair code;
        std::vector<Point> points;
    };
    Row const rows[] = {
        {1, {2, 0}, 1, ECirclePair::eMeet, {{1, 0}}}, // touch from outside, exactly
        {2, {1, 0}, 1, ECirclePair::eMeet, {{2, 0}}}, // touch from inside
        {5, {3, 4}, 10, ECirclePair::eMeet, {{-3, -4}}},        {5, {1, 1}, 5, ECirclePair::eMeet, {{-3, 4}, {4, -3}}},
        {1, {0, 0}, 5, ECirclePair::eFirstInside, {}},          {5, {1, 0}, 1, ECirclePair::eSecondInside, {}},
        {1, {2 + 0x1p-51, 0}, 1, ECirclePair::eApart, {}}, // no tolerance here
        {1, {0, 0}, 1 + 100 * 0x1p-52, ECirclePair::eSame, {}},
    };
    for (Row const & row : rows)
    {
        CrossingPoints h;
        EXPECT_EQ(row.code, IntersectCircleCircle(Point(), row.r1, row.c2, row.r2, h)) << row.c2.x << " " << row.r2;
        ASSERT_EQ(row.points.size(), h.count) << row.c2.x << " " << row.r2;
        for (unsigned int i = 0; i < h.count; ++i)
        {
            EXPECT_LT(Distance(row.points[i], h.points[i]), 1e-14);
        }
    }
}

TEST(IntersectCircleLine, AxisParallelLinesTouchWithinTolerance)
{
    for (int ulps : {-101, -100, 100, 101})
    {
        using enum ELineMeeting;
        auto const code = ulps < -100 ? eFound : ulps > 100 ? eNone : eTouch;
        double const v = 3 + ulps * 0x1p-51; // the circle about (1, 1) of radius 2 ends at 3
        Point const c(1, 1);
        CrossingPoints h;
        EXPECT_EQ(code, IntersectCircleLine(c, 2, Point(-9, v), Point(9, v), h)) << ulps;
        EXPECT_EQ(code, IntersectCircleLine(c, 2, Point(v, -9), Point(v, 9), h)) << ulps;
        EXPECT_EQ(code, IntersectCircleSegment(c, 2, Point(0, v), Point(3, v), h)) << ulps;
        EXPECT_EQ(eNone, IntersectCircleSegment(c, 2, Point(v, 4), Point(v, 3.5), h)) << ulps;
    }
}

TEST(IsPointInSweep, AgreesWithAngles)
{
    CRandom random(3);
    for (int i = 0; i < 20000; ++i)
    {
        AngleArc const a = random.Arc();
        Sweep const sweep = a.ToSweep();
        Point const anywhere = random.PointIn(-200, 200);
        EXPECT_TRUE(std::fabs(a.Depth(anywhere)) < 1e-9 || IsPointInSweep(sweep, anywhere) == (a.Depth(anywhere) > 0));
        Point const p = OnCircle(a.centre, a.radius, random.In(-Pi, Pi));
        auto const rect = CalculateArcBoundingRect(sweep);
        if (p.x > rect.minX && p.x < rect.maxX && std::fabs(a.Depth(p)) > 1e-9)
        {
            EXPECT_EQ(a.Depth(p) > 0, IsPointInSweepByHalves(sweep, p)) << i;
        }
        EXPECT_TRUE(IsPointInSweep(sweep, sweep.A) && IsPointInSweep(sweep, sweep.B));
        EXPECT_TRUE(IsPointInSweepByHalves(sweep, sweep.A) && IsPointInSweepByHalves(sweep, sweep.B));
    }
}

// Two sweeps of one circle share the ends of what they have in common.
TEST(IntersectArcArc, OnOneCircleGivesTheEndsOfTheCommonPart)
{
    struct Row
    {
        double from1, to1, from2, to2;
        EArcMeeting code;
        std::vector<double> angles;
    };
    Row const rows[] = {
        {10, 90, 10, 90, EArcMeeting::eSameTrack, {10, 90}},
        {10, 370, 45, 405, EArcMeeting::eSameTrack, {10}},
        {10, 370, 45, 135, EArcMeeting::eFound, {45, 135}},
        {10, 80, 45, 135, EArcMeeting::eFound, {45, 80}},
        {45, 135, 10, 80, EArcMeeting::eFound, {80, 45}},
        {45, 135, 10, 170, EArcMeeting::eFound, {45, 135}}, // one inside the other
        {10, 80, 10, 135, EArcMeeting::eFound, {10, 80}},   // common start
        {10, 80, 30, 80, EArcMeeting::eFound, {80, 30}},    // common end
        {10, 80, 80, 170, EArcMeeting::eFound, {80}},       // end to start
        {10, 80, 190, 270, EArcMeeting::eNone, {}},
    };
    auto const make = [](double from, double to) // a whole turn ends exactly where it began, as a caller gives it
    {
        return AngleArc{{}, 1, from * Pi / 180, to - from == 360 ? 0 : (to - from) * Pi / 180}.ToSweep();
    };
    for (Row const & row : rows)
    {
        CrossingPoints h;
        EXPECT_EQ(row.code, IntersectArcArc(make(row.from1, row.to1), make(row.from2, row.to2), h)) << row.from2;
        ASSERT_EQ(row.angles.size(), h.count) << row.from1 << " " << row.from2;
        for (unsigned int i = 0; i < h.count; ++i)
        {
            EXPECT_LT(Distance(OnCircle({}, 1, row.angles[i] * Pi / 180), h.points[i]), 1e-14) << row.from2;
        }
    }
}

TEST(IntersectArcArc, TellsTouchingFromCrossing)
{
    CrossingPoints h;
    Sweep const right{{0, -1}, {0, 1}, {0, 0}, 1};
    EXPECT_EQ(EArcMeeting::eTouch, IntersectArcArc(right, {{2, 1}, {2, -1}, {2, 0}, 1}, h));
    EXPECT_EQ(EArcMeeting::eFound, IntersectArcArc(right, {{1, 0}, {3, 0}, {2, 0}, 1}, h)); // an end: no mere touch
    EXPECT_EQ(EArcMeeting::eTouch, IntersectArcArc(right, {{1, 0}, {1, 0}, {2, 0}, 1}, h)); // closed: it has no ends
}

// Two sweeps meet end to end at the origin, but the radius of the first is off by `e`, so that the crossing of the
// circles falls out of both: the common end stands in, up to an absolute limit.
TEST(IntersectArcArc, EndsThatMeetStandInForALostCrossing)
{
    for (double e : {-0.72, -0.7, -1e-9, 1e-9, 0.7, 0.72})
    {
        Sweep const upward{{0, 0}, {-100, 100}, {-100, 0}, 100 + e};
        Sweep const fromRight{{100, -100}, {0, 0}, {0, -100}, 100};
        for (bool swapped : {false, true})
        {
            CrossingPoints h;
            IntersectArcArc(swapped ? fromRight : upward, swapped ? upward : fromRight, h);
            ASSERT_EQ(std::fabs(e) < 0.71 ? 1u : 0u, h.count) << e;
            EXPECT_TRUE(h.count == 0 || Distance(h.points[0], Point(0, 0)) < 2e-9) << e;
        }
    }
}

} // namespace geometry
