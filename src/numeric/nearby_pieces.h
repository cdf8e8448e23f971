// Searches of a chain index that come in the order of another chain, whose neighbours are near each other: what is near
// a few of them is looked up at once.
#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

#include "numeric/chain_index.h"

namespace geometry
{

class CNearbyPieces
{
public:
    /// So many searches in a row share a look-up.
    static constexpr std::size_t BlockSize = 8;

    explicit CNearbyPieces(CChainIndex const & index) : m_Index(index) {}

    /// The searches to come ask for pieces that overlap `around`.
    void LookUp(CBoundingRect<double> const & around)
    {
        // plain comparisons with far more room than the tolerance of overlaps
        auto const roomAt = [](double value) { return 1e-12 * std::fabs(value) + 1e-300; };
        CBoundingRect<double> const reach(around.minX - roomAt(around.minX), around.minY - roomAt(around.minY),
                                          around.maxX + roomAt(around.maxX), around.maxY + roomAt(around.maxY));
        m_Found.clear();
        m_Index.Search(
            [&](CBoundingRect<double> const & r)
            { return !(r.maxX < reach.minX || r.minX > reach.maxX || r.maxY < reach.minY || r.minY > reach.maxY); },
            [&](std::size_t i)
            {
                m_Found.push_back(i);
                return m_Found.size() <= MaxNearby;
            });
        m_IsFew = m_Found.size() <= MaxNearby;
    }
    /// The searches to come may ask for any piece.
    void LookUpNothing() { m_IsFew = false; }

    /// Calls `visit(i)` for each piece whose rectangle passes `mayMeet`, in chain order.
    template <typename MayMeet, typename Visit>
    void Search(MayMeet const & mayMeet, Visit const & visit) const
    {
        if (!m_IsFew)
        {
            m_Index.Search(mayMeet,
                           [&](std::size_t i)
                           {
                               visit(i);
                               return true;
                           });
            return;
        }
        for (std::size_t const i : m_Found)
        {
            if (mayMeet(m_Index.GetRect(i)))
            {
                visit(i);
            }
        }
    }

private:
    static constexpr std::size_t MaxNearby = 64; // with more, single searches are better

    CChainIndex const & m_Index;
    bool m_IsFew = false;
    std::vector<std::size_t> m_Found; ///< if they are few
};

} // namespace geometry
