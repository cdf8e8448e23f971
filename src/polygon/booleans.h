// Booleans over a working vector of polygons and a range of others: what the public front ends, the holes and the
// operations on many polygons share.
#pragma once

#include <geometry/clip/polygon_clip_base.h>

#include "polygon/polygon_tools.h"

namespace geometry
{

using Clipper = CPolygonClipBase<double>;
using EClipResult = Clipper::EClipResult;

/// Subtracts every polygon of `range`, in order, from every polygon of `work`, which holds the pieces afterwards.
/// `eClipFailed` stands for nothing achieved, and then `work` is empty. Polls the cancellation of the calling thread:
/// a request stops it early, with `work` as far as it got.
EClipResult SubtractPolygonRange(PolygonVector & work, PolygonRange const & range, Clipper & clipper);

/// Intersects every polygon of `work` with every polygon of `range`, in order. `eClipFailed` leaves `work` empty.
EClipResult DoIntersectCore(PolygonVector & work, PolygonRange const & range, Clipper & clipper);

/// Empties `result`, deleting, and fills it with `polygon` cut down to what it shares with all of `range`.
bool IntersectPolygonRange(CPolygon const & polygon, PolygonVector & result, PolygonRange const & range);

/// Empties `result`, deleting, and fills it with the symmetric difference of `polygon` and the one in `range`.
bool XORPolygonRange(CPolygon const & polygon, PolygonVector & result, PolygonRange const & range);

/// Empties `result`, deleting, and fills it with `polygon` minus all of `range`. An empty range gives a copy and false.
bool SubtractPolygons(CPolygon const & polygon, PolygonVector & result, PolygonRange const & range);

} // namespace geometry
