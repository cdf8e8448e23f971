// The attempts of a clip: the first one reads the outlines as they are, later ones move one of them a little.
#pragma once

#include <geometry/numeric/bounding_rect.h>

namespace geometry
{

constexpr int FirstRepairingAttempt = 6; // from here on arcs are repaired, too

/// How far an attempt from 1 on moves the polygon with the rectangle `rect`: x grows first, then y catches up.
TPoint<double> ShiftOfAttempt(CBoundingRect<double> const & rect, int attempt);

} // namespace geometry
