// Subtracting many polygons at once: the plane is cut into square tiles, worked on by several threads.
#pragma once

#include "polygon/booleans.h"

namespace geometry
{

/// Appends `subject` minus all of `polygons` to `result`, which is empty. `workers`: number of threads, 0 meaning one a
/// processor; less than 2 work on the calling thread. The result doesn't depend on it. False: nothing came of the last
/// step, the calling thread was asked to stop, or the tiles have no end. A request to stop stays pending.
/// `areUsedUp`: the polygons are of no use to anybody afterwards; they may have lost their outlines then.
bool SubtractInTiles(CPolygon const & subject, PolygonVector & result, PolygonRange const & polygons, Clipper & clipper,
                     unsigned int workers, bool areUsedUp);

} // namespace geometry
