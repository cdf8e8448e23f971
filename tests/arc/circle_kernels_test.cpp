// Circles against circles and lines: the limits of touching in tables, the rest by what a crossing is.
#include "arc/circle_kernels.h"

#include <gtest/gtest.h>

#include "arc/arc_samples.h"

using namespace arc_samples;
using geometry::CrossingPoints;
using geometry::ECirclePair;
using geometry::ELineMeeting;

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
        {1, {UlpsAbove(2, 1), 0}, 1, ECirclePair::eApart, {}}, // no tolerance here
        {1, {0, 0}, UlpsAbove(1, 100), ECirclePair::eSame, {}},
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
    struct Row
    {
        int ulps;
        ELineMeeting code;
    };
    for (Row const & row : {Row{-101, ELineMeeting::eFound}, Row{-100, ELineMeeting::eTouch},
                            Row{100, ELineMeeting::eTouch}, Row{101, ELineMeeting::eNone}})
    {
        double const v = UlpsAbove(3, row.ulps); // the circle about (1, 1) of radius 2 ends at 3
        Point const c(1, 1);
        CrossingPoints h;
        EXPECT_EQ(row.code, IntersectCircleLine(c, 2, Point(-9, v), Point(9, v), h)) << row.ulps;
        EXPECT_EQ(row.code, IntersectCircleLine(c, 2, Point(v, -9), Point(v, 9), h)) << row.ulps;
        EXPECT_EQ(row.code, IntersectCircleSegment(c, 2, Point(0, v), Point(3, v), h)) << row.ulps;
        EXPECT_EQ(ELineMeeting::eNone, IntersectCircleSegment(c, 2, Point(v, 4), Point(v, 3.5), h)) << row.ulps;
    }
}

// Segments of all slopes, every fourth axis-parallel: the points are those where the distance from the centre passes the
// radius.
TEST(IntersectCircleSegment, FindsThePassesOfTheRadius)
{
    CRandom random(2);
    for (int i = 0; i < 4000; ++i)
    {
        AngleArc const a = random.Arc();
        Point const p = random.PointIn(-200, 200);
        Point q = random.PointIn(-200, 200);
        q = i % 8 == 0 ? Point(p.x, q.y) : i % 8 == 1 ? Point(q.x, p.y) : q;
        double const length = Distance(p, q);
        double const along = ((a.centre.x - p.x) * (q.x - p.x) + (a.centre.y - p.y) * (q.y - p.y)) / length;
        double const across = ((a.centre.x - p.x) * (q.y - p.y) - (a.centre.y - p.y) * (q.x - p.x)) / length;
        double const half = std::sqrt(std::max(0.0, a.radius * a.radius - across * across));
        auto const within = [&](double t) { return half > 0 && t > 0 && t < length ? 1u : 0u; };
        CrossingPoints h;
        ELineMeeting const code = IntersectCircleSegment(a.centre, a.radius, p, q, h);
        ASSERT_EQ(within(along - half) + within(along + half), h.count) << i;
        EXPECT_EQ(h.count > 0 ? ELineMeeting::eFound : ELineMeeting::eNone, code);
        for (unsigned int k = 0; k < h.count; ++k)
        {
            EXPECT_NEAR(a.radius, Distance(a.centre, h.points[k]), 1e-6);
            EXPECT_NEAR(length, Distance(p, h.points[k]) + Distance(h.points[k], q), 1e-6);
        }
    }
}
