// What containment asks of a path object.
#pragma once

#include <geometry/path/path_object_polyline.h>

namespace geometry
{

/// The upward ray from the point crosses the object an odd number of times. Most objects are out of its way: the test
/// that all of them begin with stands here once more, before the call.
inline bool IsProbeCountOdd(CPathObjectBase const & object, TPoint<double> const & point)
{
    CBoundingRect<double> const & rect = object.GetBoundingRect();
    if (IsClearlyLess(point.x, rect.minX) || IsClearlyGreater(point.x, rect.maxX) ||
        IsClearlyGreater(point.y, rect.maxY))
    {
        return false;
    }
    return object.CanAppendVertex() ? static_cast<CPathObjectPolyline const &>(object).IsProbeCountOdd(point)
                                    : (object.IntersectWithVerticalProbeLine(point) & 1U) != 0;
}

} // namespace geometry
