// Outlines with arcs that share circles, are nearly equal, or come out of other operations.
#include "families.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include <geometry/arc/path_object_arc.h>
#include <geometry/path/path_object_polyline.h>

#include "kit.h"

namespace trials
{

namespace
{

constexpr double Pi = 3.14159265358979323846;

/// Takes the largest polygon out of a result; null if there is none.
Owned TakeLargest(Results & result)
{
    auto const largest = std::max_element(
        result.begin(), result.end(), [](CPolygon const* a, CPolygon const* b) { return a->GetArea() < b->GetArea(); });
    if (largest == result.end()) return nullptr;
    Owned taken(*largest);
    result.erase(largest);
    return taken;
}

/// A shape that shares something with another: it begins, or has its centre, in a vertex or in the centre of an arc, and
/// may have the radius of that arc.
Ring Related(CTrial & trial, CPolygon const & shape)
{
    CRandom & random = trial.random;
    auto const & outline = shape.GetOutline();
    geometry::CPathObjectBase const* object = outline[random.Next() % outline.size()];
    auto const* arc = dynamic_cast<geometry::CPathObjectArc const*>(object);
    bool const isAtCentre = arc != nullptr && random.Chance(0.5);
    geometry::TPoint<double> const point = isAtCentre ? arc->GetCentre() : object->GetStartPoint();
    TSpot const at = TSpot{point.x, point.y} - trial.GetPlace();
    double const own = trial.size * random.Scale(0.01, 0.3);
    double const radius =
        arc != nullptr && random.Chance(0.6) && arc->GetRadius() < trial.size ? arc->GetRadius() : own;
    double const angle = random.Chance(0.5) ? 0.5 * Pi * random.Int(0, 3) : random.Angle();
    TSpot const to = at + Polar(trial.size * random.Real(0.1, 0.5), angle);
    switch (random.Int(0, 4))
    {
    case 0:
        return Disc(at, radius, angle, random.Int(1, 4));
    case 1:
        return Stadium(at, to, radius);
    case 2:
        return Sector(at, radius, angle, angle + random.Real(0.3, 5.5));
    case 3:
        return Turned(Rect(at, at + TSpot{own, 0.5 * own}), angle, at);
    default:
        return Moved(Gear({}, 0.7 * radius, radius, random.Int(4, 12), angle), at);
    }
}

/// A ring whose arcs are cut into `parts` each.
Ring Divided(Ring const & ring, int parts)
{
    Ring divided;
    geometry::TPoint<double> from = ring.back().end;
    for (geometry::test::TEdge const & edge : ring)
    {
        double const start = std::atan2(from.y - edge.centre.y, from.x - edge.centre.x);
        double const end = std::atan2(edge.end.y - edge.centre.y, edge.end.x - edge.centre.x);
        double const sense = edge.isCounterClockwise ? 1.0 : -1.0;
        double sweep = std::remainder(sense * (end - start), 2.0 * Pi);
        if (sweep <= 0.0) sweep += 2.0 * Pi;
        double const radius = std::hypot(from.x - edge.centre.x, from.y - edge.centre.y);
        for (int i = 1; edge.isArc && i < parts; ++i)
        {
            TSpot const at = TSpot{edge.centre.x, edge.centre.y} + Polar(radius, start + sense * sweep * i / parts);
            divided.push_back({{at.x, at.y}, true, edge.isCounterClockwise, edge.centre, true});
        }
        divided.push_back(edge);
        from = edge.end;
    }
    return divided;
}

/// Each coordinate moved by some units in the last place of the largest.
Ring Shaken(CRandom & random, Ring ring, double ulp)
{
    auto const shake = [&](geometry::TPoint<double> & p) {
        p = {p.x + random.Int(-3, 3) * ulp, p.y + random.Int(-3, 3) * ulp};
    };
    for (geometry::test::TEdge & edge : ring)
    {
        shake(edge.end);
        shake(edge.centre);
    }
    return ring;
}

/// Another ring that is equal to it but for a little.
Ring NearCopy(CTrial const & trial, CRandom & random, Ring ring)
{
    double const farthest = trial.size + std::abs(trial.GetPlace().x);
    double const ulp = std::nextafter(farthest, DBL_MAX) - farthest;
    bool const isArcRing = ring.size() == 1;
    if (random.Chance(0.3)) ring = geometry::test::Reversed({ring}).front();
    if (random.Chance(0.3)) ring = geometry::test::StartedLater({ring}, random.Int(0, 7)).front();
    switch (random.Int(0, 4))
    {
    case 0:
        ring = Moved(ring, {random.Int(-5, 5) * ulp, random.Int(-5, 5) * ulp});
        break;
    case 1:
        ring = Moved(ring, Polar(random.Scale(1e-10, 0.03), random.Angle()));
        break;
    case 2:
    {
        double const angle = random.Angle();
        ring = Turned(Turned(ring, angle, {}), -angle, {});
        break;
    }
    case 3:
        if (!isArcRing) ring = Shaken(random, ring, ulp);
        break;
    default:
        break;
    }
    return random.Chance(0.3) ? Divided(ring, random.Int(2, 4)) : ring;
}

/// One of three circles or a part of it.
Ring PartOf(CRandom & random, TSpot const (&centres)[3], double const (&radii)[3], double const (&angles)[4])
{
    int const i = random.Int(0, 2);
    int const j = (i + random.Int(1, 2)) % 3;
    double const from = random.Chance(0.7) ? angles[random.Int(0, 3)] : random.Angle();
    double const sweep = random.Chance(0.5) ? 0.25 * Pi * random.Int(1, 7) : random.Real(0.2, 6.0);
    Ring const lens = Lens(centres[i], radii[i], centres[j], radii[j]);
    switch (random.Int(0, 5))
    {
    case 0:
        return Disc(centres[i], radii[i], from, random.Int(1, 4), random.Chance(0.5));
    case 1:
        return Sector(centres[i], radii[i], from, from + sweep);
    case 2:
        return Segment(centres[i], radii[i], from, from + sweep);
    case 3:
        return RingSector(centres[i], 0.5 * radii[i], radii[i], from, from + sweep);
    default:
        return lens.empty() ? Disc(centres[i], radii[i], from) : lens;
    }
}

} // namespace

void Chains(CTrial & trial)
{
    CRandom & random = trial.random;
    Owned shape = trial.Make(AnyRing(random, {}, trial.size));
    for (int step = 0; step < 20; ++step)
    {
        auto const & rect = shape->GetBoundingRect();
        double const side = std::max(rect.maxX - rect.minX, rect.maxY - rect.minY);
        bool const isSpent = side < 0.1 * trial.size || shape->GetArea() < 1e-3 * trial.size * trial.size;
        if (isSpent) shape = trial.Make(AnyRing(random, {}, trial.size));
        TSpot at = {random.Real(-0.6, 0.6) * trial.size, random.Real(-0.6, 0.6) * trial.size};
        double const grid = 0.125 * trial.size;
        if (random.Chance(0.4)) at = {grid * std::round(at.x / grid), grid * std::round(at.y / grid)};
        Ring const any = AnyRing(random, at, trial.size * random.Scale(0.05, 0.7));
        Owned const other = trial.Make(random.Chance(0.5) ? any : Related(trial, *shape));
        Results result;
        if (!trial.Boolean(random.Pick({0, 0, 0, 1, 2, 3, 3, 3, 3, 4}), *shape, *other, result)) return;
        Owned next = TakeLargest(result);
        if (next != nullptr) shape = std::move(next);
    }
}

void Grown(CTrial & trial)
{
    CRandom & random = trial.random;
    Owned const shape = trial.Make(AnyRing(random, {}, trial.size));
    double const amount = trial.size * random.Scale(0.002, 0.2);
    Results grown;
    Results shrunk;
    bool const isGrown = trial.Grow(*shape, amount, grown) && !grown.empty();
    bool const isShrunk = trial.Grow(*shape, -amount, shrunk) && !shrunk.empty();
    if (isGrown) trial.Booleans(*grown.front(), *shape);
    if (isShrunk) trial.Booleans(*shape, *shrunk.front());
    if (isGrown && isShrunk && random.Chance(0.3)) trial.Booleans(*grown.front(), *shrunk.front());
    if (!isGrown || random.Chance(0.7)) return;
    Results back;
    if (trial.Grow(*grown.front(), -amount, back) && !back.empty()) trial.Booleans(*shape, *back.front());
}

void NearCopies(CTrial & trial)
{
    CRandom & random = trial.random;
    double const change = random.Chance(0.5) ? 0.0 : random.Sign() * random.Scale(1e-9, 0.03);
    double const radius = trial.size * random.Scale(0.01, 0.5);
    double const angle = random.Chance(0.5) ? Pi : random.Angle();
    TSpot const at = {random.Real(-0.5, 0.5) * trial.size, random.Real(-0.5, 0.5) * trial.size};
    TSpot const to = at + Polar(trial.size * random.Real(0.1, 0.5), random.Angle());
    int const teeth = random.Int(3, 16);
    int const kind = random.Int(0, 3);
    auto const make = [&](double r)
    {
        return kind == 0   ? Disc(at, r, angle)
               : kind == 1 ? Stadium(at, to, 0.2 * r)
               : kind == 2 ? Gear(at, 0.7 * r, r, teeth, angle)
                           : Disc(at, r, angle, 4);
    };
    Ring const ring = random.Chance(0.8) ? make(radius) : AnyRing(random, at, trial.size);
    Ring const other = change != 0.0 && random.Chance(0.5) ? make(radius + change) : ring;
    Owned const a = trial.Make(ring);
    Owned const b = trial.Make(NearCopy(trial, random, other));
    trial.Booleans(*a, *b);
    Owned const c = trial.Make(NearCopy(trial, random, ring));
    Results merged;
    trial.MergeMany({a.get(), b.get(), c.get()}, merged);
    if (random.Chance(0.2)) trial.Distances(*a, *b);
}

void SharedCircles(CTrial & trial)
{
    CRandom & random = trial.random;
    TSpot const first = {random.Real(-0.2, 0.2) * trial.size, random.Real(-0.2, 0.2) * trial.size};
    double const r = trial.size * random.Real(0.1, 0.5);
    bool const isConcentric = random.Chance(0.3);
    TSpot const centres[3] = {first, isConcentric ? first : first + Polar(random.Real(0.1, 1.5) * r, random.Angle()),
                              first + Polar(random.Real(0.1, 1.0) * r, 0.25 * Pi * random.Int(0, 7))};
    double const radii[3] = {r, random.Chance(0.4) ? r : r * random.Real(0.4, 1.4), r * random.Pick({0.5, 1.0, 2.0})};
    double const angles[4] = {0.0, Pi, random.Angle(), random.Angle()};
    Owned const a = trial.Make(PartOf(random, centres, radii, angles));
    Owned const b = trial.Make(PartOf(random, centres, radii, angles));
    Owned const c = trial.Make(PartOf(random, centres, radii, angles));
    trial.Booleans(*a, *b);
    Results united;
    if (trial.Boolean(3, *a, *b, united) && !united.empty()) trial.Booleans(*united.front(), *c);
    Results rest;
    if (trial.Boolean(0, *a, *b, rest) && !rest.empty()) trial.Booleans(*rest.front(), *c);
    if (random.Chance(0.2)) trial.Distances(*a, *c);
    trial.Area(*a);
}

void Gears(CTrial & trial)
{
    CRandom & random = trial.random;
    double const outer = 0.4 * trial.size;
    double const inner = outer * random.Real(0.5, 0.95);
    int const teeth = random.Int(4, 40);
    double const turn = random.Chance(0.5) ? 0.0 : random.Angle();
    double const share = random.Real(0.1, 0.5);
    TSpot const away = Polar(random.Real(0.0, 2.0) * outer, random.Angle());
    Owned const gear = trial.Make(Gear({}, inner, outer, teeth, turn, share));
    Owned const other =
        trial.Make(Gear(random.Chance(0.4) ? TSpot{} : away, inner, outer * random.Pick({1.0, 1.0, 1.1}), teeth,
                        random.Chance(0.3) ? turn : random.Angle(), share));
    trial.Booleans(*gear, *other);
    double const half = random.Chance(0.3) ? random.Scale(1e-7, 1e-3) * outer : random.Real(0.01, 0.3) * outer;
    Ring const slot = Rect({-half, 0.2 * outer}, {half, 1.3 * outer});
    Owned const cut = trial.Make(random.Chance(0.4) ? slot : Turned(slot, random.Angle(), {}));
    trial.Booleans(*gear, *cut);
    double const side = 0.5 * trial.size;
    Owned const plate =
        trial.Make(random.Chance(0.5) ? Rect({-side, -side}, {side, side})
                                      : Disc({}, random.Pick({inner, outer, 0.5 * (inner + outer)}), Pi));
    trial.Booleans(*plate, *gear);
    Owned const one = trial.Make(Disc({}, outer, 0.5 * Pi));
    Results rest;
    if (trial.Boolean(0, *one, *cut, rest) && !rest.empty()) trial.Booleans(*rest.front(), *gear);
}

void Paths(CTrial & trial)
{
    CRandom & random = trial.random;
    TSpot const place = trial.GetPlace();
    TSpot at = {random.Real(-0.5, 0.5) * trial.size, random.Real(-0.5, 0.5) * trial.size};
    double const step = trial.size * random.Scale(0.01, 0.5);
    double const distance = random.Chance(0.5) ? step * random.Scale(1e-2, 2.0) : trial.size * random.Scale(1e-3, 0.1);
    if (random.Chance(0.4))
    {
        double const from = random.Angle();
        double const sweep = random.Chance(0.5) ? random.Scale(1e-4, 1.0) : random.Real(0.5, 6.2);
        TSpot const centre = place + at;
        TSpot const start = centre + Polar(step, from);
        TSpot const end = centre + Polar(step, from + random.Sign() * sweep);
        bool const isCounterClockwise = random.Chance(0.5);
        trial.InflatePath(
            geometry::CPathObjectArc({start.x, start.y}, {end.x, end.y}, {centre.x, centre.y}, isCounterClockwise),
            distance);
        return;
    }
    geometry::CPathObjectPolyline line;
    bool const isStraight = random.Chance(0.5);
    double direction = random.Angle();
    for (int count = random.Int(2, 6); count > 0; --count)
    {
        line.AddVertex(place.x + at.x, place.y + at.y);
        direction += isStraight ? random.Scale(1e-9, 0.3) * random.Sign() : random.Real(-3.0, 3.0);
        at = at + Polar(step * random.Real(0.2, 2.0), direction);
    }
    trial.InflatePath(line, distance);
}

} // namespace trials
