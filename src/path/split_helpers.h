// Keeping the cuts of a path object in order; shared by polylines and arcs.
#pragma once

#include <vector>

#include <geometry/path/path_object_base.h>

namespace geometry
{

/// The entry of the segment `start` to `end`, made at its place in the order of the segments if there is none.
/// `pathEnd` is the end of the vertices of the path.
CPathObjectBase::SplitEntry & FindOrAddSplitEntry(CPathObjectBase::SplitPositionList & list,
                                                  CPathObjectBase::PointIterator start,
                                                  CPathObjectBase::PointIterator end,
                                                  CPathObjectBase::PointIterator pathEnd);

/// Inserts `point` by its distance from `origin`; equal distances stay in the order of their arrival, and duplicates
/// stay.
void InsertSplitPoint(std::vector<CPathObjectBase::SplitPoint> & points, CPathObjectBase::SplitPoint const & point,
                      CPathObjectBase::SplitPoint const & origin);

} // namespace geometry
