// Areas of outlines and rectangles.
#pragma once

#include <geometry/polygon/polygon.h>

namespace geometry
{

/// Signed area of an outline, exact on arcs, positive for a counter-clockwise one. 0 without path objects.
double SignedOutlineArea(CPolygon::PathObjects const & outline);

/// Area of a rectangle; a side that isn't positive counts as 0.
inline double RectArea(CBoundingRect<double> const & rect)
{
    double const width = rect.maxX - rect.minX;
    double const height = rect.maxY - rect.minY;
    return (width > 0.0 ? width : 0.0) * (height > 0.0 ? height : 0.0);
}

} // namespace geometry
