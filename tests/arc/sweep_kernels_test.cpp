// Sweeps against points, segments and each other, by angles as an independent oracle.
#include "arc/sweep_kernels.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "arc/arc_geometry.h"
#include "arc/arc_samples.h"

using namespace arc_samples;
using geometry::CrossingPoints;
using geometry::EArcMeeting;
using geometry::ELineMeeting;
using geometry::Sweep;

TEST(IsPointInSweep, AgreesWithAngles)
{
    CRandom random(3);
    for (int i = 0; i < 20000; ++i)
    {
        AngleArc const a = random.Arc();
        Sweep const sweep = a.ToSweep();
        Point const anywhere = random.PointIn(-200, 200);
        if (std::fabs(a.Depth(anywhere)) > 1e-9)
        {
            EXPECT_EQ(a.Depth(anywhere) > 0, IsPointInSweep(sweep, anywhere)) << i;
        }
        Point const onCircle = OnCircle(a.centre, a.radius, random.In(-Pi, Pi));
        auto const rect = CalculateArcBoundingRect(sweep);
        if (onCircle.x > rect.minX && onCircle.x < rect.maxX && std::fabs(a.Depth(onCircle)) > 1e-9)
        {
            EXPECT_EQ(a.Depth(onCircle) > 0, IsPointInSweepByHalves(sweep, onCircle)) << i;
        }
        EXPECT_TRUE(IsPointInSweep(sweep, sweep.A) && IsPointInSweep(sweep, sweep.B));
        EXPECT_TRUE(IsPointInSweepByHalves(sweep, sweep.A) && IsPointInSweepByHalves(sweep, sweep.B));
    }
}

TEST(IntersectArcSegment, CatchesTheEndsThatRoundingHides)
{
    CrossingPoints h;
    Sweep const tooSmall{{1, 0}, {0, 1}, {0, 0}, 0.5}; // the stored radius doesn't reach the ends
    EXPECT_EQ(ELineMeeting::eFound, IntersectArcSegment(tooSmall, Point(0, 1), Point(1, 0), h));
    EXPECT_TRUE(h.count == 2 && h.points[0] == tooSmall.A && h.points[1] == tooSmall.B);
    Sweep const quarter{{1, 0}, {0, 1}, {0, 0}, 1};
    EXPECT_EQ(ELineMeeting::eTouch, IntersectArcSegment(quarter, Point(-1, 1), Point(1, 1), h));
    EXPECT_EQ(ELineMeeting::eNone, IntersectArcSegment(quarter, Point(-1, -1), Point(1, -1), h));
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
        {10, 170, 45, 135, EArcMeeting::eFound, {45, 135}}, // one inside the other
        {45, 135, 10, 170, EArcMeeting::eFound, {45, 135}},
        {10, 80, 10, 135, EArcMeeting::eFound, {10, 80}}, // common start
        {10, 80, 30, 80, EArcMeeting::eFound, {80, 30}},  // common end
        {10, 80, 80, 170, EArcMeeting::eFound, {80}},     // end to start
        {10, 80, 190, 270, EArcMeeting::eNone, {}},
    };
    auto const make = [](double from, double to) { // a whole turn ends exactly where it began, as a caller gives it
        AngleArc const a = {Point(), 1, from * Pi / 180, to - from == 360 ? 0 : (to - from) * Pi / 180};
        return a.ToSweep();
    };
    for (Row const & row : rows)
    {
        CrossingPoints h;
        EXPECT_EQ(row.code, IntersectArcArc(make(row.from1, row.to1), make(row.from2, row.to2), h)) << row.from2;
        ASSERT_EQ(row.angles.size(), h.count) << row.from1 << " " << row.from2;
        for (unsigned int i = 0; i < h.count; ++i)
        {
            EXPECT_LT(Distance(OnCircle(Point(), 1, row.angles[i] * Pi / 180), h.points[i]), 1e-14) << row.from2;
        }
    }
}

TEST(IntersectArcArc, TellsTouchingFromCrossing)
{
    CrossingPoints h;
    Sweep const right{{0, -1}, {0, 1}, {0, 0}, 1};
    Sweep const left{{2, 1}, {2, -1}, {2, 0}, 1};
    Sweep const fromTouch{{1, 0}, {3, 0}, {2, 0}, 1};
    EXPECT_EQ(EArcMeeting::eTouch, IntersectArcArc(right, left, h));
    EXPECT_EQ(1u, h.count);
    EXPECT_EQ(EArcMeeting::eFound, IntersectArcArc(right, fromTouch, h)); // at an end it is no mere touch
    Sweep const closed{{1, 0}, {1, 0}, {2, 0}, 1};
    EXPECT_EQ(EArcMeeting::eTouch, IntersectArcArc(right, closed, h)); // a closed arc has no ends
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

TEST(IntersectArcArc, AgreesWithAngles)
{
    CRandom random(4);
    for (int i = 0; i < 5000; ++i)
    {
        AngleArc const a = random.Arc();
        AngleArc const b = random.Arc();
        double const d = Distance(a.centre, b.centre);
        double const cosine = (a.radius * a.radius + d * d - b.radius * b.radius) / (2 * a.radius * d);
        std::vector<Point> expected;
        bool isNearEnd = std::fabs(std::fabs(cosine) - 1) < 1e-6;
        for (double side : {-1.0, 1.0})
        {
            double const angle =
                std::atan2(b.centre.y - a.centre.y, b.centre.x - a.centre.x) + side * std::acos(cosine);
            Point const p = OnCircle(a.centre, a.radius, angle);
            double const depthA = a.Depth(p) * a.radius;
            double const depthB = b.Depth(p) * b.radius;
            isNearEnd = isNearEnd || std::fabs(depthA) < 2 || std::fabs(depthB) < 2; // ends may stand in there
            if (std::fabs(cosine) < 1 && depthA > 0 && depthB > 0)
            {
                expected.push_back(p);
            }
        }
        if (isNearEnd)
        {
            continue;
        }
        CrossingPoints h;
        EArcMeeting const code = IntersectArcArc(a.ToSweep(), b.ToSweep(), h);
        ASSERT_EQ(expected.size(), h.count) << i;
        EXPECT_EQ(expected.empty() ? EArcMeeting::eNone : EArcMeeting::eFound, code);
        for (Point const & p : expected)
        {
            EXPECT_LT(std::min(Distance(p, h.points[0]), Distance(p, h.points[h.count - 1])), 1e-6) << i;
        }
    }
}
