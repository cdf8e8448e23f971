// Distances of arcs against brute force over samples, and the cases that have a rule of their own.
#include <cfloat>

#include <gtest/gtest.h>

#include <geometry/path/path_object_polyline.h>

#include "arc/arc_samples.h"
#include "arc/distance_kernels.h"

using namespace arc_samples;
using geometry::CPathObjectArc;
using geometry::CPathObjectBase;
using geometry::CPathObjectPolyline;
using geometry::Sweep;

namespace
{

constexpr int SampleCount = 400;

/// Smallest distance of the samples of an arc to something.
template <typename ToDistance>
double Sampled(AngleArc const & a, ToDistance const & toDistance)
{
    double best = DBL_MAX;
    for (int i = 0; i <= SampleCount; ++i)
    {
        best = std::min(best, toDistance(a.At(static_cast<double>(i) / SampleCount)));
    }
    return best;
}

/// The true distance of a point, from its angle.
double ToPoint(AngleArc const & a, Point const & p)
{
    double const ends = std::min(Distance(p, a.At(0)), Distance(p, a.At(1)));
    return a.Depth(p) >= 0 ? std::min(ends, std::fabs(Distance(p, a.centre) - a.radius)) : ends;
}

double ToSegment(Point const & s0, Point const & s1, Point const & p)
{
    double const length = Distance(s0, s1);
    double const t = ((s1.x - s0.x) * (p.x - s0.x) + (s1.y - s0.y) * (p.y - s0.y)) / length / length;
    double const s = std::min(1.0, std::max(0.0, t));
    return Distance(p, Point(s0.x + s * (s1.x - s0.x), s0.y + s * (s1.y - s0.y)));
}

} // namespace

TEST(ArcDistance, PolylinesAgreeWithSamples)
{
    CRandom random(10);
    for (int i = 0; i < 400; ++i)
    {
        AngleArc a = random.Arc();
        bool const full = i % 4 == 0;
        a.size = full ? 2 * Pi : a.size;
        CPathObjectArc const arc = full ? CPathObjectArc(a.centre, a.radius) : a.ToArc(random.Coin());
        std::vector<Point> vertices;
        double const span = i % 2 == 0 ? 200 : 0.6 * a.radius; // half of them inside the circle
        for (int k = 0; k < 5; ++k)
        {
            Point const p = random.PointIn(-span, span);
            vertices.push_back(i % 2 == 0 ? p : Point(a.centre.x + p.x, a.centre.y + p.y));
        }
        CPathObjectPolyline const line(vertices.begin(), vertices.end());
        double sampled = DBL_MAX;
        for (std::size_t k = 1; k < vertices.size(); ++k)
        {
            auto const toSegment = [&](Point const & p) { return ToSegment(vertices[k - 1], vertices[k], p); };
            sampled = std::min(sampled, Sampled(a, toSegment));
        }
        Point onArc, onLine;
        double const d = std::sqrt(line.SquareDistanceToPath(arc, onLine, onArc));
        EXPECT_LT(d, sampled + 1e-6) << i;
        EXPECT_GT(d, sampled - a.radius * a.size / SampleCount) << i; // a sample is that near to each point
        EXPECT_NEAR(d, Distance(onArc, onLine), 1e-6);
        EXPECT_TRUE(arc.IsPointOnPath(onArc.x, onArc.y) &&
                    line.SquareDistanceToPoint(onLine.x, onLine.y, onLine) < 1e-9);
    }
}

TEST(ArcDistance, ArcsAgreeWithSamplesAndAreSymmetric)
{
    CRandom random(11);
    for (int i = 0; i < 2000; ++i)
    {
        AngleArc const a = random.Arc();
        AngleArc b = random.Arc();
        b.centre = i % 5 == 0 ? a.centre : b.centre;
        b.radius = i % 10 == 0 ? a.radius : b.radius;
        CPathObjectArc const arcA = a.ToArc(random.Coin());
        CPathObjectArc const arcB = b.ToArc(random.Coin());
        Point onA, onB, p, q;
        double const d = std::sqrt(arcA.SquareDistanceToPath(arcB, onA, onB));
        double const sampled = Sampled(a, [&b](Point const & point) { return ToPoint(b, point); });
        EXPECT_LT(d, sampled + 1e-6) << i;
        EXPECT_GT(d, sampled - a.radius * a.size / SampleCount) << i;
        EXPECT_NEAR(d, Distance(onA, onB), 1e-6) << i;
        EXPECT_NEAR(d, std::sqrt(arcB.SquareDistanceToPath(static_cast<CPathObjectBase const &>(arcA), p, q)), 1e-6);
        EXPECT_TRUE(arcA.IsPointOnPath(onA.x, onA.y) && arcB.IsPointOnPath(onB.x, onB.y)) << i;
        EXPECT_TRUE(arcB.IsPointOnPath(p.x, p.y) && arcA.IsPointOnPath(q.x, q.y)) << i;
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
    EXPECT_NEAR(36.0, circle.SquareDistanceToPoint(2.4, 3.2, p), 1e-12); // all directions are in the sweep
    EXPECT_EQ(49.0, circle.SquareDistanceToPath(CPathObjectPolyline(Point(1, 0), Point(3, 0)), p, q));
    EXPECT_TRUE(p == Point(10, 0) && q == Point(3, 0));
    EXPECT_EQ(4.0, circle.SquareDistanceToPath(CPathObjectArc(Point(), 12), p, q)); // any direction: to the left
    EXPECT_TRUE(p == Point(-10, 0) && q == Point(-12, 0));
    EXPECT_EQ(4.0, circle.SquareDistanceToPath(CPathObjectArc(Point(13, 0), 1), p, q));
    EXPECT_TRUE(p == Point(10, 0) && q == Point(12, 0));
    EXPECT_EQ(DBL_MAX, circle.SquareDistanceToPath(CPathObjectPolyline(), p, q));
}
