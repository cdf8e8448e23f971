// Boards as they are drawn: tracks that go on where others end, pads as wide as their tracks. The unit is a hundredth
// of the size, a millimetre where the size is 1e8.
#include "families.h"

#include <algorithm>
#include <cmath>

#include "kit.h"

namespace trials
{

namespace
{

constexpr double Pi = 3.14159265358979323846;

struct TTracks
{
    std::vector<Ring> rings;
    double radius = 0.0;
};

TSpot Snapped(TSpot const & p, double grid)
{
    return {grid * std::round(p.x / grid), grid * std::round(p.y / grid)};
}

/// Adds one chain of tracks, with a pad at its end. `longest`: the length of a track.
void AddChain(CRandom & random, double unit, TSpot at, double extent, double longest, std::vector<Ring> & rings)
{
    double const grid = random.Pick({0.25, 1e-5}) * unit; // the finer one keeps eighths of a turn exact, too
    double const radius = random.Pick({0.1, 0.15, 0.2, 0.3, 0.4016, 1.0}) * unit;
    bool const isOnGrid = random.Chance(0.6);
    bool const isEighths = random.Chance(0.6);
    if (isOnGrid) at = Snapped(at, grid);
    int const count = random.Int(1, 7);
    double direction = 0.25 * Pi * random.Int(0, 7);
    for (int i = 0; i < count; ++i)
    {
        direction += isEighths ? 0.25 * Pi * random.Int(-2, 2) : random.Real(-2.0, 2.0);
        double const length = random.Chance(0.1) ? random.Scale(1e-5, 0.1) * unit : random.Scale(0.1, longest) * unit;
        TSpot to = at + Polar(length, direction);
        if (isOnGrid) to = Snapped(to, grid);
        bool const isOut = std::abs(to.x) > extent || std::abs(to.y) > extent;
        if (isOut || Length(to - at) < 1e-6 * unit) continue;
        rings.push_back(Stadium(at, to, radius));
        at = to;
    }
    if (rings.empty()) return;
    if (random.Chance(0.5))
    {
        double const pad = random.Chance(0.5) ? radius : random.Real(1.0, 3.0) * radius;
        rings.push_back(Disc(at, pad, random.Chance(0.5) ? Pi : random.Angle()));
    }
    if (random.Chance(0.3))
    {
        TSpot const half = {random.Real(0.3, 2.0) * unit, random.Real(0.3, 2.0) * unit};
        Ring const pad = RoundRect(at - half, at + half, random.Real(0.1, 0.9) * std::min(half.x, half.y));
        rings.push_back(random.Chance(0.7) ? pad : Turned(pad, random.Chance(0.5) ? 0.25 * Pi : random.Angle(), at));
    }
}

/// Many short tracks about a border of the tiles that large subtractions work in: those begin at the lower left corner
/// of all cutters, which a disc keeps, and have a fixed side.
void AddChainsAtBorder(CRandom & random, double unit, double extent, std::vector<Ring> & rings)
{
    constexpr double TileSide = 24e6;
    double const keeper = 1.2 * unit;
    rings.push_back(Disc({-extent, -extent}, keeper, Pi));
    double const border = -extent - keeper + TileSide * random.Int(1, std::max(1, static_cast<int>(extent / 12e6)));
    for (int chains = random.Int(3, 10); chains > 0; --chains)
    {
        TSpot at = {border + random.Real(-1.5, 1.5) * unit, random.Real(-extent, extent)};
        if (random.Chance(0.5)) at = {at.y, at.x};
        AddChain(random, unit, at, extent, 2.0, rings);
    }
}

} // namespace

void Boards(CTrial & trial)
{
    CRandom & random = trial.random;
    double const unit = trial.size / 100.0;
    double const extent = random.Pick({8.0, 20.0, 40.0}) * unit;
    TSpot const corner = {extent + 3.0 * unit, extent + 3.0 * unit};
    Owned const board = trial.Make(Rect(-1.0 * corner, corner));
    std::vector<Ring> rings;
    for (int chains = random.Int(1, 6); chains > 0; --chains)
    {
        AddChain(random, unit, {random.Real(-extent, extent), random.Real(-extent, extent)}, extent, 12.0, rings);
    }
    if (trial.size > 2e7 && extent > 1.2e7 && random.Chance(0.8)) AddChainsAtBorder(random, unit, extent, rings);
    for (int vias = random.Int(0, 5); vias > 0; --vias)
    {
        TSpot const at = {random.Real(-extent, extent), random.Real(-extent, extent)};
        rings.push_back(Disc(random.Chance(0.5) ? Snapped(at, 0.25 * unit) : at, 0.3 * unit, Pi));
    }
    if (rings.empty()) return;
    std::vector<Owned> cutters;
    for (Ring const & ring : rings)
    {
        cutters.push_back(trial.Make(ring));
    }
    Polygons const list = Listed(cutters);
    Results tiled;
    Results untiled;
    Results merged;
    trial.SubtractMany(*board, list, 1, random.Chance(0.15) ? 2 : 1, tiled);
    trial.SubtractMany(*board, list, 1000000, 1, untiled);
    trial.MergeMany(list, merged);
    for (int pairs = 0; pairs < 3 && list.size() > 1; ++pairs)
    {
        int const i = random.Int(0, static_cast<int>(list.size()) - 2);
        trial.Booleans(*list[i], *list[i + 1]);
    }
}

void Teardrops(CTrial & trial)
{
    CRandom & random = trial.random;
    double const radius = trial.size * random.Scale(0.01, 1.0);
    double const joint = random.Chance(0.4) ? Pi : random.Angle();
    double const direction = random.Angle();
    double const reach = random.Real(1.3, 5.0);
    double const tangent = std::acos(1.0 / reach);
    bool const isTangent = random.Chance(0.5);
    double first = direction + (isTangent ? tangent : random.Real(0.1, 1.0) * tangent);
    double second = direction - (isTangent ? tangent : random.Real(0.1, 1.0) * tangent);
    if (random.Chance(0.4)) first = joint;
    if (random.Chance(0.1)) second = joint;
    // the apex sees both points: their half angle is less than that of the tangents
    double const half = 0.5 * std::remainder(first - second, 2.0 * Pi);
    if (std::cos(half) < 0.05 || std::abs(half) < 0.02) return;
    bool const isAsked = first == joint || second == joint;
    double const seen = isAsked ? std::max(reach, 1.05 / std::cos(half)) : reach;
    TSpot const apex = Polar(seen * radius, second + half);
    TSpot const centre = {random.Real(-1.0, 1.0) * trial.size, random.Real(-1.0, 1.0) * trial.size};
    TSpot const p = centre + Polar(radius, first);
    TSpot const q = centre + Polar(radius, second);
    // round the far side, so that the whole pad lies in the drop, or along the near side, so that they share that arc
    bool const isFar = random.Chance(0.6);
    bool const isAhead = half > 0.0;
    Owned const drop = trial.Make(CPen(centre + apex).Line(p).Arc(isAhead == isFar, centre, q).Close());
    Owned const pad = trial.Make(Disc(centre, radius, joint, 1, random.Chance(0.5)));
    trial.Booleans(*pad, *drop);
    Owned const track = trial.Make(Stadium(centre, centre + apex, 0.4 * radius));
    Polygons list = {pad.get(), drop.get(), track.get()};
    Results merged;
    trial.MergeMany(list, merged);
    if (random.Chance(0.2)) trial.Distances(*drop, *track);
}

void TrackAndPad(CTrial & trial)
{
    CRandom & random = trial.random;
    double const radius = random.Chance(0.5) ? random.Scale(1.0, 1e6) : 3e-3 * trial.size;
    double const step = trial.size * random.Scale(1e-3, 1.0);
    bool const isWhole = random.Chance(0.5);
    TSpot a = {random.Real(-1.0, 1.0) * trial.size, random.Real(-1.0, 1.0) * trial.size};
    TSpot b = a + Polar(step, random.Chance(0.3) ? 0.25 * Pi * random.Int(0, 7) : random.Angle());
    if (isWhole)
    {
        a = {std::round(a.x), std::round(a.y)};
        b = {std::round(b.x), std::round(b.y)};
    }
    if (Length(b - a) < 1e-6) return;
    Owned const track = trial.Make(Stadium(a, b, radius));
    Owned const pad = trial.Make(Disc(b, radius, random.Chance(0.7) ? Pi : random.Angle(), 1, random.Chance(0.3)));
    trial.Booleans(*track, *pad);
    TSpot const c = b + Polar(step * random.Real(0.1, 1.0), random.Angle());
    Owned const next = trial.Make(Stadium(b, c, radius));
    trial.Booleans(*track, *next);
    Results merged;
    trial.MergeMany({track.get(), pad.get(), next.get()}, merged);
}

} // namespace trials
