/// \file
/// Obstacles as polygons.
#pragma once

#include "support/polygons.h"

#include "board.h"

namespace copper_pour
{

/// All points within `growth` (nanometres, not negative) of an obstacle. What is round stays so: discs, stadiums and
/// rounded rectangles are built at their grown size, with exact arcs.
std::unique_ptr<geometry::CPolygon> MakeShape(CObstacle const & obstacle, double growth);

/// The shapes of all obstacles of a board.
svg::CPolygons MakeShapes(CBoard const & board, double growth);

} // namespace copper_pour
