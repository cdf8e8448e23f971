#include "families.h"

#include <cmath>
#include <functional>
#include <map>

namespace trials
{

using namespace geometry;

std::uint64_t CRandom::Next()
{
    std::uint64_t z = (m_State += 0x9E3779B97F4A7C15ULL);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    return z ^ (z >> 31);
}

namespace
{

constexpr double pi = 3.14159265358979323846;
using P = TPoint<double>;
using Objects = std::vector<CPathObjectBase*>;

/// Makes shapes of about unit size times `scale`, shifted to a place.
class CShapes
{
public:
    CShapes(CRandom & random, double size, double away) : r(random), s(size), ox(away), oy(away == 0 ? 0 : -0.7 * away) {}

    P At(double x, double y) const { return P(ox + s * x, oy + s * y); }
    CPathObjectBase* Line(std::vector<P> const & p) const { return new CPathObjectPolyline(p.begin(), p.end()); }
    Owned Of(Objects const & o) const { return std::make_unique<CPolygon>(o.begin(), o.end()); }
    Owned Poly(std::vector<P> p) const
    {
        p.push_back(p.front());
        return Of({Line(p)});
    }
    Owned Rect(double x0, double y0, double x1, double y1) const
    {
        return Poly({At(x0, y0), At(x1, y0), At(x1, y1), At(x0, y1)});
    }
    /// One circle as 1 to 4 arcs from any joint, either way round.
    Owned Disc(double x, double y, double radius, int arcs = 0) const
    {
        int const n = arcs > 0 ? arcs : 1 + r.Below(4);
        bool const ccw = r.Below(2) != 0;
        double const first = r.Below(2) != 0 ? pi / 2 * r.Below(4) : r.Between(0, 2 * pi);
        P const c = At(x, y);
        std::vector<P> joints;
        for (int i = 0; i < n; ++i)
        {
            double const a = first + (ccw ? 1 : -1) * 2 * pi * i / n;
            joints.push_back(P(c.x + s * radius * std::cos(a), c.y + s * radius * std::sin(a)));
        }
        Objects o;
        for (int i = 0; i < n; ++i) o.push_back(new CPathObjectArc(joints[i], joints[(i + 1) % n], c, ccw, s * radius));
        return Of(o);
    }
    Owned Stadium(double ax, double ay, double bx, double by, double radius) const
    {
        double const length = std::hypot(bx - ax, by - ay);
        if (length == 0) return Disc(ax, ay, radius);
        double const nx = -(by - ay) / length * radius, ny = (bx - ax) / length * radius;
        P const p1 = At(ax - nx, ay - ny), p2 = At(bx - nx, by - ny), p3 = At(bx + nx, by + ny), p4 = At(ax + nx, ay + ny);
        return Of({Line({p1, p2}), new CPathObjectArc(p2, p3, At(bx, by), true), Line({p3, p4}),
                   new CPathObjectArc(p4, p1, At(ax, ay), true)});
    }
    Owned RoundRect(double x0, double y0, double x1, double y1, double d) const
    {
        return Of({Line({At(x0 + d, y0), At(x1 - d, y0)}), new CPathObjectArc(At(x1 - d, y0), At(x1, y0 + d), At(x1 - d, y0 + d), true),
                   Line({At(x1, y0 + d), At(x1, y1 - d)}), new CPathObjectArc(At(x1, y1 - d), At(x1 - d, y1), At(x1 - d, y1 - d), true),
                   Line({At(x1 - d, y1), At(x0 + d, y1)}), new CPathObjectArc(At(x0 + d, y1), At(x0, y1 - d), At(x0 + d, y1 - d), true),
                   Line({At(x0, y1 - d), At(x0, y0 + d)}), new CPathObjectArc(At(x0, y0 + d), At(x0 + d, y0), At(x0 + d, y0 + d), true)});
    }
    /// Teeth on a circle: arcs of the root and of the tips, straight flanks.
    Owned Gear(double x, double y, double root, double tip, int teeth, double turn) const
    {
        P const c = At(x, y);
        auto const on = [&](double radius, double part)
        {
            double const a = turn + 2 * pi * part / teeth;
            return P(c.x + s * radius * std::cos(a), c.y + s * radius * std::sin(a));
        };
        Objects o;
        for (int i = 0; i < teeth; ++i)
        {
            o.push_back(new CPathObjectArc(on(root, i), on(root, i + 0.4), c, true, s * root));
            o.push_back(Line({on(root, i + 0.4), on(tip, i + 0.5)}));
            o.push_back(new CPathObjectArc(on(tip, i + 0.5), on(tip, i + 0.9), c, true, s * tip));
            o.push_back(Line({on(tip, i + 0.9), on(root, i + 1 == teeth ? 0 : i + 1)}));
        }
        return Of(o);
    }
    Owned Star(double x, double y, double inner, double outer, int spikes) const
    {
        std::vector<P> p;
        double const turn = r.Between(0, 6);
        for (int i = 0; i < 2 * spikes; ++i)
        {
            double const a = turn + pi * (i + r.Between(-0.3, 0.3)) / spikes, d = i % 2 ? inner : outer * r.Between(0.7, 1);
            p.push_back(At(x + d * std::cos(a), y + d * std::sin(a)));
        }
        return Poly(p);
    }
    Owned Any() const
    {
        double const x = r.Between(-0.5, 0.5), y = r.Between(-0.5, 0.5);
        switch (r.Below(6))
        {
        case 0: return Disc(x, y, r.Between(0.1, 0.6));
        case 1: return Stadium(x, y, r.Between(-0.6, 0.6), r.Between(-0.6, 0.6), r.Between(0.05, 0.3));
        case 2: return Rect(x, y, x + r.Between(0.1, 0.8), y + r.Between(0.1, 0.8));
        case 3: return RoundRect(x, y, x + 0.6, y + 0.5, r.Between(0.02, 0.24));
        case 4: return Gear(x, y, 0.3, 0.45, 3 + r.Below(9), r.Between(0, 6));
        default: return Star(x, y, 0.2, 0.6, 3 + r.Below(8));
        }
    }
    CRandom & r;
    double s, ox, oy;
};

void AddHole(Owned & polygon, Owned const & hole)
{
    Polygons extra;
    polygon->AddHole(hole.get(), nullptr, nullptr, extra);
    for (CPolygon* e : extra) delete e;
}

Owned Largest(Polygons & polygons)
{
    Owned best;
    for (CPolygon* p : polygons)
    {
        Owned owned(p);
        if (best == nullptr || owned->GetArea() > best->GetArea()) best.swap(owned);
    }
    polygons.clear();
    return best;
}

/// A clone of every object, changed.
Owned Changed(CPolygon const & polygon, std::function<void(CPathObjectBase &)> const & change)
{
    Objects o;
    for (CPathObjectBase const* object : polygon.GetOutline())
    {
        o.push_back(object->Clone());
        change(*o.back());
    }
    return std::make_unique<CPolygon>(o.begin(), o.end());
}

/// Tracks that go on where others end, pads of the same radius, on and off a grid.
TInput Board(CShapes & k)
{
    CRandom & r = k.r;
    TInput in;
    in.isMany = true;
    in.first.push_back(k.Rect(-1, -0.8, 1, 0.8));
    double const grid = r.Below(2) ? 0.025 : 1e-9;
    auto const snap = [&](double v) { return std::round(v / grid) * grid; };
    for (int t = 1 + r.Below(5); t > 0; --t)
    {
        double x = snap(r.Between(-1, 1)), y = snap(r.Between(-0.8, 0.8));
        double const radius = snap(r.Between(0.03, 0.08));
        if (r.Below(2)) in.second.push_back(k.Disc(x, y, radius));
        for (int i = 1 + r.Below(6); i > 0; --i)
        {
            double const a = r.Below(2) ? pi / 4 * r.Below(8) : r.Between(0, 6.3), d = r.Between(0.01, 0.4);
            double const nx = snap(x + d * std::cos(a)), ny = snap(y + d * std::sin(a));
            if (nx != x || ny != y) in.second.push_back(k.Stadium(x, y, nx, ny, radius));
            x = nx, y = ny;
            if (r.Below(4) == 0) in.second.push_back(k.Disc(x, y, r.Below(2) ? radius : 2 * radius));
        }
        if (r.Below(2)) in.second.push_back(k.Disc(x, y, radius));
    }
    return in;
}

TInput Teardrop(CShapes & k)
{
    CRandom & r = k.r;
    TInput in;
    double const radius = 0.3, a = r.Between(0, 6.3), wide = r.Between(0.3, 1.2), far = radius / std::cos(wide) * r.Between(1, 1.5);
    auto const on = [&](double angle) { return k.At(radius * std::cos(angle), radius * std::sin(angle)); };
    P const p1 = on(a + wide), p2 = on(a - wide), tip = k.At(far * std::cos(a), far * std::sin(a)), c = k.At(0, 0);
    P const joint = r.Below(3) ? p1 : on(r.Between(0, 6.3));
    in.first.push_back(k.Of({new CPathObjectArc(joint, joint, c, true, k.s * radius)}));
    in.second.push_back(k.Of({k.Line({tip, p1}), new CPathObjectArc(p1, p2, c, true, k.s * radius), k.Line({p2, tip})}));
    return in;
}

TInput TrackAndPad(CShapes & k)
{
    CRandom & r = k.r;
    TInput in;
    double const radius = std::pow(10, r.Between(-3, -0.3)), x = r.Below(21) * 0.05, y = (r.Below(41) - 20) * 0.05;
    in.first.push_back(k.Stadium(0, 0, x, y, radius));
    in.second.push_back(k.Disc(x, y, radius, r.Below(2) ? 1 : 0));
    return in;
}

/// Pieces of one shape, cut by the same lines, put together again.
TInput CommonLines(CShapes & k)
{
    CRandom & r = k.r;
    std::vector<Owned> pieces;
    pieces.push_back(k.Star(0, 0, 0.5, 1, 4 + r.Below(5)));
    for (int cut = 3 + r.Below(2); cut > 0; --cut)
    {
        double const a = r.Between(0, 6.3), d = r.Between(-0.4, 0.4), nx = std::cos(a), ny = std::sin(a);
        auto const at = [&](double along, double across) { return k.At(nx * (d + across) - ny * along, ny * (d + across) + nx * along); };
        Owned const half = k.Poly({at(-3, 0), at(-3, 3), at(3, 3), at(3, 0)});
        std::vector<Owned> next;
        for (Owned const & p : pieces)
        {
            Polygons result;
            p->IntersectPolygon(result, *half);
            for (CPolygon* q : result) next.emplace_back(q);
            result.clear();
            p->SubtractPolygon(result, *half);
            for (CPolygon* q : result) next.emplace_back(q);
        }
        pieces.swap(next);
    }
    TInput in;
    for (auto* side : {&in.first, &in.second})
    {
        ConstPolygons subset;
        for (Owned const & p : pieces)
            if (r.Below(2)) subset.push_back(p.get());
        Polygons merged;
        CPolygon::MergePolygons(merged, subset);
        side->push_back(Largest(merged));
    }
    return in;
}

TInput Chain(CShapes & k)
{
    TInput in;
    Owned shape = k.Any();
    for (int i = k.r.Below(12); i > 0 && shape != nullptr; --i)
    {
        Owned const other = k.Any();
        Polygons result;
        k.r.Below(2) ? shape->SubtractPolygon(result, *other) : shape->MergePolygon(result, *other);
        if (!result.empty()) shape = Largest(result);
    }
    in.first.push_back(std::move(shape));
    in.second.push_back(k.Any());
    return in;
}

TInput Grown(CShapes & k)
{
    TInput in;
    in.first.push_back(k.Any());
    Polygons result;
    in.first[0]->GetInflatedPolygon(result, k.s * k.r.Between(0.005, 0.1) * (k.r.Below(3) ? 1 : -1));
    in.second.push_back(Largest(result));
    return in;
}

TInput NearCopies(CShapes & k)
{
    CRandom & r = k.r;
    TInput in;
    bool const isDisc = r.Below(2) != 0;
    double const radius = r.Between(0.1, 0.5), off = std::pow(10, r.Between(-9, -1.5)) / k.s * (r.Below(3) - 1);
    in.first.push_back(isDisc ? k.Disc(0, 0, radius) : k.Any());
    if (isDisc && r.Below(2))
    {
        in.second.push_back(k.Disc(0, 0, radius + off));
        return in;
    }
    double const angle = r.Between(0, 6), dx = k.s * off * r.Below(2), dy = k.s * off * r.Below(2);
    int const kind = r.Below(3);
    in.second.push_back(Changed(*in.first[0],
                                [&](CPathObjectBase & o)
                                {
                                    if (kind == 0) o.RotateRadians(angle), o.RotateRadians(-angle);
                                    if (kind == 1) o.Translate(k.s * 0.7, k.s * 0.3), o.Translate(-k.s * 0.7, -k.s * 0.3);
                                    o.Translate(dx, dy);
                                }));
    return in;
}

/// Bores that touch an edge, rings that pass a point twice.
TInput Tangent(CShapes & k)
{
    CRandom & r = k.r;
    TInput in;
    in.first.push_back(k.Rect(0, 0, 1, 1));
    double const radius = 0.125 * (1 + r.Below(3));
    for (int i = 1 + r.Below(3); i > 0; --i)
    {
        double const along = 0.125 * r.Below(9);
        Polygons result;
        int const side = r.Below(4);
        double const x = side < 2 ? along : side == 2 ? radius : 1 - radius, y = side < 2 ? (side == 0 ? radius : 1 - radius) : along;
        in.first[0]->SubtractPolygon(result, r.Below(2) ? *k.Disc(x, y, radius) : *k.Rect(x, y, x + 0.25, y + 0.25));
        if (!result.empty()) in.first[0] = Largest(result);
    }
    double const x = 0.125 * r.Below(8), y = 0.125 * r.Below(8);
    in.second.push_back(r.Below(2) ? k.Disc(x, y, radius) : k.Rect(x, y, x + 0.125 * (1 + r.Below(5)), y + 0.125 * (1 + r.Below(5))));
    return in;
}

TInput SharedCircles(CShapes & k)
{
    CRandom & r = k.r;
    TInput in;
    double const x[] = {0, 0.3, 0.6}, radius[] = {0.5, 0.4, 0.3};
    for (auto* side : {&in.first, &in.second})
    {
        Owned shape = k.Disc(x[r.Below(3)], x[r.Below(2)], radius[r.Below(3)]);
        for (int i = 1 + r.Below(2); i > 0; --i)
        {
            Owned const other = k.Disc(x[r.Below(3)], x[r.Below(2)], radius[r.Below(3)]);
            Polygons result;
            int const op = r.Below(3);
            op == 0 ? shape->SubtractPolygon(result, *other) : op == 1 ? shape->IntersectPolygon(result, *other) : shape->MergePolygon(result, *other);
            if (!result.empty()) shape = Largest(result);
        }
        side->push_back(std::move(shape));
    }
    return in;
}

TInput Gears(CShapes & k)
{
    CRandom & r = k.r;
    TInput in;
    in.first.push_back(k.Gear(0, 0, 0.6, 0.8, 6 + r.Below(20), r.Between(0, 1)));
    double const width = std::pow(10, r.Between(-8, -0.5));
    switch (r.Below(4))
    {
    case 0: in.second.push_back(k.Rect(-width, -1, width, 1)); break;
    case 1: in.second.push_back(k.Disc(0, 0, r.Below(2) ? 0.6 : 0.8)); break;
    case 2: in.second.push_back(k.Gear(0, 0, 0.6, 0.8, 6 + r.Below(20), r.Between(0, 1))); break;
    default: in.second.push_back(k.Gear(0.4, 0, 0.6, 0.8, 9, r.Between(0, 1)));
    }
    return in;
}

TInput Plain(CShapes & k)
{
    TInput in;
    for (auto* side : {&in.first, &in.second})
    {
        side->push_back(k.Any());
        if (k.r.Below(3) == 0)
        {
            side->back() = k.RoundRect(-0.7, -0.6, 0.8, 0.7, 0.1);
            AddHole(side->back(), k.Disc(k.r.Between(-0.3, 0.3), 0, 0.2));
            AddHole(side->back(), k.Star(0.1, k.r.Between(-0.3, 0.4), 0.1, 0.2, 5));
        }
    }
    return in;
}

TInput Grid(CShapes & k)
{
    CRandom & r = k.r;
    TInput in;
    in.isMany = r.Below(2) != 0;
    in.first.push_back(k.Rect(0, 0, 1, 1));
    for (int i = in.isMany ? 2 + r.Below(8) : 1; i > 0; --i)
    {
        auto const at = [&] { return 0.0625 * (r.Below(20) - 2); };
        double const x = at(), y = at(), w = 0.0625 * (1 + r.Below(8)), h = 0.0625 * (1 + r.Below(8));
        in.second.push_back(r.Below(2) ? k.Rect(x, y, x + w, y + h)
                                       : k.Poly({k.At(x, y), k.At(x + w, y), k.At(x + (r.Below(3) - 1) * 0.0625, y + h)}));
    }
    if (!in.isMany) in.first[0] = k.Poly({k.At(0, 0), k.At(0.75, 0.0625 * r.Below(9)), k.At(0.5, 0.5), k.At(0.0625 * r.Below(9), 0.75)});
    return in;
}

using Maker = TInput (*)(CShapes &);
std::vector<std::pair<std::string, Maker>> const families{
    {"board", Board},   {"teardrop", Teardrop},        {"pad", TrackAndPad},    {"lines", CommonLines},
    {"chain", Chain},   {"grown", Grown},              {"copies", NearCopies},  {"tangent", Tangent},
    {"circles", SharedCircles}, {"gears", Gears},      {"plain", Plain},        {"grid", Grid}};

} // namespace

std::vector<std::string> const & FamilyNames()
{
    static std::vector<std::string> const names = []
    {
        std::vector<std::string> all;
        for (auto const & family : families) all.push_back(family.first);
        return all;
    }();
    return names;
}

TInput MakeInput(std::string const & family, CRandom & random, double size, double away)
{
    CShapes shapes(random, size, away);
    TInput input;
    for (auto const & f : families)
        if (f.first == family) input = f.second(shapes);
    for (auto* side : {&input.first, &input.second})
        std::erase_if(*side, [](Owned const & p) { return p == nullptr || p->GetOutline().empty(); });
    return input;
}

} // namespace trials
