#include "polygon/outline_facts.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>

#include <geometry/arc/path_object_arc.h>
#include <geometry/path/path_object_polyline.h>

#include "arc/as_arc.h"
#include "arc/probe_abscissas.h"
#include "polygon/area.h"
#include "polygon/polygon_tools.h"

namespace geometry
{

namespace
{

constexpr double LargestCoordinate = 1e15;

bool HasSamePoints(CPathObjectBase const & a, CPathObjectBase const & b)
{
    auto const isSame = [](TPoint<double> const & p, TPoint<double> const & q) { return p.x == q.x && p.y == q.y; };
    return std::equal(a.GetPointsBegin(), a.GetPointsEnd(), b.GetPointsBegin(), b.GetPointsEnd(), isSame);
}

/// Cleaning up changes nothing.
bool IsClean(CPathObjectPolyline const & polyline)
{
    CPathObjectPolyline cleaned(polyline);
    cleaned.Cleanup(false);
    return HasSamePoints(cleaned, polyline);
}

bool IsSteadyPolyline(CPathObjectPolyline const & polyline)
{
    if (polyline.IsSingleSegment())
    {
        return true;
    }
    CPathObjectPolyline reversed(polyline);
    reversed.Reverse();
    return IsClean(polyline) && IsClean(reversed);
}

TObjectFacts Describe(CPathObjectBase const & object, TPoint<double> const & origin)
{
    TObjectFacts facts;
    facts.rect = object.GetBoundingRect();
    facts.isKnown = true;
    facts.isArc = !object.CanAppendVertex();
    bool const isInReach = facts.rect.minX > -LargestCoordinate && facts.rect.minY > -LargestCoordinate &&
                           facts.rect.maxX < LargestCoordinate && facts.rect.maxY < LargestCoordinate;
    if (isInReach && object.IsValid() && object.GetUserInfo() == nullptr &&
        !(object.GetStartPoint() == object.GetEndPoint()))
    {
        facts.area = SignedAreaTo(object, origin);
        facts.length = object.CalculateLength();
        if (CPathObjectArc const* arc = AsArc(object))
        {
            facts.isSteady = IsSteadyArc(*arc);
        }
        else if (auto const* polyline = dynamic_cast<CPathObjectPolyline const*>(&object))
        {
            facts.isSteady = IsSteadyPolyline(*polyline);
        }
    }
    return facts;
}

/// About nearly one centre: an arc that isn't joined with its neighbour may be so with that and what came before it.
bool AreNearlyOfOneCircle(CPathObjectBase const & object, CPathObjectBase const & next)
{
    CPathObjectArc const* const a = AsArc(object);
    CPathObjectArc const* const b = AsArc(next);
    if (a == nullptr || b == nullptr)
    {
        return false;
    }
    TPoint<double> const & c = a->GetCentre();
    TPoint<double> const & d = b->GetCentre();
    double const room = 1e-12 * std::max({std::fabs(c.x), std::fabs(c.y), std::fabs(d.x), std::fabs(d.y)});
    return std::fabs(c.x - d.x) <= room && std::fabs(c.y - d.y) <= room;
}

bool AreApart(CPathObjectBase const & object, CPathObjectBase const & next)
{
    return !AreNearlyOfOneCircle(object, next) && object.GetEndPoint() == next.GetStartPoint() &&
           std::unique_ptr<CPathObjectBase const>(object.Append(&next)) == nullptr;
}

} // namespace

COutlineFacts const & CPolygonInternals::CompleteFacts(CPolygon & polygon)
{
    auto const & outline = polygon.m_Outline;
    if (polygon.m_Facts == nullptr || polygon.m_Facts->objects.size() != outline.size())
    {
        polygon.m_Facts = std::make_shared<COutlineFacts>();
        polygon.m_Facts->origin = outline.front()->GetStartPoint();
        polygon.m_Facts->objects.resize(outline.size());
        polygon.m_Facts->incomplete.resize(outline.size());
        std::iota(polygon.m_Facts->incomplete.begin(), polygon.m_Facts->incomplete.end(), std::size_t{0});
    }
    polygon.m_Facts->Complete(outline);
    return *polygon.m_Facts;
}

void COutlineFacts::Complete(std::vector<CPathObjectBase*> const & outline)
{
    for (std::size_t const i : incomplete)
    {
        if (!objects[i].isKnown)
        {
            objects[i] = Describe(*outline[i], origin);
        }
    }
    for (std::size_t const i : incomplete)
    {
        std::size_t const next = i + 1 < outline.size() ? i + 1 : 0;
        objects[i].isApart = objects[i].isSteady && objects[next].isSteady && AreApart(*outline[i], *outline[next]);
    }
    incomplete.clear();
}

} // namespace geometry
