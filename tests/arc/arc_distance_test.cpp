// Distances of arcs against samples, and the cases that have a rule of their own.
#include "arc/distance_kernels.h"

#include <cfloat>

#include <gtest/gtest.h>

#include "arc/arc_samples.h"

namespace geometry
{

using namespace test;

// Points against the angles of the arc; other tracks against the distances of many points of the arc. A distance that
// two points of the tracks have is never too small.
TEST(ArcDistance, AgreesWithSamplesAndIsSymmetric)
{
    CRandom random(10);
    for (int i = 0; i < 2000; ++i)
    {
        AngleArc a = random.Arc(), b = random.Arc();
        bool const full = i % 4 == 0;
        a.size = full ? 2 * Pi : a.size;
        b.centre = i % 5 == 0 ? a.centre : b.centre;
        b.radius = i % 10 == 0 ? a.radius : b.radius;
        CPathObjectArc const arc = full ? CPathObjectArc(a.centre, a.radius) : a.ToArc(random.Coin());
        CPathObjectPolyline line;
        for (int k = 0; k < 5; ++k)
        {
            Point const p = random.PointIn(-0.6, 0.6); // some of them inside the circle
            line.AddVertex(a.centre.x + (i % 2 + 1) * a.radius * p.x, a.centre.y + (i % 2 + 1) * a.radius * p.y);
        }
        Point const p = random.PointIn(-200, 200);
        Point onArc, onOther, p1, p2;
        double const ends = std::min(Distance(p, a.At(0)), Distance(p, a.At(1)));
        EXPECT_NEAR(a.Depth(p) >= 0 ? std::fabs(Distance(p, a.centre) - a.radius) : ends,
                    std::sqrt(arc.SquareDistanceToPoint(p.x, p.y, p1)), 1e-6);

        CPathObjectArc const arcB = b.ToArc(random.Coin());
        CPathObjectBase const & other = i % 3 == 0 ? static_cast<CPathObjectBase const &>(line) : arcB;
        double const d = std::sqrt(arc.SquareDistanceToPath(other, onArc, onOther));
        EXPECT_NEAR(d, std::sqrt(other.SquareDistanceToPath(arc, p2, p1)), 1e-6) << i;
        EXPECT_NEAR(d, Distance(onArc, onOther), 1e-6) << i;
        EXPECT_NEAR(d, Distance(p1, p2), 1e-6) << i;
        EXPECT_TRUE(arc.IsPointOnPath(onArc.x, onArc.y) && arc.IsPointOnPath(p1.x, p1.y)) << i;
        EXPECT_LT(other.SquareDistanceToPoint(onOther.x, onOther.y, p1) + other.SquareDistanceToPoint(p2.x, p2.y, p1),
                  1e-9);
        for (int k = 0; k <= 200; ++k)
        {
            Point const s = a.At(k / 200.0);
            EXPECT_LT(d, std::sqrt(other.SquareDistanceToPoint(s.x, s.y, p2)) + 1e-6) << i;
        }
    }
}

TEST(ArcDistance, SpecialCases)
{
    Point p, q;
    Sweep const quarter{{1, 0}, {0, 1}, {0, 0}, 1};
    Sweep const point{{5, 5}, {5, 5}, {5, 5}, 0};
    EXPECT_EQ(1.0, SquareDistanceArcPoint(quarter, Point(0, 0), p)); // from the centre all are as near: A
    EXPECT_TRUE(p == Point(1, 0));
    EXPECT_NEAR(std::pow(std::sqrt(50.0) - 1, 2), SquareDistanceArcArc(point, quarter, p, q), 1e-13);
    EXPECT_TRUE(p == Point(5, 5));
    CPathObjectArc const circle(Point(), 10);
    EXPECT_EQ(49.0, circle.SquareDistanceToPath(CPathObjectPolyline(Point(1, 0), Point(3, 0)), p, q));
    EXPECT_TRUE(p == Point(10, 0) && q == Point(3, 0));
    EXPECT_EQ(4.0, circle.SquareDistanceToPath(CPathObjectArc(Point(), 12), p, q)); // any direction: to the left
    EXPECT_TRUE(p == Point(-10, 0) && q == Point(-12, 0));
    EXPECT_EQ(DBL_MAX, circle.SquareDistanceToPath(CPathObjectPolyline(), p, q));
}

} // namespace geometry
