// When a polyline gets a search tree over its segments, and what it is asked for.
#include <geometry/path/path_object_polyline.h>

#include <algorithm>

#include "path/segment_index.h"

namespace geometry
{

namespace
{

constexpr unsigned int QuestionsBeforeIndex = 4; // building costs about as much as these

} // namespace

std::unique_ptr<CChainIndex> MakeSegmentIndex(std::vector<TPoint<double>> const & points)
{
    if (points.size() < 2 || !std::all_of(points.begin(), points.end(), IsIndexable))
    {
        return nullptr;
    }
    std::vector<CBoundingRect<double>> rects;
    rects.reserve(points.size() - 1);
    for (std::size_t i = 0; i + 1 < points.size(); ++i)
    {
        rects.emplace_back(points[i], points[i + 1]);
    }
    return std::make_unique<CChainIndex>(std::move(rects));
}

CChainIndex const* CPathObjectPolyline::FindSegmentIndex(bool isWorthIt) const
{
    if (m_Points.size() < 2 || !IsIndexUsed(m_Points.size() >= MinIndexedSegmentVertices))
    {
        return nullptr;
    }
    if (CChainIndex const* present = m_SegmentIndex.Get())
    {
        return present;
    }
    if (!IsIndexUsed(isWorthIt || m_SegmentIndex.CountQuestion() > QuestionsBeforeIndex))
    {
        return nullptr;
    }
    std::unique_ptr<CChainIndex> index = MakeSegmentIndex(m_Points);
    return index != nullptr ? m_SegmentIndex.Set(index.release()) : nullptr;
}

} // namespace geometry
