// Unions of many polygons against an exact judge, in the given order and shuffled. Seeds are fixed; a set that fails is
// printed as text that `ParseShape` reads.
#include <algorithm>
#include <cmath>
#include <sstream>

#include <geometry/clip/polygon_clip_base.h>
#include <gtest/gtest.h>

#include "support/builders.h"
#include "support/region_oracle.h"
#include "support/shape_generators.h"
#include "support/test_access.h"

namespace geometry::test
{

namespace
{

using Generator = CShapeGenerator;
using Polygons = std::vector<std::unique_ptr<CPolygon>>;

constexpr double AreaTolerance =
    4e-6; // of the rectangle around all: a clip that retries moves an outline by up to 1e-6

constexpr char const* Square = "M 0,0 L 1,0 1,1 0,1 Z";

struct TFamily
{
    char const* name;
    int sets, most; // polygons of a set; every other set is a pair
    double spread;  // of the polygons, in lattice steps for the root of their number
    Shape (*make)(Generator & generator);
};

/// A random one of ten rings about the origin that overlap, touch or leave room between them.
Shape MakeNestedRing(Generator & generator)
{
    double const radius = 2 * generator.Int(1, 10), inner = radius - generator.Int(1, 3);
    Shape const round = ParseShape("M -1,0 A ccw 0,0 -1,0 Z"), square = ParseShape("M -1,-1 L 1,-1 1,1 -1,1 Z");
    Shape ring = Mapped(generator.Int(0, 1) == 0 ? round : square, radius * Generator::Unit, 0, 0, 0);
    if (inner > 0) ring.push_back(Mapped(Reversed(ring), inner / radius, 0, 0, 0).front());
    return ring;
}

constexpr TFamily Families[] = {
    {"general", 400, 20, 3, [](Generator & g) { return g.General(); }},
    {"lattice", 800, 20, 3, [](Generator & g) { return g.Lattice(); }},
    {"arcs", 400, 20, 3, [](Generator & g) { return g.Int(0, 1) == 0 ? g.Round() : g.Curved(); }},
    {"holes", 400, 12, 3, [](Generator & g) { return g.Holed(); }},
    {"any", 100, 40, 4, [](Generator & g) { return g.Any(); }},
    {"squares", 400, 40, 2,
     [](Generator & g) { return Mapped(ParseShape(Square), Generator::Unit * g.Int(1, 3), 0, 0, 0); }},
    {"nested rings", 400, 12, 0, MakeNestedRing},
};

/// A set, spread out, up to three of its shapes a second time in disguise.
Polygons MakeSet(TFamily const & family, Generator & generator, int number)
{
    std::vector<Shape> shapes(static_cast<std::size_t>(generator.Int(2, number % 2 == 0 ? 2 : family.most)));
    int const room = static_cast<int>(family.spread * std::sqrt(shapes.size()));
    for (Shape & shape : shapes)
    {
        shape = Mapped(family.make(generator), 1, 0, generator.Int(0, room) * Generator::Unit,
                       generator.Int(0, room) * Generator::Unit);
    }
    for (int copies = number / 2 % 4; copies > 0; --copies)
    {
        shapes.push_back(generator.Disguised(shapes[shapes.size() / 2]));
    }
    Polygons polygons;
    std::transform(shapes.begin(), shapes.end(), std::back_inserter(polygons), MakePolygon);
    return polygons;
}

std::string FaultsOf(Polygons const & polygons, Generator & generator, bool & isDecided)
{
    std::vector<CPolygon const*> inputs[2];
    for (auto const & polygon : polygons)
    {
        inputs[0].push_back(polygon.get());
        inputs[1].insert(inputs[1].begin() + generator.Int(0, static_cast<int>(inputs[1].size())), polygon.get());
    }
    OwningPolygonVector results[2];
    auto const gaveUp = CPolygonClipBase<double>::GetGaveUpCount();
    bool const isDone =
        CPolygon::MergePolygons(results[0], inputs[0]) && CPolygon::MergePolygons(results[1], inputs[1]);
    isDecided = gaveUp == CPolygonClipBase<double>::GetGaveUpCount();
    if (!isDecided) return {};
    auto const isMember = [](bool isInAny, bool) { return isInAny; };
    TJudgement const judgement = Judge(inputs[0], {}, {{&results[0], isMember}, {&results[1], isMember}});
    double const limit = AreaTolerance * judgement.boundingArea;
    std::ostringstream faults;
    if (!isDone) faults << " fails;";
    for (TVerdict const & verdict : judgement.verdicts)
    {
        if (!(verdict.difference <= limit)) faults << " is off by " << verdict.difference << ';';
        if (!(verdict.overlap <= limit)) faults << " overlaps by " << verdict.overlap << ';';
    }
    for (CPolygon const* polygon : results[0])
    {
        for (CPolygon const* hole : polygon->GetHoles())
        {
            if (hole->GetArea() < limit) continue; // a sliver of rounding
            if (CTestAccess::GetWinding(*hole) == CTestAccess::GetWinding(*polygon)) faults << " a hole winds along;";
            if (!polygon->PolygonInPolygon(*hole)) faults << " a hole lies outside;";
        }
    }
    return faults.str();
}

} // namespace

TEST(MergeProperty, GivesTheExactRegionInAnyOrder)
{
    for (TFamily const & family : Families)
    {
        Generator generator(4711);
        int undecided = 0, failures = 0;
        for (int set = 0; set < family.sets; ++set)
        {
            Polygons const polygons = MakeSet(family, generator, set);
            bool isDecided = true;
            std::string text = FaultsOf(polygons, generator, isDecided);
            undecided += isDecided ? 0 : 1;
            if (text.empty() || ++failures > 3) continue;
            for (auto const & polygon : polygons)
            {
                text += "\n  " + PrintShape(ShapeOf(*polygon));
            }
            ADD_FAILURE() << family.name << ", set " << set << ':' << text;
        }
        EXPECT_EQ(failures, 0) << family.name;
        EXPECT_LE(undecided * 100, family.sets) << family.name << ": too many clips gave up";
    }
}

TEST(MergeProperty, FixedSets)
{
    CPolygon const nothing, far = Rect(99, 99, 100, 100), hole = Rect(2, 2, 8, 8), touching = Rect(7, 7, 12, 12);
    CPolygon holed = WithHole(Rect(0, 0, 20, 20), hole);
    OwningPolygonVector extra;
    holed.AddHole(&touching, nullptr, &far, extra); // added unseen: the two holes overlap
    struct TCase
    {
        char const* name;
        std::vector<CPolygon> polygons;
        std::size_t count, vertices;
        double area;
    };
    TCase cases[] = {
        {"copies", std::vector<CPolygon>(100, WithHole(Rect(0, 0, 10, 10), hole)), 1, 5, 64},
        {"grid", {}, 1, 5, 900},
        {"in and out", {Rect(4, 4, 5, 5), Rect(0, 0, 10, 10), Rect(9, 9, 12, 12)}, 1, 9, 108},
        {"without an outline", {nothing, far, nothing}, 1, 5, 1},
        {"holes that overlap", {Rect(6.5, 6.5, 7.5, 7.5), holed}, 2, 0, 0},
    };
    for (int i = 0; i < 900; ++i)
    {
        cases[1].polygons.push_back(Rect(i % 30, i / 30, i % 30 + 1, i / 30 + 1));
    }
    for (TCase const & c : cases)
    {
        std::vector<CPolygon const*> input;
        for (CPolygon const & polygon : c.polygons)
        {
            input.push_back(&polygon);
        }
        std::sort(input.begin(), input.end());
        for (int order = 0; order < 6; ++order, std::next_permutation(input.begin(), input.end()))
        {
            OwningPolygonVector result;
            EXPECT_TRUE(CPolygon::MergePolygons(result, input)) << c.name;
            ASSERT_EQ(result.size(), c.count) << c.name;
            if (c.vertices == 0) continue; // what counts is that it ends
            EXPECT_EQ(Vertices(*result[0]->GetOutline().front()).size(), c.vertices) << c.name;
            EXPECT_DOUBLE_EQ(TotalArea(result), c.area) << c.name;
        }
    }
}

} // namespace geometry::test
