/// \file
/// Where circles meet circles, lines and segments. Free functions on values, without allocation.
#pragma once

#include <cmath>

#include <geometry/numeric/point.h>

#include "path/segment_kernels.h"

namespace geometry
{

/// Up to two points that a kernel found, in the order in which it found them.
struct CrossingPoints
{
    TPoint<double> points[2];
    unsigned int count = 0; ///< how many of `points` are valid

    void Clear() { count = 0; }

    /// Appends a point; there must be room for it.
    void Add(TPoint<double> const & point) { points[count++] = point; }
    void Add(double x, double y) { Add(TPoint<double>(x, y)); }

    TPoint<double> const & Last() const { return points[count - 1]; }

    /// Removes the first point; the second one, if there is one, takes its place.
    void DropFirst()
    {
        --count;
        if (count > 0)
        {
            points[0] = points[1];
        }
    }
};

/// How two circles lie to each other.
enum class ECirclePair : int
{
    eMeet = 0,         ///< one or two points
    eApart = 1,        ///< no point, neither inside the other
    eFirstInside = 2,  ///< no point, the first lies inside the second
    eSecondInside = 3, ///< no point, the second lies inside the first
    eSame = 4          ///< no point, the same circle
};

/// What a straight line, segment or ray has in common with a circle or an arc.
enum class ELineMeeting : int
{
    eFound = 0, ///< one or two points
    eNone = 1,  ///< no point
    eTouch = 2  ///< one point: the line touches the circle there
};

/// Distance of two points, in coordinate units.
inline double DistanceBetween(TPoint<double> const & p, TPoint<double> const & q)
{
    return std::sqrt(SquareDistance(p, q));
}

/// Square root of a value that is zero or more but for rounding. NaN stays NaN.
inline double SquareRootFromZero(double value)
{
    return value < 0.0 ? 0.0 : std::sqrt(value);
}

/// Moves `a` away from `b` by `da` and `b` away from `a` by `db`, along the line through them. Negative amounts move
/// them towards each other and past each other. Of two equal points `a` is moved downward and `b` upward.
void ExtendSegment(TPoint<double> & a, TPoint<double> & b, double da, double db);

/// The points in which two circles meet. Circles that touch from outside give one point only where the arithmetic says
/// so exactly, otherwise two points close together.
ECirclePair IntersectCircleCircle(TPoint<double> const & c1, double r1, TPoint<double> const & c2, double r2,
                                  CrossingPoints & out);

/// The points of the infinite line through `l0` and `l1` on the circle. Axis-parallel lines touch with tolerance,
/// others only exactly. Two equal points stand for the horizontal line.
ELineMeeting IntersectCircleLine(TPoint<double> const & c, double r, TPoint<double> const & l0,
                                 TPoint<double> const & l1, CrossingPoints & out);

/// Those of the line's points that lie between `p` and `q`, ends included within tolerance.
ELineMeeting IntersectCircleSegment(TPoint<double> const & c, double r, TPoint<double> const & p,
                                    TPoint<double> const & q, CrossingPoints & out);

} // namespace geometry
