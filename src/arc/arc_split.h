/// \file
/// What the cutting of arcs shares with its tests.
#pragma once

#include <vector>

#include <geometry/path/path_object_base.h>

namespace geometry
{

class CPathObjectArc;

/// Inserts a cut of `arc` so that the cuts stand in path order, from start to end. Cuts at the start are never
/// overtaken; nothing is filtered out.
void InsertArcSplitPoint(CPathObjectArc const & arc, CPathObjectBase::SplitPoints & points,
                         CPathObjectBase::SplitPoint const & point);

} // namespace geometry
