// Point questions to one ring, answered by a search instead of a walk once there are enough of them.
#pragma once

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <vector>

#include "clip/fold.h"
#include "clip/ring_position.h"
#include "numeric/chain_index.h"
#include "path/probe_parity.h"

namespace geometry
{

/// Serves one ring for one run, from the moment that its objects are cut. The holders know it; bridges that come later
/// answer through it, too. A point may lie on a bridge and not on the objects beside it: these begin at its point within
/// tolerance only.
class CRingIndex
{
public:
    /// Makes `ring` answer through this index. The index must live as long as the ring is asked, and so must `fold`, which
    /// answers for the folded runs of the ring; null if there are none.
    void Serve(CPathObjectHolder* ring, CFold* fold);
    /// A bridge was linked into the ring, which must live as long as the ring is asked.
    void AddBridge(CPathObjectBase const & bridge);

    /// The position of the point to the ring of `ring`, by the parity of the probe line. It lies on the ring if
    /// `holds(object)` says so of an object; only objects that pass within `extraRoom` of the point, or hold it within
    /// tolerance, have to be asked.
    template <typename Holds>
    static EPointPosition Locate(CPathObjectHolder const* ring, TPoint<double> const & point, double extraRoom,
                                 Holds const & holds)
    {
        CFold* const fold = ring->m_RingIndex != nullptr ? ring->m_RingIndex->m_Fold : nullptr;
        bool isOn = false;
        bool isOdd = fold != nullptr && fold->IsProbeCountOdd(point);
        auto const visit = [&](CPathObjectBase const & object)
        {
            isOn = holds(object);
            isOdd = isOdd != (!isOn && IsProbeCountOdd(object, point));
            return !isOn;
        };
        CChainIndex const* const index = ring->m_RingIndex != nullptr ? ring->m_RingIndex->FindIndex() : nullptr;
        if (index != nullptr)
        {
            isOdd = ring->m_RingIndex->Search(*index, point, extraRoom, visit) != isOdd;
            isOn = isOn || ring->m_RingIndex->IsOnBridge(point, extraRoom, holds);
        }
        else
        {
            WalkRing(ring, visit);
        }
        return isOn ? EPointPosition::eOnRing : isOdd ? EPointPosition::eInside : EPointPosition::eOutside;
    }

private:
    CChainIndex const* FindIndex();
    void CountIrregular();
    bool IsRangeCrossed(std::size_t first, std::size_t last, TPoint<double> const & point) const;

    template <typename Visit>
    static void WalkRing(CPathObjectHolder const* ring, Visit const & visit)
    {
        CPathObjectHolder const* holder = ring;
        while ((holder->m_Run != nullptr || visit(*holder->GetPathObject())) && holder->m_Next != ring)
        {
            holder = holder->m_Next;
        }
    }

    /// Visits the objects that aren't told by their rectangles; the parity of the others.
    template <typename Visit>
    bool Search(CChainIndex const & index, TPoint<double> const & point, double extraRoom, Visit const & visit) const
    {
        bool isOdd = false;
        index.Walk(
            [&](CBoundingRect<double> const & r)
            {
                bool const isApart =
                    point.x < r.minX - extraRoom || point.x > r.maxX + extraRoom || point.y > r.maxY + extraRoom;
                return isApart                        ? CChainIndex::EAction::ePass
                       : point.y < r.minY - extraRoom ? CChainIndex::EAction::eTake
                                                      : CChainIndex::EAction::eOpen;
            },
            [&](std::size_t i) { return visit(*m_Objects[i]); },
            [&](std::size_t first, std::size_t last) { isOdd = isOdd != IsRangeCrossed(first, last, point); });
        return isOdd;
    }

    template <typename Holds>
    bool IsOnBridge(TPoint<double> const & point, double extraRoom, Holds const & holds) const
    {
        double const room = 2.0 * extraRoom + 1e-12 * std::fabs(point.x); // far above what `holds` tolerates
        auto const end = m_Bridges.upper_bound(point.x + room);
        return std::any_of(m_Bridges.lower_bound(point.x - room), end,
                           [&](auto const & bridge) { return holds(*bridge.second); });
    }

    CPathObjectHolder const* m_Ring = nullptr;
    CFold* m_Fold = nullptr; ///< not owned
    unsigned int m_Questions = 0;
    bool m_IsShort = false;                        ///< too few objects for an index
    std::vector<CPathObjectBase const*> m_Objects; ///< of the ring; not owned
    std::vector<std::size_t> m_IrregularBefore;    ///< how many before each may count otherwise than by their ends
    std::vector<std::size_t> m_ArcsBefore;         ///< how many before each may do so near some abscissas
    CProbeAbscissas m_Abscissas;                   ///< these
    std::unique_ptr<CChainIndex> m_Index;          ///< over them; null until it pays
    std::multimap<double, CPathObjectBase const*> m_Bridges; ///< that came after it, by their x; not owned
};

} // namespace geometry
