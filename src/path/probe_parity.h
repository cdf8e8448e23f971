// What containment asks of a path object.
#pragma once

#include <geometry/path/path_object_polyline.h>

namespace geometry
{

/// The upward ray from the point doesn't come near an object within the rectangle: what all of them ask first.
inline bool IsOutOfWay(CBoundingRect<double> const & rect, TPoint<double> const & point)
{
    return IsClearlyLess(point.x, rect.minX) || IsClearlyGreater(point.x, rect.maxX) ||
           IsClearlyGreater(point.y, rect.maxY);
}

/// The upward ray from the point crosses the object an odd number of times. Most objects are out of its way, which is
/// told before a call.
inline bool IsProbeCountOdd(CPathObjectBase const & object, TPoint<double> const & point)
{
    if (IsOutOfWay(object.GetBoundingRect(), point))
    {
        return false;
    }
    return object.CanAppendVertex() ? static_cast<CPathObjectPolyline const &>(object).IsProbeCountOdd(point)
                                    : (object.IntersectWithVerticalProbeLine(point) & 1U) != 0;
}

} // namespace geometry
