// The nearest pair of pieces of two chains by their search trees, the same one that two nested loops would find.
#pragma once

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "numeric/chain_index.h"

namespace geometry
{

/// Of all pairs (i, j) offered the one of smallest square distance, and of equal ones the first in the order of two
/// nested loops. What is found doesn't depend on the order of the offers.
///
/// Distances are computed, and for points that lie on their pieces but for rounding: two pieces are never measured
/// nearer than their rectangles lie apart, less some room. So a pair that `MayHold` refuses is worse than the best one.
class CNearestPair
{
public:
    using TPlace = std::pair<std::size_t, std::size_t>;

    /// Coordinates up to `largest` are in play. Pieces within `metReach` of each other may be told to meet. Only pairs
    /// before `end` count.
    explicit CNearestPair(double largest, double metReach = 0.0,
                          TPlace const & end = {std::numeric_limits<std::size_t>::max(), 0})
        : m_Room(RelativeRoom * largest), m_MetReach(metReach), m_End(end)
    {
    }

    /// Far above what rounding and comparisons with tolerance move a point by, for a coordinate of 1.
    static constexpr double RelativeRoom = 1e-12;

    bool IsFound() const { return m_Best < DBL_MAX; }
    double GetBest() const { return m_Best; }
    TPlace const & GetPlace() const { return m_Place; }

    /// Among the pairs from (i, j) on, whose rectangles are the root of `squareGap` apart, may be a better one.
    bool MayHold(double squareGap, std::size_t i, std::size_t j) const
    {
        return squareGap <= m_Limit && TPlace(i, j) < (m_Best > 0.0 ? m_End : m_Place);
    }

    void Offer(double squareDistance, std::size_t i, std::size_t j)
    {
        TPlace const place(i, j);
        if (place < m_End && (squareDistance < m_Best || (squareDistance == m_Best && place < m_Place)))
        {
            m_Best = squareDistance;
            m_Place = place;
            double const reach = std::max(std::sqrt(squareDistance), m_MetReach) + m_Room;
            m_Limit = reach * reach;
        }
    }

private:
    double m_Room;
    double m_MetReach;
    double m_Best = DBL_MAX;
    double m_Limit = std::numeric_limits<double>::infinity();
    TPlace m_Place{0, 0};
    TPlace m_End;
};

/// The square of the distance of two rectangles.
inline double SquareGap(CBoundingRect<double> const & a, CBoundingRect<double> const & b)
{
    double const dx = std::max(0.0, std::max(b.minX - a.maxX, a.minX - b.maxX));
    double const dy = std::max(0.0, std::max(b.minY - a.maxY, a.minY - b.maxY));
    return dx * dx + dy * dy;
}

/// Offers to `nearest` the distances `measure(i, j)` of all pairs of which it may hold one.
template <typename Measure>
void FindNearestPair(CChainIndex const & first, CChainIndex const & second, CNearestPair & nearest,
                     Measure const & measure)
{
    first.WalkPairs(
        second, SquareGap, [&](double gap, std::size_t i, std::size_t j) { return nearest.MayHold(gap, i, j); },
        [&](std::size_t i, std::size_t j) { nearest.Offer(measure(i, j), i, j); });
}

/// The largest coordinate of a rectangle, whatever its sign.
inline double GetLargestCoordinate(CBoundingRect<double> const & rect)
{
    return std::max(std::max(std::fabs(rect.minX), std::fabs(rect.minY)),
                    std::max(std::fabs(rect.maxX), std::fabs(rect.maxY)));
}

/// Distances at which searches stop count as one and the same.
inline double ZeroIfFine(double squareDistance)
{
    return IsAlmostEqual(squareDistance, 0.0, FineUlpLimit) ? 0.0 : squareDistance;
}

} // namespace geometry
