// The holders of the subject ring that wait for a partner, found by the point at which they begin.
#pragma once

#include <cstdint>
#include <memory_resource>
#include <vector>

#include "clip/holder.h"

namespace geometry
{

class CCandidates
{
public:
    /// `fromFront`: of several waiting holders at one point the first one is taken, else the last one. `memory`: for
    /// what it notes.
    CCandidates(bool fromFront, std::pmr::memory_resource & memory)
        : m_FromFront(fromFront), m_Waiting(&memory), m_Buckets(&memory)
    {
    }

    /// Holders come in ring order, all of them before the first call of `Pair`.
    void Add(CPathObjectHolder* holder);
    /// Links `holder` with the first waiting one, or the last, that begins at its point within tolerance, if there is
    /// one; that one waits no more.
    void Pair(CPathObjectHolder* holder);

private:
    static constexpr std::uint32_t None = 0xFFFFFFFF;

    /// A waiting holder, and the next one to be taken after it in the same bucket.
    struct TWaiting
    {
        CPathObjectHolder* holder;
        std::uint32_t next;
    };

    void FillBuckets();
    std::uint32_t* FindIn(std::uint64_t cellX, std::uint64_t cellY, TPoint<double> const & point);

    bool m_FromFront;
    std::pmr::vector<TWaiting> m_Waiting; ///< in ring order
    std::pmr::vector<std::uint32_t>
        m_Buckets; ///< the first to be taken of each, by the cell of the start point; or `None`
    unsigned int m_HashShift = 0;
};

} // namespace geometry
