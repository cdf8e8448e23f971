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

/// The same for one polygon without holes, and a first one without user info: only what stays of that is copied, and
/// less is read if facts of it are kept.
bool IntersectWithSolid(CPolygon const & polygon, PolygonVector & result, CPolygon const & solid, Clipper & clipper);

/// Empties `result`, deleting, and fills it with the symmetric difference of `polygon` and the one in `range`.
bool XORPolygonRange(CPolygon const & polygon, PolygonVector & result, PolygonRange const & range);

/// Empties `result`, deleting, and fills it with `polygon` minus all of `range`. An empty range gives a copy and false.
bool SubtractPolygons(CPolygon const & polygon, PolygonVector & result, PolygonRange const & range);
/// The same of polygons that are of no use to anybody afterwards: their outlines may be gone then.
bool SubtractUsedUpPolygons(CPolygon const & polygon, PolygonVector & result, PolygonVector const & polygons);

/// `hole` lies in the outline of `polygon`, which it doesn't cross but may touch. The first test point off the outline
/// decides: a touching point lies in or out by the half-open rule alone, and would lose the hole on the upper and
/// right sides.
bool Encloses(CPolygon const & polygon, CPolygon const & hole);

/// The polygon of `input` that encloses the others, and the rest; polygons without an outline are deleted. `input`
/// is empty afterwards. Null if no polygon has an outline.
std::unique_ptr<CPolygon> SplitResultInOutlineAndRest(PolygonVector & rest, PolygonVector & input);

/// Tells which of `rings`, outlines that don't cross each other, are solid and which are holes, by how many others they
/// lie in, and hangs each hole on the innermost solid one around it. `rings` holds the solid ones afterwards.
void NestRings(PolygonVector & rings);

} // namespace geometry
