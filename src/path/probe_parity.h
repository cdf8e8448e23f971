// What containment asks of a path object.
#pragma once

#include <geometry/path/path_object_polyline.h>

namespace geometry
{

/// The upward ray from the point crosses the object an odd number of times.
inline bool IsProbeCountOdd(CPathObjectBase const & object, TPoint<double> const & point)
{
    return object.CanAppendVertex() ? static_cast<CPathObjectPolyline const &>(object).IsProbeCountOdd(point)
                                    : (object.IntersectWithVerticalProbeLine(point) & 1U) != 0;
}

} // namespace geometry
