// Random shapes: a stock of texts that is turned, scaled and moved on the lattice, and random rings, which are thrown
// away when two edges come closer than a margin.
#include "support/shape_generators.h"

#include <cmath>
#include <numbers>

namespace geometry::test
{

namespace
{

constexpr double Pi = std::numbers::pi;
constexpr double Margin = CShapeGenerator::Unit / 16;

constexpr char const* Plates[] = {
    "M 0,0 L 2,0 2,1 0,1 Z",                                 // a plate; L, T, U, Z, a cross, a comb, stairs
    "M 0,0 L 3,0 3,1 1,1 1,3 0,3 Z",                         //
    "M 0,2 L 1,2 1,0 2,0 2,2 3,2 3,3 0,3 Z",                 //
    "M 0,0 L 3,0 3,2 2,2 2,1 1,1 1,2 0,2 Z",                 //
    "M 0,0 L 2,0 2,1 3,1 3,2 1,2 1,1 0,1 Z",                 //
    "M 1,0 L 2,0 2,1 3,1 3,2 2,2 2,3 1,3 1,2 0,2 0,1 1,1 Z", //
    "M 0,0 L 5,0 5,2 4,2 4,1 3,1 3,3 2,3 2,1 1,1 1,2 0,2 Z", //
    "M 0,0 L 3,0 3,3 2,3 2,2 1,2 1,1 0,1 Z",                 //
    "M 0,0 L 1,0 2,0 2,1 2,2 1,2 0,2 0,1 Z",                 // vertices on straight edges
};

constexpr char const* Rounds[] = {
    "M 0,0 A cw 2,0 0,0 Z",                  // a disc: one arc, two, four
    "M -1,0 A ccw 1,0 3,0 A ccw 1,0 -1,0 Z", //
    "M 1,0 A ccw 0,0 0,1 A ccw 0,0 -1,0 A ccw 0,0 0,-1 A ccw 0,0 1,0 Z",
    "M 2,0 A ccw 0,0 -2,0 Z",                          // half a disc, a quarter, three quarters
    "M 0,0 L 3,0 A ccw 0,0 0,3 Z",                     //
    "M 0,0 L 0,2 A ccw 0,0 2,0 Z",                     //
    "M 3,4 A ccw 0,0 -3,4 Z",                          // a cap of a disc of radius 5, and the rest of it
    "M -3,4 A ccw 0,0 3,4 Z",                          //
    "M 0,0 L 3,0 A ccw 3,1 3,2 L 0,2 A ccw 0,1 0,0 Z", // a stadium, half a ring, a lens
    "M 0,0 A ccw 2,0 4,0 L 3,0 A cw 2,0 1,0 Z",        //
    "M 0,-4 A ccw -3,0 0,4 A ccw 3,0 0,-4 Z",          //
    "M 1,0 L 3,0 A ccw 3,1 4,1 L 4,2 A ccw 3,2 3,3 L 1,3 A ccw 1,2 0,2 L 0,1 A ccw 1,1 1,0 Z",
    "M 1,0 L 3,0 A cw 4,0 4,1 L 4,3 0,3 L 0,1 A cw 0,0 1,0 Z", // notched and dented plates
    "M 0,0 L 4,0 4,2 3,2 A cw 2,2 1,2 L 0,2 Z",                //
    "M 0,0 L 4,0 A cw 4,1 4,2 L 0,2 A ccw 0,1 0,0 Z",          //
    "M 0,0 L 6,0 6,2 5,2 A ccw 4,2 3,2 A cw 2,2 1,2 L 0,2 Z",  //
};

constexpr char const* Holes[] = {
    "M -1,0 A cw 0,0 -1,0 Z",
    "M 0,0 L 1,0 1,1 0,1 Z",
    "M 0,0 L 2,0 2,2 0,2 Z",
    "M 1,0 A ccw 0,0 -1,0 Z",
    "M 2,0 A ccw 0,0 -2,0 A ccw 0,0 2,0 Z",
};

using Edges = std::vector<std::unique_ptr<CPathObjectBase>>;

Edges EdgesOf(Ring const & ring)
{
    Edges edges;
    for (std::size_t i = 0; i < ring.size(); ++i)
    {
        TEdge back; // closes a polygon of one edge
        back.beginsObject = true;
        back.end = ring[(i + ring.size() - 1) % ring.size()].end;
        auto const polygon = MakePolygon({ring.size() == 1 ? ring : Ring{ring[i], back}});
        edges.emplace_back(polygon->GetOutline().front()->Clone());
    }
    return edges;
}

bool AreApart(CPathObjectBase const & a, CPathObjectBase const & b)
{
    TPoint<double> onA, onB;
    return a.SquareDistanceToPath(b, onA, onB) > Margin * Margin;
}

/// Neighbours meet in their common ends only, others stay apart.
bool IsSimple(Ring const & ring)
{
    Edges const edges = EdgesOf(ring);
    std::size_t const n = ring.size();
    for (std::size_t i = 0; i < n; ++i)
    {
        for (std::size_t k = i + 1; k < n; ++k)
        {
            bool const areNeighbours = k - i == 1 || k - i + 1 == n;
            CPathObjectBase::Points meetings;
            if (!areNeighbours && !AreApart(*edges[i], *edges[k])) return false;
            if (areNeighbours) edges[i]->IntersectWithPath(*edges[k], meetings);
            for (TPoint<double> const & point : meetings)
            {
                auto const & end = ring[k - i == 1 ? i : k].end;
                if (std::hypot(point.x - end.x, point.y - end.y) > 1.0) return false;
            }
        }
        TPoint<double> const &from = ring[(i + n - 1) % n].end, &at = ring[i].end, &to = ring[(i + 1) % n].end;
        double const dot = (at.x - from.x) * (to.x - at.x) + (at.y - from.y) * (to.y - at.y);
        double const cross = (at.x - from.x) * (to.y - at.y) - (at.y - from.y) * (to.x - at.x);
        if (dot <= 0 && std::fabs(cross) < Margin * Margin) return false; // folds back
    }
    return true;
}

bool IsRoomFor(Ring const & hole, Shape const & shape)
{
    auto const inner = MakePolygon({hole});
    for (Ring const & ring : shape)
    {
        auto const outer = MakePolygon({ring});
        bool const isOutline = &ring == &shape.front();
        if (outer->PolygonInPolygon(*inner) != isOutline || inner->PolygonInPolygon(*outer)) return false;
        for (auto const & edge : EdgesOf(ring))
        {
            for (CPathObjectBase const* object : inner->GetOutline())
            {
                if (!AreApart(*edge, *object)) return false;
            }
        }
    }
    return true;
}

} // namespace

/// Random vertices, on the lattice or in turn around a centre; any edge may become an arc.
Shape CShapeGenerator::Polygon(bool isStar, bool withArcs)
{
    Ring ring;
    do
    {
        ring.assign(static_cast<std::size_t>(isStar ? Int(3, 12) : Int(3, 7)), TEdge());
        double angle = 0.0;
        for (TEdge & edge : ring)
        {
            angle += Real(0.2, 1.8) * 2 * Pi / static_cast<double>(ring.size() + 1);
            double const radius = Real(0.5, 4) * Unit;
            edge.end = isStar ? TPoint<double>(radius * std::cos(angle), radius * std::sin(angle))
                              : TPoint<double>(Int(0, 6) * Unit, Int(0, 6) * Unit);
        }
        TPoint<double> from = ring.back().end;
        for (TEdge & edge : ring)
        {
            double const offset = isStar ? Real(-2, 2) : Int(-2, 2) / 2.0; // of the centre, in edge lengths
            TPoint<double> const to = edge.end;
            if (withArcs && Int(0, 1) == 0)
                edge = {
                    to,
                    true,
                    offset > 0,
                    {(from.x + to.x) / 2 - offset * (to.y - from.y), (from.y + to.y) / 2 + offset * (to.x - from.x)},
                    true};
            from = to;
        }
    } while (!IsSimple(ring));
    return isStar ? Mapped({ring}, 1, 0, Real(0, 6) * Unit, Real(0, 6) * Unit) : Shape{ring};
}

Shape CShapeGenerator::Gear()
{
    Ring ring;
    int const teeth = Int(3, 10);
    double const outer = Int(3, 5) * Unit, inner = Int(1, 2) * Unit, phase = Int(0, 1) * Real(0, 1);
    for (int i = 0; i < 4 * teeth; ++i)
    {
        double const angle = (phase + i * 0.25) * 2 * Pi / teeth;
        double const radius = i % 4 < 2 ? outer : inner;
        ring.push_back({{radius * std::cos(angle), radius * std::sin(angle)}, i % 2 == 1, true, {0, 0}, true});
    }
    return Mapped({ring}, 1, 0, Int(0, 6) * Unit, Int(0, 6) * Unit);
}

Shape CShapeGenerator::Slanted(Shape const & shape)
{
    double const angle = Real(0, 2 * Pi);
    return Mapped(shape, std::cos(angle), std::sin(angle), Real(0, 6) * Unit, Real(0, 6) * Unit);
}

Shape CShapeGenerator::Placed(char const* text)
{
    constexpr int Quarter[] = {1, 0, -1, 0, 1};
    int const turn = Int(0, 3);
    double const scale = Int(1, 2) * Unit;
    Shape shape =
        Mapped(ParseShape(text), scale * Quarter[turn], scale * Quarter[turn + 1], Int(0, 6) * Unit, Int(0, 6) * Unit);
    Divide(shape.front());
    return shape;
}

Shape CShapeGenerator::General()
{
    return Int(0, 1) == 0 ? Polygon(true, false) : Slanted(Placed(Plates[Int(0, std::size(Plates) - 1)]));
}

Shape CShapeGenerator::Lattice()
{
    return Int(0, 1) == 0 ? Polygon(false, false) : Placed(Plates[Int(0, std::size(Plates) - 1)]);
}

Shape CShapeGenerator::Round()
{
    return Placed(Rounds[Int(0, std::size(Rounds) - 1)]);
}

Shape CShapeGenerator::Curved()
{
    int const pick = Int(0, 3);
    return pick == 0 ? Gear() : pick == 1 ? Slanted(Round()) : Polygon(pick == 2, true);
}

Shape CShapeGenerator::Any()
{
    int const pick = Int(0, 3);
    return pick == 0 ? General() : pick == 1 ? Lattice() : pick == 2 ? Round() : Curved();
}

Shape CShapeGenerator::Holed()
{
    Shape shape = Mapped(Any(), 2, 0, 0, 0);
    for (int tries = 10; tries > 0 && shape.size() < 3; --tries)
    {
        Shape const hole =
            Mapped(ParseShape(Holes[Int(0, std::size(Holes) - 1)]), Unit, 0, Int(0, 14) * Unit, Int(0, 14) * Unit);
        if (IsRoomFor(hole.front(), shape)) shape.push_back(hole.front());
    }
    return shape;
}

void CShapeGenerator::Divide(Ring & ring)
{
    int const chance = Int(0, 2);
    for (TEdge & edge : ring)
    {
        edge.beginsObject = edge.isArc || Int(1, 2) <= chance;
    }
}

Shape CShapeGenerator::Disguised(Shape shape)
{
    for (Ring & ring : shape)
    {
        auto const at = ring.begin() + Int(0, static_cast<int>(ring.size()) - 1);
        auto const & from = (at == ring.begin() ? ring.end() : at)[-1].end;
        TEdge middle;
        middle.end = {(from.x + at->end.x) / 2, (from.y + at->end.y) / 2};
        if (!at->isArc) ring.insert(at, middle);
        Divide(ring);
    }
    shape = StartedLater(shape, Int(0, 20));
    return Int(0, 1) == 0 ? Reversed(shape) : shape;
}

} // namespace geometry::test
