// The holders of the subject ring that wait for a partner, found by the point at which they begin.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "clip/holder.h"

namespace geometry
{

class CCandidates
{
public:
    /// Holders come in ring order.
    void Add(CPathObjectHolder* holder);
    /// Links `holder` with the first waiting one, or the last, that begins at its point within tolerance, if there is
    /// one; that one waits no more.
    void Pair(CPathObjectHolder* holder, bool fromFront);

private:
    using Bucket = std::vector<std::uint32_t>; ///< indexes of holders that wait, in order

    std::vector<CPathObjectHolder*> m_Holders;
    /// By the cell of the start point. Numbers within tolerance are the same or neighbouring cells apart.
    std::unordered_map<std::uint64_t, Bucket> m_Cells;
};

} // namespace geometry
