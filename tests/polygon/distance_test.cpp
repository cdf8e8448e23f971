// Distances of polygons: which outlines count in which way, and random polygons against points of their outlines.
#include <cfloat>
#include <cmath>

#include <gtest/gtest.h>

#include "support/shape_generators.h"

namespace geometry::test
{
namespace
{

using Point = TPoint<double>;
/// The smallest square distance of a point to the outline and the holes, or 0 if the area counts and has the point.
double PlainDistance(Point const & p, CPolygon const & polygon, bool solid)
{
    if (solid && polygon.PointInPolygon(p.x, p.y)) return 0.0;
    double best = DBL_MAX;
    Point closest;
    for (CPathObjectBase const* object : polygon.GetOutline())
    {
        best = std::min(best, object->SquareDistanceToPoint(p.x, p.y, closest));
    }
    for (CPolygon const* hole : polygon.GetHoles())
    {
        best = std::min(best, PlainDistance(p, *hole, false));
    }
    return best;
}

/// The same for points of an outline and its holes: those that stand for an arc, and many on each segment.
double SampledDistance(CPolygon const & from, CPolygon const & to, bool solid)
{
    double best = DBL_MAX;
    for (CPathObjectBase const* object : from.GetOutline())
    {
        double const step = object->CanAppendVertex() ? 1.0 / 64 : 1.0;
        for (auto v = object->GetPointsBegin(); v + 1 != object->GetPointsEnd(); ++v)
        {
            for (double t = 0.0; t < 1.0; t += step)
            {
                Point const p(v->x + (v[1].x - v->x) * t, v->y + (v[1].y - v->y) * t);
                best = std::min(best, PlainDistance(p, to, solid));
            }
        }
    }
    for (CPolygon const* hole : from.GetHoles())
    {
        best = std::min(best, SampledDistance(*hole, to, solid));
    }
    return best;
}

TEST(Distance, SolidAreasAndHoles)
{
    std::string const plate = "M 0,0 L 100,0 100,100 0,100 Z M 20,20 L 20,60 60,60 60,20 Z";
    struct TCase
    {
        char const* name;
        std::string first, second;
        double distances[4]; // open, the first solid, the second solid, both solid
    };
    TCase const cases[] = {
        {"apart", plate, "M 112,0 A ccw 110,0 112,0 Z", {8, 8, 8, 8}},
        {"in the area", plate, "M 90,80 L 93,80 93,83 Z", {7, 0, 7, 0}},
        {"in a hole", plate, "M 45,40 A ccw 40,40 45,40 Z", {15, 15, 15, 15}},
        {"in a round hole", "M -50,0 A cw 0,0 -50,0 Z M 9,0 A ccw 0,0 9,0 Z", "M 2,0 A cw 0,0 2,0 Z", {7, 7, 7, 7}},
        {"around a hole", plate, "M 10,10 L 65,10 65,65 10,65 Z", {5, 0, 0, 0}},
        {"and holed", plate, "M 10,10 L 65,10 65,65 10,65 Z M 16,16 L 64,16 64,64 16,64 Z", {4, 0, 4, 0}},
        {"out of a hole", plate, "M 40,40 L 80,40 80,41 Z", {0, 0, 0, 0}},
        {"the same", plate, plate, {0, 0, 0, 0}},
        {"no outline", "", plate, {-1, -1, -1, -1}},
    };
    for (TCase const & c : cases)
    {
        auto const a = c.first.empty() ? std::make_unique<CPolygon>() : MakePolygon(ParseShape(c.first));
        auto const b = MakePolygon(ParseShape(c.second));
        for (int way = 0; way < 4; ++way)
        {
            bool const aSolid = way % 2 == 1, bSolid = way >= 2;
            Point onA(7, 7), onB(8, 8);
            double const d = a->SquareDistanceToPolygon(*b, aSolid, bSolid, onA, onB), expected = c.distances[way];
            EXPECT_DOUBLE_EQ(d, expected < 0 ? DBL_MAX : expected * expected) << c.name << ", way " << way;
            EXPECT_EQ(expected < 0, onA == Point(7, 7) && onB == Point(8, 8)) << c.name << ", way " << way;
        }
    }
}

TEST(Distance, AgreesWithSamples)
{
    CShapeGenerator generator(77);
    for (int i = 0; i < 1600; ++i)
    {
        double const far = 14 * CShapeGenerator::Unit; // every other pair is small against large
        Shape const second =
            Mapped(generator.Holed(), i % 2 == 0 ? 1.0 : 0.125, 0, generator.Real(0, far), generator.Real(0, far));
        auto const a = MakePolygon(generator.Holed()), b = MakePolygon(second);
        bool const aSolid = i % 4 < 2, bSolid = i % 8 < 4;
        auto const shapes = testing::Message() << "solid " << aSolid << bSolid << "\n  A " << PrintShape(ShapeOf(*a))
                                               << "\n  B " << PrintShape(second);
        Point onA, onB, p, q;
        double const d = std::sqrt(a->SquareDistanceToPolygon(*b, aSolid, bSolid, onA, onB));
        double const sampled = std::sqrt(std::min(SampledDistance(*a, *b, bSolid), SampledDistance(*b, *a, aSolid)));
        EXPECT_LE(d, sampled + 1e-6) << shapes;
        EXPECT_GE(d, sampled - 200) << shapes;
        EXPECT_NEAR(d, std::sqrt(b->SquareDistanceToPolygon(*a, bSolid, aSolid, p, q)), 1e-6) << shapes;
        EXPECT_NEAR(d, std::hypot(onA.x - onB.x, onA.y - onB.y), 1e-6) << shapes;
        EXPECT_LT(PlainDistance(onA, *a, aSolid) + PlainDistance(onB, *b, bSolid), 1e-9) << shapes;
        Point const at(generator.Real(-far, 2 * far), generator.Real(-far, 2 * far));
        double const expected = PlainDistance(at, *a, aSolid);
        EXPECT_NEAR(a->SquareDistanceToPoint(at.x, at.y, aSolid, p), expected, expected * 1e-9) << shapes;
        EXPECT_LT(PlainDistance(p, *a, aSolid), 1e-9) << at.x << ',' << at.y << shapes;
    }
}

} // namespace
} // namespace geometry::test
