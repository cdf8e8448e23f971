// Clips of a large outline that the result replaces.
#pragma once

#include "polygon/booleans.h"

namespace geometry
{

/// `RunClip` for a `second` that the result replaces, if there is one: then its outline may be gone with
/// `TakeResultPolygons`. What is far from `first` costs next to nothing.
EClipResult RunFoldedClip(Clipper & clipper, CPolygon const & first, CPolygon & second);

/// The intersection, for a `second` of which facts are kept. It stays as it is.
EClipResult RunFoldedIntersection(Clipper & clipper, CPolygon const & first, CPolygon const & second);

/// The last run has left far parts of `second` out.
bool IsFolded(Clipper const & clipper);

/// `TakeResultPolygons` after `RunFoldedClip`. The outline of `first` may be gone with it, too.
void TakeResultPolygons(Clipper & clipper, PolygonVector & polygons, CPolygon & first);

/// After a union that is ready and folded: its rings are so much shorter than the two outlines that these don't meet in
/// single points only.
bool IsClearOfPointContact(Clipper & clipper, CPolygon const & first);

} // namespace geometry
