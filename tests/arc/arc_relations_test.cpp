// Arcs against points and tracks: probe counts and windings of closed chains against a sampled winding number, the rule
// of ends on the ray, coincidence.
#include <cfloat>
#include <memory>

#include <gtest/gtest.h>

#include <geometry/path/path_object_polyline.h>

#include "arc/arc_samples.h"

using namespace arc_samples;
using geometry::CPathObjectArc;
using geometry::CPathObjectBase;
using geometry::CPathObjectPolyline;

namespace
{

/// A closed chain of arcs and segments, and a fine polygon along it.
struct Chain
{
    std::vector<std::unique_ptr<CPathObjectBase>> objects;
    std::vector<Point> samples;

    void AddLine(Point const & a, Point const & b)
    {
        objects.push_back(std::make_unique<CPathObjectPolyline>(a, b));
        for (int i = 0; i < 100; ++i)
        {
            samples.emplace_back(a.x + (b.x - a.x) * i / 100, a.y + (b.y - a.y) * i / 100);
        }
    }

    /// An arc over the chord `a`, `b` whose centre lies `lift` chord lengths to its left.
    void AddArc(Point const & a, Point const & b, double lift, bool ccw)
    {
        Point const centre((a.x + b.x) / 2 - lift * (b.y - a.y), (a.y + b.y) / 2 + lift * (b.x - a.x));
        objects.push_back(std::make_unique<CPathObjectArc>(a, b, centre, ccw));
        double const from = std::atan2(a.y - centre.y, a.x - centre.x);
        double size = std::atan2(b.y - centre.y, b.x - centre.x) - from;
        size += ccw && size < 0 ? 2 * Pi : !ccw && size > 0 ? -2 * Pi : 0;
        for (int i = 0; i < 100; ++i)
        {
            samples.push_back(OnCircle(centre, Distance(a, centre), from + size * i / 100));
        }
    }

    /// The angle the track turns through as seen from `p`, in whole turns; false too near to the track to tell.
    bool FindWinding(Point const & p, unsigned int & winding) const
    {
        double sum = 0;
        for (std::size_t i = 0; i < samples.size(); ++i)
        {
            Point const & a = samples[i];
            Point const & b = samples[(i + 1) % samples.size()];
            double const step =
                std::remainder(std::atan2(b.y - p.y, b.x - p.x) - std::atan2(a.y - p.y, a.x - p.x), 2 * Pi);
            if (std::fabs(step) > 2.8 || Distance(a, p) < 0.01)
            {
                return false;
            }
            sum += step;
        }
        winding = static_cast<unsigned int>(std::lround(sum / 2 / Pi));
        return true;
    }
};

/// Vertices on a coarse grid, so that rays through vertices, vertical tangents and shared coordinates are common.
Chain MakeChain(CRandom & random, bool onGrid)
{
    Chain chain;
    std::vector<Point> vertices;
    int const count = static_cast<int>(random.In(2, 7));
    for (int i = 0; i < count; ++i)
    {
        Point const p(random.In(-2, 2) + 4 * (i % 3), random.In(-8, 8));
        vertices.push_back(onGrid ? Point(std::round(p.x), std::round(p.y)) : p);
    }
    for (int i = 0; i < count; ++i)
    {
        Point const & a = vertices[i];
        Point const & b = vertices[(i + 1) % count];
        double const lift = onGrid ? std::round(random.In(-3, 3)) / 2 : random.In(-1.5, 1.5);
        random.In(0, 1) < 0.3 ? chain.AddLine(a, b) : chain.AddArc(a, b, lift, random.Coin());
    }
    return chain;
}

} // namespace

// A ray through vertices and through the left and right extremes of arcs included. The winding is asked only off the
// heights of the vertices: an end at the top or bottom of its circle on the ray is not told apart there.
TEST(ArcProbe, ClosedChainsHaveTheParityOfTheirWinding)
{
    CRandom random(8);
    for (int i = 0; i < 1500; ++i)
    {
        bool const onGrid = i % 2 == 0;
        Chain const chain = MakeChain(random, onGrid);
        for (int k = 0; k < 12; ++k)
        {
            Point p = random.PointIn(-10, 10);
            p = onGrid ? Point(std::round(p.x * 2) / 2, std::round(p.y * 2) / 2) : p;
            unsigned int winding = 0;
            if (!chain.FindWinding(p, winding))
            {
                continue;
            }
            unsigned int crossings = 0;
            unsigned int wound = 0;
            for (auto const & object : chain.objects)
            {
                crossings += object->IntersectWithVerticalProbeLine(p);
                wound += object->WindAroundPoint(p);
            }
            EXPECT_EQ(winding & 1u, crossings & 1u) << "chain " << i << " at " << p.x << " " << p.y;
            EXPECT_TRUE(winding == wound || (onGrid && p.y == std::round(p.y))) << i << " at " << p.x << " " << p.y;
        }
    }
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
    Row const rows[] = {
        {quarter, {0.5, 0}, 1}, {quarter, {0.5, 1}, 0},   {quarter, {1, -1}, 0},      // touched at its right extreme
        {quarter, {0, 0}, 1},   {leftQuarter, {0, 0}, 0}, {leftQuarter, {-1, -1}, 1}, // a shared end counts once
        {circle, {0, -2}, 2},   {circle, {-1, -2}, 0},    {quarter, {0, UlpsAbove(1, -1)}, 1},
    };
    for (Row const & row : rows)
    {
        CPathObjectArc reversed(row.arc);
        reversed.Reverse();
        EXPECT_EQ(row.count, row.arc.IntersectWithVerticalProbeLine(row.p)) << row.p.x << " " << row.p.y;
        EXPECT_EQ(row.count, reversed.IntersectWithVerticalProbeLine(row.p)) << row.p.x << " " << row.p.y;
    }
}

TEST(ArcRelations, PointIsOnThePathBelowAnAbsoluteLimit)
{
    double const limit = std::sqrt(0.001);
    CPathObjectArc const arc(Point(100, 0), Point(0, 100), Point(), true);
    EXPECT_TRUE(arc.IsPointOnPath(100 - 0.999 * limit, 0));
    EXPECT_FALSE(arc.IsPointOnPath(100 - 1.001 * limit, 0));
    EXPECT_FALSE(arc.IsPointOnPath(-100, 0)); // on the circle, outside the sweep
    EXPECT_TRUE(CPathObjectArc(Point(), 100).IsPointOnPath(60, -80));
}

TEST(ArcRelations, CoincidentMeansTheSameTrackInEitherDirection)
{
    Point const a(1, 0), b(0, 1), c;
    CPathObjectArc const arc(a, b, c, true);
    EXPECT_TRUE(arc.IsCoincidentWith(CPathObjectArc(a, b, c, true)));
    EXPECT_TRUE(arc.IsCoincidentWith(CPathObjectArc(b, a, c, false)));
    EXPECT_FALSE(arc.IsCoincidentWith(CPathObjectArc(b, a, c, true))); // the other part of the circle
    EXPECT_FALSE(CPathObjectPolyline(a, b).IsCoincidentWith(arc));
    CPathObjectArc const degenerate(a, a, a, true);
    EXPECT_TRUE(CPathObjectPolyline(a, a).IsCoincidentWith(degenerate));
}
