// Figures are made at random and thrown away until one is as it should be; whole numbers make the tests exact.
#include "lattice.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace trials
{

namespace
{

struct TNode
{
    int x;
    int y;
};

int Cross(TNode const & a, TNode const & b, TNode const & c)
{
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

int SignOf(int value)
{
    return (value > 0) - (value < 0);
}

bool IsOn(TNode const & p, TNode const & a, TNode const & b)
{
    return Cross(a, b, p) == 0 && std::min(a.x, b.x) <= p.x && p.x <= std::max(a.x, b.x) && std::min(a.y, b.y) <= p.y &&
           p.y <= std::max(a.y, b.y);
}

bool Meet(TNode const & a, TNode const & b, TNode const & c, TNode const & d)
{
    bool const isCrossing =
        SignOf(Cross(a, b, c)) * SignOf(Cross(a, b, d)) < 0 && SignOf(Cross(c, d, a)) * SignOf(Cross(c, d, b)) < 0;
    return isCrossing || IsOn(a, c, d) || IsOn(b, c, d) || IsOn(c, a, b) || IsOn(d, a, b);
}

bool IsSimple(std::vector<TNode> const & nodes)
{
    std::size_t const n = nodes.size();
    for (std::size_t i = 0; i < n; ++i)
    {
        TNode const & a = nodes[i];
        TNode const & b = nodes[(i + 1) % n];
        TNode const & c = nodes[(i + 2) % n];
        if (IsOn(c, a, b) || IsOn(a, b, c)) return false;
        for (std::size_t j = i + 2; j < n; ++j)
        {
            bool const isNeighbour = (j + 1) % n == i;
            if (!isNeighbour && Meet(a, b, nodes[j], nodes[(j + 1) % n])) return false;
        }
    }
    return true;
}

Ring RingOf(std::vector<TNode> const & nodes, double unit)
{
    CPen pen({nodes.front().x * unit, nodes.front().y * unit});
    for (std::size_t i = 1; i < nodes.size(); ++i)
    {
        pen.Line({nodes[i].x * unit, nodes[i].y * unit});
    }
    return pen.Close();
}

std::vector<TNode> RandomNodes(CRandom & random)
{
    std::vector<TNode> nodes;
    int const low = random.Int(0, 10);
    int const high = random.Int(low + 3, 20);
    if (random.Chance(0.4))
    {
        int const x = random.Int(low, high - 1);
        int const y = random.Int(low, high - 1);
        int const farX = random.Int(x + 1, high);
        int const farY = random.Int(y + 1, high);
        return {{x, y}, {farX, y}, {farX, farY}, {x, farY}};
    }
    for (int count = random.Int(3, 9); count > 0; --count)
    {
        nodes.push_back({random.Int(low, high), random.Int(low, high)});
    }
    TNode const middle = {(low + high) / 2, (low + high) / 2};
    std::sort(nodes.begin(), nodes.end(),
              [&](TNode const & a, TNode const & b)
              { return std::atan2(a.y - middle.y, a.x - middle.x) < std::atan2(b.y - middle.y, b.x - middle.x); });
    return nodes;
}

} // namespace

Ring SimpleLattice(CRandom & random, double unit)
{
    for (;;)
    {
        std::vector<TNode> const nodes = RandomNodes(random);
        if (IsSimple(nodes)) return RingOf(nodes, unit);
    }
}

/// Sides of filled squares that empty ones lie behind, the filled one on the left. Where two ways lead on, the way
/// turns right, so that squares that meet in a point stay in one ring.
Ring Polyomino(CRandom & random, double unit)
{
    int const n = random.Int(2, 5);
    int const scale = 20 / n;
    bool isFilled[7][7] = {};
    for (int i = 0; i < n * n; ++i)
    {
        isFilled[1 + i / n][1 + i % n] = random.Chance(0.6);
    }
    isFilled[1][1] = true;
    constexpr TNode ways[] = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};
    constexpr TNode corners[] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}}; // where the side below, right, above, left begins
    std::map<int, std::vector<int>> leaving;                      // from 8 * x + y: the ways
    for (int x = 1; x <= n; ++x)
    {
        for (int y = 1; y <= n; ++y)
        {
            for (int side = 0; side < 4 && isFilled[x][y]; ++side)
            {
                TNode const & out = ways[(side + 3) % 4];
                if (!isFilled[x + out.x][y + out.y])
                    leaving[8 * (x + corners[side].x) + y + corners[side].y].push_back(side);
            }
        }
    }
    // the square at (1, 1) is filled, so the outer ring leaves its lower left corner to the right
    std::vector<TNode> nodes;
    TNode at = {1, 1};
    int way = 0;
    bool const keepsAll = random.Chance(0.3);
    for (int last = 3; !leaving[8 * at.x + at.y].empty();)
    {
        std::vector<int> & choices = leaving[8 * at.x + at.y];
        auto chosen = choices.begin();
        if (choices.size() > 1 && choices[1] == (last + 3) % 4) ++chosen;
        way = *chosen;
        choices.erase(chosen);
        if (way != last || keepsAll) nodes.push_back({(at.x - 1) * scale, (at.y - 1) * scale});
        last = way;
        at = {at.x + ways[way].x, at.y + ways[way].y};
    }
    return RingOf(nodes, unit);
}

Ring AnyLattice(CRandom & random, double unit)
{
    return random.Chance(0.6) ? SimpleLattice(random, unit) : Polyomino(random, unit);
}

Ring TangentBores(CRandom & random, double unit)
{
    double const pi = std::acos(-1.0);
    double const r = random.Int(1, 9) * unit;
    if (random.Chance(0.5))
    {
        // a crescent: round the large circle and back round the small one
        double const outer = r + random.Int(1, 6) * unit;
        double const joint = random.Chance(0.5) ? 0.5 * pi * random.Int(0, 3) : random.Angle();
        TSpot const centre = {10.0 * unit, 10.0 * unit};
        TSpot const touch = centre + Polar(outer, joint);
        return CPen(touch).Arc(true, centre, touch).Arc(false, centre + Polar(outer - r, joint), touch).Close();
    }
    // a plate whose lower edge is touched by a bore
    double const at = random.Int(1, 19) * unit;
    double const half = std::min(at, 20.0 * unit - at);
    if (half < 1.5 * r) return TangentBores(random, unit);
    TSpot const touch = {at, 0.0};
    return CPen({})
        .Line(touch)
        .Arc(false, {at, r}, touch)
        .Line({20.0 * unit, 0.0})
        .Line({20.0 * unit, 20.0 * unit})
        .Line({0.0, 20.0 * unit})
        .Close();
}

} // namespace trials
