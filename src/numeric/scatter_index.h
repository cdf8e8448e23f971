// A search tree over rectangles that stand in no order: neighbours in the plane are put in a row, and the row is
// indexed like any chain.
#pragma once

#include <cstdint>
#include <vector>

#include "numeric/chain_index.h"

namespace geometry
{

class CScatterIndex
{
public:
    using Rect = CBoundingRect<double>;

    /// At least one rectangle.
    explicit CScatterIndex(std::vector<Rect> const & rects);

    /// The numbers of the rectangles that overlap `query`, by plain comparison, ascending.
    std::vector<std::uint32_t> Find(Rect const & query) const;

private:
    std::vector<std::uint32_t> m_Order; ///< the numbers of the rectangles of the tree
    CChainIndex m_Tree;
};

} // namespace geometry
