// Read-only questions about a point or another polygon. Containment rests on the parity of upward probe crossings,
// which the path objects count by a half-open rule. Of many objects an index, or what is known of them, tells those
// that can be crossed.
#include <geometry/polygon/polygon.h>

#include <algorithm>
#include <cfloat>

#include "path/probe_parity.h"
#include "polygon/outline_facts.h"
#include "polygon/outline_index.h"

namespace geometry
{

/// The number of crossings of the upward ray from the point is odd.
bool CPolygon::IsProbeCountOdd(TPoint<double> const & point) const
{
    bool isOdd = false;
    if (m_Facts != nullptr)
    {
        m_Facts->VisitProbed(point,
                             [&](std::size_t i) { isOdd = isOdd != geometry::IsProbeCountOdd(*m_Outline[i], point); });
        return isOdd;
    }
    if (COutlineIndex const* const index = FindOutlineIndex(false))
    {
        index->SearchAbove(point,
                           [&](std::size_t i) { isOdd = isOdd != geometry::IsProbeCountOdd(*m_Outline[i], point); });
        return isOdd;
    }
    for (CPathObjectBase const* object : m_Outline)
    {
        isOdd = isOdd != geometry::IsProbeCountOdd(*object, point);
    }
    return isOdd;
}

bool CPolygon::PointInOutline(double const & x, double const & y) const
{
    return m_BoundingRect.ContainsPoint(x, y) && IsProbeCountOdd(TPoint<double>(x, y));
}

bool CPolygon::PointInPolygon(double const & x, double const & y) const
{
    if (!PointInOutline(x, y))
    {
        return false;
    }
    std::vector<CPolygon*> holes;
    m_Holes.GetObjectsInRect(CBoundingRect<double>(x, y, x, y), holes);
    return std::none_of(holes.begin(), holes.end(), [&](CPolygon const* hole) { return hole->PointInOutline(x, y); });
}

bool CPolygon::PolygonInPolygon(CPolygon const & other) const
{
    if (!m_BoundingRect.ContainsRect(other.m_BoundingRect) || other.m_Outline.empty() || m_Outline.empty())
    {
        return false;
    }
    return IsProbeCountOdd(other.m_Outline.front()->GetInbetweenPoint());
}

bool CPolygon::IsCoincidentWith(CPolygon const & other) const
{
    std::size_t const n = m_Outline.size();
    if (n != other.m_Outline.size())
    {
        return false;
    }
    if (n == 0)
    {
        return true;
    }
    auto const matches = [&](std::size_t b, std::size_t a)
    { return other.m_Outline[b]->IsCoincidentWith(*m_Outline[a]); };
    std::size_t b = 0;
    while (b < n && !matches(b, 0))
    {
        ++b;
    }
    if (b == n)
    {
        return false;
    }
    if (n == 1)
    {
        return true;
    }
    auto const nextOf = [n](std::size_t i) { return i + 1 < n ? i + 1 : 0; };
    auto const previousOf = [n](std::size_t i) { return i > 0 ? i - 1 : n - 1; };
    bool const isForward = matches(nextOf(b), 1);
    for (std::size_t a = 1; a < n; ++a)
    {
        b = isForward ? nextOf(b) : previousOf(b);
        if (!matches(b, a))
        {
            return false;
        }
    }
    return true;
}

TPoint<double> CPolygon::GetUnlikelyEdgePoint(CPolygon const & other) const
{
    TPoint<double> result(DBL_MAX, DBL_MAX);
    int best = 0x7FFFFFFF;
    TConstVertexIterator const end = GetVerticesEnd();
    TConstVertexIterator const otherEnd = other.GetVerticesEnd();
    for (TConstVertexIterator candidate = other.GetVerticesBegin(); candidate != otherEnd && best > 0; ++candidate)
    {
        bool sameX = false;
        bool sameY = false;
        int count = 0;
        for (TConstVertexIterator vertex = GetVerticesBegin(); vertex != end && count < 2 && count < best; ++vertex)
        {
            if (!sameX && vertex->x == candidate->x)
            {
                sameX = true;
                ++count;
            }
            if (!sameY && vertex->y == candidate->y)
            {
                sameY = true;
                ++count;
            }
        }
        if (count < best)
        {
            best = count;
            result = *candidate;
        }
    }
    return result;
}

void CPolygon::BuildPolygonOutlineCache(PathObjectHash & container) const
{
    for (CPathObjectBase const* object : m_Outline)
    {
        object->CreatePathParts(container);
    }
    for (CPolygon const* hole : GetHoles())
    {
        hole->BuildPolygonOutlineCache(container);
    }
}

} // namespace geometry
