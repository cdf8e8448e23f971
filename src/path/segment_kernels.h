// Kernels on straight segments and points: free functions on values.
#pragma once

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
