// Arcs as the tests think of them: by angles, independent of the library's own arithmetic.
#pragma once

#include <cmath>
#include <random>

#include "arc/sweep_kernels.h"
#include "support/builders.h"

namespace geometry::test
{

constexpr double Pi = 3.14159265358979323846;

inline Point OnCircle(Point const & centre, double radius, double angle)
{
    return Point(centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle));
}

inline double Distance(Point const & a, Point const & b)
{
    return std::hypot(a.x - b.x, a.y - b.y);
}

/// A sweep that begins at the angle `from` and covers `size` radians counter-clockwise.
struct AngleArc
{
    Point centre;
    double radius;
    double from;
    double size;

    Point At(double share) const { return OnCircle(centre, radius, from + share * size); }
    Sweep ToSweep() const { return {At(0), At(1), centre, radius}; }
    CPathObjectArc ToArc(bool ccw) const { return {At(ccw ? 0 : 1), At(ccw ? 1 : 0), centre, ccw, radius}; }
    /// How far `p` is inside the angular range, in radians; negative outside.
    double Depth(Point const & p) const
    {
        double offset = std::fmod(std::atan2(p.y - centre.y, p.x - centre.x) - from, 2 * Pi);
        offset += offset < 0 ? 2 * Pi : 0;
        return offset <= size ? std::min(offset, size - offset) : -std::min(offset - size, 2 * Pi - offset);
    }
};

/// Seeded, so that a failure comes back.
class CRandom
{
public:
    explicit CRandom(unsigned int seed) : m_Engine(seed) {}

    double In(double low, double high) { return low + (high - low) * (m_Engine() / 4294967296.0); }
    bool Coin() { return In(0, 1) < 0.5; }
    // Braces draw from the left to the right.
    Point PointIn(double low, double high) { return Point{In(low, high), In(low, high)}; }
    AngleArc Arc(double minSize = 0.05)
    {
        return {PointIn(-100, 100), In(5, 100), In(-Pi, Pi), In(minSize, 2 * Pi - minSize)};
    }

private:
    std::mt19937 m_Engine;
};

} // namespace geometry::test
