// The band around a connected track, made of parts.
#pragma once

#include "polygon/polygon_tools.h"

namespace geometry
{

/// The union of the parts of a band, which hang together: one polygon. What can't be joined to the largest piece is
/// reported. Null if nothing comes of it.
std::unique_ptr<CPolygon> UniteBand(CPolygon const & first, PolygonRange const & others);

} // namespace geometry
