/// \file
/// From loose pieces of an edge to the area of a board.
#pragma once

#include "support/polygons.h"

#include "board.h"

namespace copper_pour
{

/// Ends of outline pieces closer than this count as one point: drawings have such gaps.
constexpr double SnapDistance = 1000.0; // nanometres

/// The board: rings that lie in another one are cut out of it. Throws CBoardError with the line of a piece where an end
/// is left open, where more than two pieces meet, and if there is no ring at all.
svg::CPolygons MakeBoardArea(std::vector<COutlinePiece> pieces);

} // namespace copper_pour
