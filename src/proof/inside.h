// Which of two outlines that don't cross lies in the other, by points that leave no doubt.
#pragma once

#include <optional>

#include <geometry/polygon/polygon.h>

namespace geometry
{

/// `inner`, without its holes, lies in the outline of `outer`: told by the first point within `inner`, away from its
/// edges, that is clear of `outer`, too. None if there is no such point: `inner` is next to nothing, or lies along the
/// other one.
std::optional<bool> LiesClearlyIn(CPolygon const & inner, CPolygon const & outer);

} // namespace geometry
