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
