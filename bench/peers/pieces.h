/// \file
/// Outlines in plain numbers, for libraries that know nothing of path objects.
#pragma once

#include "peers.h"

#include <vector>

namespace bench
{

/// A segment, or an arc that sweeps an angle (counter-clockwise if positive).
struct CPiece
{
    CPoint start;
    CPoint end;
    CPoint centre = {};
    double radius = 0.0;
    double sweep = 0.0; ///< 0 for a segment

    CPoint PointAt(double share) const;
    double Length() const;
};

/// The outline of a polygon, without holes, segment by segment.
std::vector<CPiece> ReadPieces(geometry::CPolygon const & polygon);

/// The outline with chords for arcs, closed: the last point is the first.
std::vector<CPoint> ReadRing(geometry::CPolygon const & polygon, EArcs arcs);

} // namespace bench
