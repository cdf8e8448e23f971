// A search tree over the objects of one crowded cell of a grid: neighbours in the plane are put in a row, and the row is
// indexed like any chain.
#pragma once

#include <cstdint>
#include <vector>

#include "numeric/chain_index.h"

namespace geometry
{

class CCellIndex
{
public:
    /// At least one rectangle, in coordinates.
    explicit CCellIndex(std::vector<CBoundingRect<int>> const & rects);

    /// The numbers of the rectangles that overlap `query`, ascending.
    std::vector<std::uint32_t> Find(CBoundingRect<int> const & query) const;

private:
    std::vector<std::uint32_t> m_Order; ///< the numbers of the rectangles of the tree
    CChainIndex m_Tree;
};

} // namespace geometry
