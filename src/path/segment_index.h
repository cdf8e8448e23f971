// Search trees over the segments of a polyline.
#pragma once

#include <memory>
#include <vector>

#include "numeric/chain_index.h"

namespace geometry
{

/// Vertices of a polyline; with fewer, a loop over all segments is as fast as a search.
constexpr std::size_t MinIndexedSegmentVertices = 48;

/// Null if there is no segment, or coordinates are not `IsIndexable`.
std::unique_ptr<CChainIndex> MakeSegmentIndex(std::vector<TPoint<double>> const & points);

} // namespace geometry
