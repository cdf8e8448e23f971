// Pairing by tolerant equality, which isn't transitive: cells of ordered integers stand for the points, all cells that
// the tolerance reaches are searched, and whatever they hold is compared. The first of those that qualify is taken
// (or the last).
#include "clip/candidates.h"

#include <geometry/numeric/almost_equal.h>

namespace geometry
{

namespace
{

constexpr std::size_t FewHolders = 8; // most rings cross a few times
constexpr unsigned int CellBits = 12; // cells are far larger than the tolerance, so that few points reach into two
static_assert((1U << CellBits) > StandardUlpLimit);

std::uint64_t CellOf(std::uint64_t ordered)
{
    return ordered >> CellBits;
}

} // namespace

void CCandidates::Add(CPathObjectHolder* holder)
{
    if (holder->m_IsIntersection && holder->m_Neighbour == nullptr)
    {
        if (m_Waiting.empty())
        {
            m_Waiting.reserve(FewHolders);
        }
        m_Waiting.push_back({holder, None});
    }
}

namespace
{

/// Different cells may share a bucket: whoever is found is compared.
std::size_t BucketOf(std::uint64_t cellX, std::uint64_t cellY, unsigned int shift)
{
    return ((cellX * 0x9E3779B97F4A7C15ULL + cellY) * 0xD6E8FEB86659FD93ULL) >> shift;
}

} // namespace

/// Twice as many buckets as holders; each is a list in the order in which its holders are to be taken.
void CCandidates::FillBuckets()
{
    unsigned int bits = 1;
    while ((std::size_t{1} << bits) < 2 * m_Waiting.size())
    {
        ++bits;
    }
    m_HashShift = 64 - bits;
    m_Buckets.assign(std::size_t{1} << bits, None);
    auto const count = static_cast<std::uint32_t>(m_Waiting.size());
    for (std::uint32_t k = 0; k < count; ++k)
    {
        std::uint32_t const i = m_FromFront ? count - 1 - k : k;
        TPoint<double> const & p = m_Waiting[i].holder->GetStartPoint();
        std::uint32_t & first =
            m_Buckets[BucketOf(CellOf(ToOrderedInteger(p.x)), CellOf(ToOrderedInteger(p.y)), m_HashShift)];
        m_Waiting[i].next = first;
        first = i;
    }
}

/// The link to the first holder to be taken of the cell's bucket that begins at the point; null if there is none.
std::uint32_t* CCandidates::FindIn(std::uint64_t cellX, std::uint64_t cellY, TPoint<double> const & point)
{
    std::uint32_t* link = &m_Buckets[BucketOf(cellX, cellY, m_HashShift)];
    while (*link != None && !(m_Waiting[*link].holder->GetStartPoint() == point))
    {
        link = &m_Waiting[*link].next;
    }
    return *link != None ? link : nullptr;
}

void CCandidates::Pair(CPathObjectHolder* holder)
{
    if (m_Waiting.empty())
    {
        return;
    }
    if (m_Buckets.empty())
    {
        FillBuckets();
    }
    TPoint<double> const & point = holder->GetStartPoint();
    std::uint64_t const x = ToOrderedInteger(point.x);
    std::uint64_t const y = ToOrderedInteger(point.y);
    std::uint32_t* best = nullptr;
    // cells count around: the neighbour of the first is the last
    std::uint64_t const lastX = CellOf(x + StandardUlpLimit);
    std::uint64_t const lastY = CellOf(y + StandardUlpLimit);
    constexpr std::uint64_t cellMask = ~std::uint64_t{0} >> CellBits;
    for (std::uint64_t cellX = CellOf(x - StandardUlpLimit);; cellX = (cellX + 1) & cellMask)
    {
        for (std::uint64_t cellY = CellOf(y - StandardUlpLimit);; cellY = (cellY + 1) & cellMask)
        {
            std::uint32_t* const found = FindIn(cellX, cellY, point);
            if (found != nullptr && (best == nullptr || (m_FromFront ? *found < *best : *found > *best)))
            {
                best = found;
            }
            if (cellY == lastY)
            {
                break;
            }
        }
        if (cellX == lastX)
        {
            break;
        }
    }
    if (best != nullptr)
    {
        TWaiting const & partner = m_Waiting[*best];
        partner.holder->m_Neighbour = holder;
        holder->m_Neighbour = partner.holder;
        *best = partner.next;
    }
}

} // namespace geometry
