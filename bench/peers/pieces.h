/// \file
/// Outlines in plain numbers, for libraries that know nothing of path objects.
#pragma once

#include "../workloads.h"

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

/// How far chords may be from their arcs: 1e-4 of the larger side of the shape.
double ChordTolerance(geometry::CPolygon const & polygon);
/// How many chords of one length keep the tolerance.
int CountChords(CPiece const & arc, double tolerance);
/// The outline with chords for arcs, closed: the last point is the first.
std::vector<CPoint> ReadRing(geometry::CPolygon const & polygon);

} // namespace bench
