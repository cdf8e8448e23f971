// Signed areas of outlines.
#pragma once

#include <geometry/polygon/polygon.h>

namespace geometry
{

/// Signed area of an outline, exact on arcs, positive for a counter-clockwise one. 0 without path objects.
double SignedOutlineArea(CPolygon::PathObjects const & outline);

} // namespace geometry
