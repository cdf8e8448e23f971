// Point questions to one ring, answered by a search instead of a walk once there are enough of them.
#pragma once

#include <memory>
#include <vector>

#include "clip/ring_position.h"
#include "numeric/chain_index.h"

namespace geometry
{

/// Serves one ring for one run, from the moment that its objects are cut. The holders know it; bridges that come later
/// answer through it, too, and change no answer, since they lie on a vertex of the ring.
class CRingIndex
{
public:
    /// Makes `ring` answer through this index. The index must live as long as the ring is asked.
    void Serve(CPathObjectHolder* ring);

    /// Calls `visit(object)` until it answers false, in ring order, for at least all objects of the ring of `ring` that
    /// pass within `extraRoom` of the point, hold it within tolerance, or run above it. False if `visit` did.
    template <typename Visit>
    static bool ForEachNearOrAbove(CPathObjectHolder const* ring, TPoint<double> const & point, double extraRoom,
                                   Visit const & visit)
    {
        CChainIndex const* const index = ring->m_RingIndex != nullptr ? ring->m_RingIndex->FindIndex() : nullptr;
        return index != nullptr ? ring->m_RingIndex->Search(*index, point, extraRoom, visit) : Walk(ring, visit);
    }

private:
    CChainIndex const* FindIndex();

    template <typename Visit>
    static bool Walk(CPathObjectHolder const* ring, Visit const & visit)
    {
        CPathObjectHolder const* holder = ring;
        do
        {
            if (!visit(*holder->GetPathObject()))
            {
                return false;
            }
            holder = holder->m_Next;
        } while (holder != ring);
        return true;
    }

    template <typename Visit>
    bool Search(CChainIndex const & index, TPoint<double> const & point, double extraRoom, Visit const & visit) const
    {
        bool isComplete = true;
        index.Search(
            [&](CBoundingRect<double> const & r) {
                return !(point.x < r.minX - extraRoom) && !(point.x > r.maxX + extraRoom) &&
                       !(point.y > r.maxY + extraRoom);
            },
            [&](std::size_t i)
            {
                isComplete = visit(*m_Objects[i]);
                return isComplete;
            });
        return isComplete;
    }

    CPathObjectHolder const* m_Ring = nullptr;
    unsigned int m_Questions = 0;
    bool m_IsShort = false;                        ///< too few objects for an index
    std::vector<CPathObjectBase const*> m_Objects; ///< of the ring; not owned
    std::unique_ptr<CChainIndex> m_Index;          ///< over them; null until it pays
};

} // namespace geometry
