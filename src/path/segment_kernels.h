// Kernels on straight segments and points: free functions on values.
#pragma once

#include <cmath>

#include <geometry/numeric/almost_equal.h>
#include <geometry/numeric/point.h>

namespace geometry
{

inline double SquareDistance(TPoint<double> const & a, TPoint<double> const & b)
{
    double const dx = a.x - b.x;
    double const dy = a.y - b.y;
    return dx * dx + dy * dy;
}

inline TPoint<double> Midpoint(TPoint<double> const & a, TPoint<double> const & b)
{
    return TPoint<double>((a.x + b.x) * 0.5, (a.y + b.y) * 0.5);
}

/// Exact comparison of both coordinates, in contrast to the tolerant `operator==`.
inline bool IsExactlyEqual(TPoint<double> const & a, TPoint<double> const & b)
{
    return a.x == b.x && a.y == b.y;
}

/// `p` is farther than `distance` from the line through `a` and `b`, by more than what rounding and the tolerance of
/// equality can do to coordinates: by the cross product, which is the distance times the length, and the sum of the
/// lengths in x and y, which is no less. False proves nothing.
inline bool IsClearlyOffLine(TPoint<double> const & a, TPoint<double> const & b, TPoint<double> const & p,
                             double distance)
{
    constexpr double room = 1e-12;
    double const dx = b.x - a.x;
    double const dy = b.y - a.y;
    double const cross = std::fabs(dx * (p.y - a.y) - dy * (p.x - a.x));
    double const reach =
        std::fabs(a.x) + std::fabs(a.y) + std::fabs(b.x) + std::fabs(b.y) + std::fabs(p.x) + std::fabs(p.y);
    return cross > (1.001 * distance + room * reach) * (std::fabs(dx) + std::fabs(dy)) && cross < 1e300;
}

/// The segment passes strictly above the point. Half-open in x: the left end belongs to the segment, the right end
/// doesn't, so a vertical segment never takes part and a vertex counts for the segment that leaves it to the right.
inline bool PassesAbove(TPoint<double> const & a, TPoint<double> const & b, double px, double py)
{
    if (IsExactlyEqual(a, b))
    {
        return false;
    }
    TPoint<double> const & left = b.x > a.x ? a : b;
    TPoint<double> const & right = b.x > a.x ? b : a;
    if (!IsGreaterOrAlmostEqual(px, left.x) || !IsClearlyLess(px, right.x))
    {
        return false;
    }
    double const dx = IsAlmostEqual(px, left.x) ? 0.0 : px - left.x;
    return (right.y - left.y) * dx > (py - left.y) * (right.x - left.x);
}

/// The point `c` of the segment nearest to `p`; a tie of the ends gives `s1`. The result is the square distance.
double ClosestPointOnSegment(TPoint<double> const & s0, TPoint<double> const & s1, TPoint<double> const & p,
                             TPoint<double> & c);

/// `p` is an end exactly, or agrees within tolerance with the nearest point of the segment.
bool IsPointOnSegment(TPoint<double> const & s0, TPoint<double> const & s1, TPoint<double> const & p);

/// One point for a crossing (`first` equal to `second`), two for an overlap of collinear segments. The start points
/// always count; a point within tolerance of `a1` counts only with `includeEndA`, one at `b1` only with `includeEndB`.
bool IntersectSegments(TPoint<double> const & a0, TPoint<double> const & a1, TPoint<double> const & b0,
                       TPoint<double> const & b1, bool includeEndA, bool includeEndB, TPoint<double> & first,
                       TPoint<double> & second);

/// Square distance of two segments with the closest point on each.
double SquareDistanceSegments(TPoint<double> const & p0, TPoint<double> const & p1, TPoint<double> const & q0,
                              TPoint<double> const & q1, TPoint<double> & onP, TPoint<double> & onQ);

} // namespace geometry
