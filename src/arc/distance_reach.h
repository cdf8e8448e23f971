/// \file
/// How far the distances to a path object can be told by a rectangle.
#pragma once

#include <cfloat>

#include <geometry/path/path_object_base.h>

namespace geometry
{

/// Distances to the object are computed for points in `rect`, but for rounding and the comparisons with tolerance,
/// which both go by the largest coordinate of the two partners. Two arcs about nearly the same centre are the
/// exception: the nearest points of their circles may be taken on opposite sides.
struct TDistanceReach
{
    CBoundingRect<double> rect{-DBL_MAX, -DBL_MAX, DBL_MAX, DBL_MAX}; ///< everything if nothing can be told
    double largest = 0.0;    ///< coordinate of the object, or radius; 0 if nothing can be told
    double radius = DBL_MAX; ///< of an arc
    double metReach = 0.0;   ///< two arcs within this of each, added, may be told to meet

    /// False for an arc that is a speck beside coordinates like these: the kernels may take its centre for its points.
    bool IsCertainWithin(double largestOfPair) const { return radius > 1e-9 * largestOfPair; }
};

TDistanceReach DistanceReachOf(CPathObjectBase const & object);

} // namespace geometry
