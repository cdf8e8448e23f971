// Equality within tolerance doesn't carry over from one pair to the next, so points can't be sorted into classes. Cells
// wider than the tolerance can: what equals a point lies in its cell or in one of the eight around it.
#include "clip/candidates.h"

#include <algorithm>

#include <geometry/numeric/almost_equal.h>

namespace geometry
{

namespace
{

constexpr unsigned int CellBits = 7;
static_assert((1U << CellBits) > StandardUlpLimit);

std::uint64_t CellOf(double coordinate)
{
    return ToOrderedInteger(coordinate) >> CellBits;
}

/// Different cells may share a key: whoever is found is compared.
std::uint64_t KeyOf(std::uint64_t cellX, std::uint64_t cellY)
{
    return cellX * 0x9E3779B97F4A7C15ULL + cellY;
}

} // namespace

void CCandidates::Add(CPathObjectHolder* holder)
{
    if (holder->m_IsIntersection && holder->m_Neighbour == nullptr)
    {
        TPoint<double> const & p = holder->GetStartPoint();
        m_Cells[KeyOf(CellOf(p.x), CellOf(p.y))].push_back(static_cast<std::uint32_t>(m_Holders.size()));
        m_Holders.push_back(holder);
    }
}

void CCandidates::Pair(CPathObjectHolder* holder, bool fromFront)
{
    TPoint<double> const & point = holder->GetStartPoint();
    Bucket* bestBucket = nullptr;
    Bucket::iterator best;
    for (int offset = 0; offset < 9; ++offset)
    {
        // cells count around: the neighbour of the first is the last
        std::uint64_t const cellMask = ~std::uint64_t{0} >> CellBits;
        std::uint64_t const x = (CellOf(point.x) + static_cast<std::uint64_t>(offset % 3) - 1) & cellMask;
        std::uint64_t const y = (CellOf(point.y) + static_cast<std::uint64_t>(offset / 3) - 1) & cellMask;
        auto const cell = m_Cells.find(KeyOf(x, y));
        if (cell == m_Cells.end())
        {
            continue;
        }
        Bucket & bucket = cell->second;
        auto const qualifies = [&](std::uint32_t i) { return m_Holders[i]->GetStartPoint() == point; };
        auto found = std::find_if(bucket.begin(), bucket.end(), qualifies);
        if (!fromFront && found != bucket.end())
        {
            found = std::find_if(bucket.rbegin(), bucket.rend(), qualifies).base() - 1;
        }
        if (found != bucket.end() && (bestBucket == nullptr || (fromFront ? *found < *best : *found > *best)))
        {
            bestBucket = &bucket;
            best = found;
        }
    }
    if (bestBucket != nullptr)
    {
        CPathObjectHolder* const partner = m_Holders[*best];
        partner->m_Neighbour = holder;
        holder->m_Neighbour = partner;
        bestBucket->erase(best);
    }
}

} // namespace geometry
