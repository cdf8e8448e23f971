// When a polyline gets a search tree over its segments, and what it is asked for.
#include <geometry/path/path_object_polyline.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "numeric/chain_index.h"

namespace geometry
{

namespace
{

constexpr std::size_t MinIndexedSize = 48;       // vertices; below, a loop over all is as fast
constexpr unsigned int QuestionsBeforeIndex = 4; // building costs about as much as these

} // namespace

CChainIndex const* CPathObjectPolyline::FindSegmentIndex(bool isWorthIt) const
{
    if (m_Points.size() < 2 || !IsIndexUsed(m_Points.size() >= MinIndexedSize))
    {
        return nullptr;
    }
    if (CChainIndex const* present = m_SegmentIndex.Get())
    {
        return present;
    }
    if (!IsIndexUsed(isWorthIt || m_SegmentIndex.CountQuestion() > QuestionsBeforeIndex) ||
        !std::all_of(m_Points.begin(), m_Points.end(),
                     [](TPoint<double> const & p) { return std::isfinite(p.x) && std::isfinite(p.y); }))
    {
        return nullptr; // not yet, or never: tests with NaN don't carry over to rectangles around rectangles
    }
    std::vector<CBoundingRect<double>> rects;
    rects.reserve(m_Points.size() - 1);
    for (std::size_t i = 0; i + 1 < m_Points.size(); ++i)
    {
        rects.emplace_back(m_Points[i], m_Points[i + 1]);
    }
    return m_SegmentIndex.Set(std::make_unique<CChainIndex>(std::move(rects)).release());
}

} // namespace geometry
