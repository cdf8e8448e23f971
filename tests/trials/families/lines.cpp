// Straight outlines whose edges lie on each other: cells between common lines, whose vertices are computed and so a bit
// off the lines; figures on a lattice.
#include "families.h"

#include <algorithm>
#include <cmath>

#include "kit.h"
#include "lattice.h"

namespace trials
{

namespace
{

using Cell = std::vector<TSpot>;

struct TLine
{
    TSpot through;
    TSpot along; ///< a unit vector
};

/// The sides of a convex cell left and right of a line; vertices nearer than `limit` belong to both.
void Cut(Cell const & cell, TLine const & line, double limit, Cell & left, Cell & right)
{
    auto const off = [&](TSpot const & p)
    { return line.along.x * (p.y - line.through.y) - line.along.y * (p.x - line.through.x); };
    for (std::size_t i = 0; i < cell.size(); ++i)
    {
        TSpot const & a = cell[i];
        TSpot const & b = cell[(i + 1) % cell.size()];
        double const offA = off(a);
        double const offB = off(b);
        if (offA > -limit) left.push_back(a);
        if (offA < limit) right.push_back(a);
        if (std::abs(offA) < limit || std::abs(offB) < limit || (offA > 0.0) == (offB > 0.0)) continue;
        TSpot const crossing = a + (offA / (offA - offB)) * (b - a);
        left.push_back(crossing);
        right.push_back(crossing);
    }
}

/// Cells of a square between random lines, some of which share a point.
std::vector<Cell> MakeCells(CRandom & random, double size)
{
    double const half = 0.5 * size;
    std::vector<Cell> cells = {{{-half, -half}, {half, -half}, {half, half}, {-half, half}}};
    TSpot const pole = {random.Real(-0.4, 0.4) * size, random.Real(-0.4, 0.4) * size};
    bool const isPencil = random.Chance(0.3);
    for (int lines = random.Int(2, 5); lines > 0; --lines)
    {
        TSpot const any = {random.Real(-0.4, 0.4) * size, random.Real(-0.4, 0.4) * size};
        TLine const line = {isPencil && random.Chance(0.7) ? pole : any, Polar(1.0, random.Angle())};
        std::vector<Cell> next;
        for (Cell const & cell : cells)
        {
            Cell left;
            Cell right;
            Cut(cell, line, 1e-7 * size, left, right);
            if (left.size() > 2) next.push_back(left);
            if (right.size() > 2) next.push_back(right);
        }
        cells = next;
    }
    return cells;
}

Ring RingOf(Cell const & cell)
{
    CPen pen(cell.front());
    for (std::size_t i = 1; i < cell.size(); ++i)
    {
        pen.Line(cell[i]);
    }
    return pen.Close();
}

/// Unites the cells one after the other; one that stays apart is left out. Null after a failure.
Owned Unite(CTrial & trial, std::vector<Owned> const & cells)
{
    Owned sum = std::make_unique<CPolygon>(*cells.front());
    for (std::size_t i = 1; i < cells.size(); ++i)
    {
        Results result;
        if (!trial.Boolean(3, *sum, *cells[i], result)) return nullptr;
        if (result.size() != 1) continue;
        sum.reset(result.back());
        result.pop_back();
    }
    return sum;
}

std::vector<Owned> Subset(CTrial & trial, std::vector<Cell> const & cells)
{
    std::vector<Owned> subset;
    double const share = trial.random.Real(0.2, 0.8);
    for (Cell const & cell : cells)
    {
        if (trial.random.Chance(share)) subset.push_back(trial.Make(RingOf(cell)));
    }
    for (std::size_t i = subset.size(); i > 1; --i)
    {
        std::swap(subset[i - 1], subset[trial.random.Next() % i]);
    }
    return subset;
}

} // namespace

void CommonLines(CTrial & trial)
{
    std::vector<Cell> const cells = MakeCells(trial.random, trial.size);
    std::vector<Owned> const first = Subset(trial, cells);
    std::vector<Owned> const second = Subset(trial, cells);
    if (first.empty() || second.empty()) return;
    Owned const a = Unite(trial, first);
    Owned const b = Unite(trial, second);
    if (a != nullptr && b != nullptr) trial.Booleans(*a, *b);
    Results merged;
    trial.MergeMany(Listed(first), merged);
    if (a != nullptr)
    {
        Results rest;
        trial.SubtractMany(*a, Listed(second), 1000000, 1, rest);
    }
}

void Grids(CTrial & trial)
{
    CRandom & random = trial.random;
    double const unit = trial.size / 20.0;
    bool const mayTouch = random.Chance(0.4);
    std::vector<Owned> figures;
    for (int count = random.Int(2, 7); count > 0; --count)
    {
        figures.push_back(trial.Make(mayTouch ? AnyLattice(random, unit) : SimpleLattice(random, unit)));
    }
    CPolygon const & a = *figures[0];
    CPolygon const & b = *figures[1];
    trial.Booleans(a, b);
    Results merged;
    Results rest;
    trial.MergeMany(Listed(figures), merged);
    Owned const board = trial.Make(Rect({-1.0 * unit, -1.0 * unit}, {21.0 * unit, 21.0 * unit}));
    bool const isRight = trial.SubtractMany(*board, Listed(figures), random.Chance(0.5) ? 1 : 1000000, 1, rest);
    if (random.Chance(0.3)) trial.AddHoles(*board, Listed(figures));
    if (random.Chance(0.3)) trial.Distances(a, b);
    if (random.Chance(0.3)) trial.Tile(a);
    if (!mayTouch) trial.Area(a);
    if (isRight && !rest.empty() && random.Chance(0.5)) trial.Booleans(*rest.front(), a);
}

void Plain(CTrial & trial)
{
    CRandom & random = trial.random;
    double const half = 0.5 * trial.size;
    Owned const a = trial.Make(AnyRing(random, {}, trial.size));
    TSpot const at = Polar(half * random.Real(0.0, 1.0), random.Angle());
    Owned const b = trial.Make(AnyRing(random, at, trial.size * random.Scale(0.1, 1.0)));
    trial.Booleans(*a, *b);
    trial.Area(*a);
    if (random.Chance(0.3)) trial.Distances(*a, *b);
    if (random.Chance(0.1)) trial.Tile(*a);
    if (random.Chance(0.5)) return;
    // with holes: a frame and others in it
    double const edge = 1.2 * trial.size;
    Owned const frame = trial.Make(Rect({-edge, -edge}, {edge, edge}));
    trial.AddHoles(*frame, {a.get(), b.get()});
    Results holed;
    if (!trial.Boolean(0, *frame, *a, holed) || holed.size() != 1) return;
    trial.Booleans(*holed.front(), *b);
    Owned const c = trial.Make(AnyRing(random, -1.0 * at, trial.size * random.Scale(0.3, 2.0)));
    trial.Booleans(*holed.front(), *c);
    if (random.Chance(0.3)) trial.Distances(*holed.front(), *c);
}

void Pinched(CTrial & trial)
{
    CRandom & random = trial.random;
    double const unit = trial.size / 20.0;
    Owned const a = trial.Make(random.Chance(0.5) ? Polyomino(random, unit) : TangentBores(random, unit));
    Owned const b = trial.Make(random.Chance(0.5)   ? AnyLattice(random, unit)
                               : random.Chance(0.5) ? TangentBores(random, unit)
                                                    : AnyRing(random, {10.0 * unit, 10.0 * unit}, 15.0 * unit));
    trial.Booleans(*a, *b);
    // a plate with bores that touch its edges, or each other
    double const width = random.Int(4, 20) * unit;
    double const height = random.Int(4, 20) * unit;
    Owned const plate = trial.Make(Rect({}, {width, height}));
    std::vector<Owned> bores;
    for (int count = random.Int(1, 4); count > 0; --count)
    {
        double const r = (random.Chance(0.5) ? random.Int(1, 3) : random.Real(0.5, 3.0)) * unit;
        double const along = (random.Chance(0.5) ? random.Int(0, 20) : random.Real(0.0, 20.0)) * unit;
        TSpot const at =
            random.Pick<TSpot>({{along, r}, {along, height - r}, {r, along}, {width - r, along}, {along, -r}});
        bores.push_back(trial.Make(Disc(at, r, random.Chance(0.7) ? std::acos(-1.0) : random.Angle())));
    }
    Results rest;
    if (!trial.Boolean(0, *plate, *bores.front(), rest) || rest.empty()) return;
    trial.Booleans(*rest.front(), *b);
    Results many;
    bool const isRight = trial.SubtractMany(*plate, Listed(bores), random.Chance(0.5) ? 1 : 1000000, 1, many);
    if (isRight && !many.empty()) trial.Booleans(*many.front(), *bores.back());
    Results merged;
    bores.push_back(std::make_unique<CPolygon>(*plate));
    trial.MergeMany(Listed(bores), merged);
}

} // namespace trials
