// Arcs against points and tracks: probe counts and windings of closed chains against a winding number by angles, the
// rule of ends on the ray, coincidence.
#include <gtest/gtest.h>

#include "arc/arc_samples.h"

namespace geometry
{

using namespace test;

namespace
{

using Chain = std::vector<std::unique_ptr<CPathObjectBase>>;

/// A closed chain of arcs and segments. Vertices on a coarse grid make rays through vertices, vertical tangents and
/// shared coordinates common.
Chain MakeChain(CRandom & random, bool onGrid)
{
    auto const snap = [&](double value, double step) { return onGrid ? std::round(value / step) * step : value; };
    Chain chain;
    std::vector<Point> v(static_cast<std::size_t>(random.In(2, 7)));
    for (std::size_t i = 0; i < v.size(); ++i)
    {
        v[i] = Point{snap(random.In(-2, 2), 1) + 4.0 * (i % 3), snap(random.In(-8, 8), 1)};
    }
    for (std::size_t i = 0; i < v.size(); ++i)
    {
        Point const a = v[i], b = v[(i + 1) % v.size()];
        double const lift = snap(random.In(-1.5, 1.5), 0.5); // of the centre, in chord lengths to the left
        Point const centre((a.x + b.x) / 2 - lift * (b.y - a.y), (a.y + b.y) / 2 + lift * (b.x - a.x));
        random.In(0, 1) < 0.3 ? chain.push_back(Line({a, b}))
                              : chain.push_back(std::make_unique<CPathObjectArc>(a, b, centre, random.Coin()));
    }
    return chain;
}

/// The turns of the track as seen from `p`, summed over its chords; NaN where the answer of a chord could be wrong.
/// Between a chord of a 64th and its arc everything sees the chord under more than pi - pi / 64.
double Turns(CPathObjectBase const & object, Point const & p)
{
    double sum = 0;
    std::vector<Point> const points = Vertices(object);
    for (std::size_t i = 1; i < points.size(); ++i)
    {
        Point const a = points[i - 1], b = points[i];
        double const angle = std::atan2(b.y - p.y, b.x - p.x) - std::atan2(a.y - p.y, a.x - p.x);
        double const step = std::remainder(angle, 2 * Pi);
        sum += std::fabs(step) > Pi - Pi / 63 || Distance(a, p) < 1e-6 ? NAN : step;
    }
    return sum / 2 / Pi;
}

} // namespace

// A ray through vertices and through the left and right extremes of arcs included. The winding is asked only off the
// heights of the vertices: an end at the top or bottom of its circle on the ray is not told apart there.
TEST(ArcProbe, ClosedChainsHaveTheParityOfTheirWinding)
{
    CRandom random(8);
    int asked = 0;
    for (int i = 0; i < 1500; ++i)
    {
        bool const onGrid = i % 2 == 0;
        Chain const chain = MakeChain(random, onGrid);
        for (int k = 0; k < 12; ++k)
        {
            Point p = random.PointIn(-10, 10);
            p = onGrid ? Point(std::round(p.x * 2) / 2, std::round(p.y * 2) / 2) : p;
            double turns = 0;
            unsigned int crossings = 0, wound = 0;
            for (auto const & object : chain)
            {
                turns += Turns(*object, p);
                crossings += object->IntersectWithVerticalProbeLine(p);
                wound += object->WindAroundPoint(p);
            }
            if (!std::isnan(turns))
            {
                auto const winding = static_cast<unsigned int>(std::lround(turns));
                EXPECT_EQ(winding & 1u, crossings & 1u) << "chain " << i << " at " << p.x << " " << p.y;
                EXPECT_TRUE(winding == wound || (onGrid && p.y == std::round(p.y))) << i << " " << p.x << " " << p.y;
                ++asked;
            }
        }
    }
    EXPECT_GT(asked, 16000);
}

TEST(ArcProbe, OwnsItsEndOfSmallerX)
{
    CPathObjectArc const quarter(Point(1, 0), Point(0, 1), Point(), true);
    CPathObjectArc const leftQuarter(Point(0, 1), Point(-1, 0), Point(), true);
    CPathObjectArc const circle(Point(), 1);
    struct Row
    {
        CPathObjectArc const & arc;
        Point p;
        unsigned int count;
    };
    for (Row const & row :
         {Row{quarter, {0.5, 0}, 1}, Row{quarter, {0.5, 1}, 0},
          Row{quarter, {1, -1}, 0}, // touched at its right extreme
          Row{quarter, {0, 0}, 1}, Row{leftQuarter, {0, 0}, 0}, Row{leftQuarter, {-1, -1}, 1}, // a shared end: once
          Row{circle, {0, -2}, 2}, Row{circle, {-1, -2}, 0}, Row{quarter, {0, std::nextafter(1.0, 0.0)}, 1}})
    {
        CPathObjectArc reversed(row.arc);
        reversed.Reverse();
        EXPECT_EQ(row.count, row.arc.IntersectWithVerticalProbeLine(row.p)) << row.p.x << " " << row.p.y;
        EXPECT_EQ(row.count, reversed.IntersectWithVerticalProbeLine(row.p)) << row.p.x << " " << row.p.y;
    }
}

// A point is on the track below an absolute limit; the same track in either direction is coincident.
TEST(ArcRelations, OnThePathAndCoincident)
{
    Point const a(100, 0), b(0, 100), c;
    CPathObjectArc const arc(a, b, c, true);
    double const limit = std::sqrt(0.001);
    EXPECT_TRUE(arc.IsPointOnPath(100 - 0.999 * limit, 0));
    EXPECT_FALSE(arc.IsPointOnPath(100 - 1.001 * limit, 0));
    EXPECT_FALSE(arc.IsPointOnPath(-100, 0)); // on the circle, outside the sweep
    EXPECT_TRUE(arc.IsCoincidentWith(CPathObjectArc(b, a, c, false)));
    EXPECT_FALSE(arc.IsCoincidentWith(CPathObjectArc(b, a, c, true))); // the other part of the circle
    EXPECT_FALSE(CPathObjectPolyline(a, b).IsCoincidentWith(arc));
    EXPECT_TRUE(CPathObjectPolyline(a, a).IsCoincidentWith(CPathObjectArc(a, a, a, true)));
}

} // namespace geometry
