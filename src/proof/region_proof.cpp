// Points are chosen, located in all inputs and in the result, and compared. All of that is linear in the length of the
// outlines but for the few edges above each point.
#include "proof/region_proof.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>

#include "arc/as_arc.h"

namespace geometry
{

namespace
{

constexpr double relativeTolerance = 1e-6; // of the smallest side
constexpr double leastTolerance = 1e-9;    // of the largest side: a sliver among the inputs makes no hair of everything
constexpr double arcTolerance = 0.07;      // twice the distance at which a point counts as on an arc, and some
constexpr double roundings = 400 * DBL_EPSILON;
constexpr std::size_t edgesOfGroup = 24;       // that are looked at in any case; of inputs one a ring
constexpr std::size_t edgesPerLook = 512;      // of more than these, one in so many
constexpr double middle = 0.38196601125010515; // the golden section: no place that symmetric shapes favour

bool HasArc(CPolygon const & polygon)
{
    auto const & outline = polygon.GetOutline();
    auto const & holes = polygon.GetHoles();
    return std::any_of(outline.begin(), outline.end(), [](CPathObjectBase const* o) { return AsArc(*o) != nullptr; }) ||
           std::any_of(holes.begin(), holes.end(), [](CPolygon const* hole) { return HasArc(*hole); });
}

std::size_t CountRings(PolygonRange const & polygons)
{
    std::size_t count = polygons.size();
    for (CPolygon const* polygon : polygons)
    {
        count += polygon->GetHoles().size();
    }
    return count;
}

std::size_t CountEdges(CPolygon const & ring)
{
    std::size_t count = 0;
    for (CPathObjectBase const* object : ring.GetOutline())
    {
        // an arc isn't asked for its points, which it would make chords for
        std::ptrdiff_t const points =
            AsArc(*object) != nullptr ? 2
                                      : std::max<std::ptrdiff_t>(2, object->GetPointsEnd() - object->GetPointsBegin());
        count += static_cast<std::size_t>(points - 1);
    }
    return count;
}

std::size_t CountEdges(PolygonRange const & polygons)
{
    std::size_t count = 0;
    for (CPolygon const* polygon : polygons)
    {
        count += CountEdges(*polygon);
        for (CPolygon const* hole : polygon->GetHoles())
        {
            count += CountEdges(*hole);
        }
    }
    return count;
}

} // namespace

double ToleranceOf(PolygonRange const & polygons)
{
    double side = DBL_MAX;
    double largest = 0.0;
    double reach = 0.0;
    bool hasArc = false;
    for (CPolygon const* polygon : polygons)
    {
        CBoundingRect<double> const & r = polygon->GetBoundingRect();
        if (!polygon->GetOutline().empty())
        {
            side = std::min({side, r.maxX - r.minX, r.maxY - r.minY});
            largest = std::max({largest, r.maxX - r.minX, r.maxY - r.minY});
            reach = std::max({reach, std::fabs(r.minX), std::fabs(r.minY), std::fabs(r.maxX), std::fabs(r.maxY)});
            hasArc = hasArc || HasArc(*polygon);
        }
    }
    return std::max(relativeTolerance * std::min(side, largest), leastTolerance * largest) +
           (hasArc ? arcTolerance : 0.0) + roundings * reach;
}

CRegionJudge::CRegionJudge(PolygonRange first, PolygonRange second, Membership isMember)
    : m_First(std::move(first)), m_Second(std::move(second)), m_IsMember(isMember)
{
    PolygonRange all(m_First);
    all.insert(all.end(), m_Second.begin(), m_Second.end());
    m_Clearance = ToleranceOf(all);
}

/// Beside a place on an edge that runs from `from` to `to`, on both sides; every other pair stands farther away.
void CRegionJudge::AddPair(TPoint<double> const & at, TPoint<double> const & from, TPoint<double> const & to,
                           double size, bool onBothSides)
{
    constexpr double farther[] = {0.0, 0.02, 0.0, 0.2}; // parts of the size
    double const dx = to.x - from.x;
    double const dy = to.y - from.y;
    double const length = std::sqrt(dx * dx + dy * dy);
    if (!(length > 0.0))
    {
        return;
    }
    double const distance = 1.5 * m_Clearance + std::max(farther[m_PairCount % 4], 1e-7) * size;
    ++m_PairCount;
    double const ex = -dy / length * distance;
    double const ey = dx / length * distance;
    if (onBothSides || m_PairCount % 2 == 0)
    {
        AddPoint({at.x + ex, at.y + ey});
    }
    if (onBothSides || m_PairCount % 2 != 0)
    {
        AddPoint({at.x - ex, at.y - ey});
    }
}

/// Points beside `edges` edges, evenly over the ring.
void CRegionJudge::AddBeside(CPolygon const & ring, std::size_t edges, bool onBothSides)
{
    std::size_t const count = CountEdges(ring);
    if (count == 0)
    {
        return;
    }
    std::size_t const step = std::max<std::size_t>(1, count / edges);
    std::size_t index = step / 2; // counted down to the next edge that is looked at
    CBoundingRect<double> const & rect = ring.GetBoundingRect();
    double const extent = std::min(rect.maxX - rect.minX, rect.maxY - rect.minY);
    for (CPathObjectBase const* object : ring.GetOutline())
    {
        CPathObjectArc const* const arc = AsArc(*object);
        if (arc != nullptr)
        {
            if (index-- != 0)
            {
                continue;
            }
            index = step - 1;
            TPoint<double> const at = arc->GetInbetweenPoint();
            TPoint<double> const & centre = arc->GetCentre();
            TPoint<double> const ahead(at.x - (at.y - centre.y), at.y + (at.x - centre.x)); // along the tangent
            AddPair(at, at, ahead, std::min(extent, arc->GetRadius()), onBothSides);
            continue;
        }
        auto const begin = object->GetPointsBegin();
        auto const segments = std::max<std::ptrdiff_t>(object->GetPointsEnd() - begin - 1, 0);
        auto i = static_cast<std::ptrdiff_t>(index);
        for (; i < segments; i += static_cast<std::ptrdiff_t>(step))
        {
            TPoint<double> const & a = begin[i];
            TPoint<double> const & b = begin[i + 1];
            double const size = std::max(std::fabs(b.x - a.x), std::fabs(b.y - a.y));
            AddPair({a.x + middle * (b.x - a.x), a.y + middle * (b.y - a.y)}, a, b, std::min(extent, size),
                    onBothSides);
        }
        index = static_cast<std::size_t>(i - segments);
    }
}

void CRegionJudge::Spread(CBoundingRect<double> const & rect)
{
    constexpr int count = 8;
    constexpr double stepX = 0.7548776662466927; // multiples less their integers spread evenly over the unit square
    constexpr double stepY = 0.5698402909980532;
    for (int i = 1; i <= count; ++i)
    {
        AddPoint({rect.minX + (i * stepX - std::floor(i * stepX)) * (rect.maxX - rect.minX),
                  rect.minY + (i * stepY - std::floor(i * stepY)) * (rect.maxY - rect.minY)});
    }
}

void CRegionJudge::ChoosePoints(PolygonVector const & result)
{
    m_Probes.clear();
    m_PairCount = 0;
    std::array<PolygonRange, 3> const groups{m_First, m_Second, PolygonRange(result.begin(), result.end())};
    for (PolygonRange const & group : groups)
    {
        std::size_t const rings = CountRings(group);
        std::size_t const edges = edgesOfGroup + CountEdges(group) / edgesPerLook;
        bool const isResult = &group == &groups.back();
        std::size_t const step = isResult ? rings / edges + 1 : 1; // no input goes without a look
        std::size_t ring = 0;
        auto const add = [&](CPolygon const & polygon)
        {
            if (ring++ % step == 0)
            {
                AddBeside(polygon, std::max<std::size_t>(1, edges / rings), rings < edges);
            }
        };
        for (CPolygon const* polygon : group)
        {
            add(*polygon);
            for (CPolygon const* hole : polygon->GetHoles())
            {
                add(*hole);
            }
        }
        if (group.size() == 1)
        {
            Spread(group.front()->GetBoundingRect());
        }
    }
    std::sort(m_Probes.begin(), m_Probes.end(),
              [](TProbe const & a, TProbe const & b)
              { return a.point.x != b.point.x ? a.point.x < b.point.x : a.point.y < b.point.y; });
}

void CRegionJudge::AddPoint(TPoint<double> const & point)
{
    if (std::isfinite(point.x) && std::isfinite(point.y))
    {
        m_Probes.emplace_back().point = point;
    }
}

/// Tells all points within reach of the outline of `polygon` whether they lie in it.
void CRegionJudge::PassOutline(CPolygon const & polygon, bool isInput)
{
    CBoundingRect<double> const & rect = polygon.GetBoundingRect();
    auto probe = std::lower_bound(m_Probes.begin(), m_Probes.end(), rect.minX - m_Clearance,
                                  [](TProbe const & p, double x) { return p.point.x < x; });
    bool isRead = false;
    for (; probe != m_Probes.end() && probe->point.x <= rect.maxX + m_Clearance; ++probe)
    {
        if (!(probe->point.y >= rect.minY - m_Clearance && probe->point.y <= rect.maxY + m_Clearance))
        {
            continue;
        }
        if (!isRead)
        {
            m_Outline.Read(polygon);
            isRead = true;
        }
        COutlineProbe::TAnswer const answer = m_Outline.Locate(probe->point, m_Clearance);
        probe->isNear = probe->isNear || (isInput && answer.isNear);
        if (answer.isInside)
        {
            probe->isOdd = !probe->isOdd;
            m_Touched.push_back(static_cast<std::size_t>(probe - m_Probes.begin()));
        }
    }
}

void CRegionJudge::CountGroup(PolygonRange const & polygons, std::size_t group)
{
    constexpr std::size_t groupOfResult = 2;
    for (CPolygon const* polygon : polygons)
    {
        m_Touched.clear();
        PassOutline(*polygon, group != groupOfResult);
        for (CPolygon const* hole : polygon->GetHoles())
        {
            PassOutline(*hole, group != groupOfResult);
        }
        for (std::size_t const index : m_Touched)
        {
            TProbe & probe = m_Probes[index];
            probe.counts[group] += probe.isOdd ? 1 : 0;
            probe.isOdd = false;
        }
    }
}

std::optional<TPoint<double>> CRegionJudge::FindContradiction(PolygonVector const & result)
{
    ChoosePoints(result);
    CountGroup(m_First, 0);
    CountGroup(m_Second, 1);
    CountGroup(PolygonRange(result.begin(), result.end()), 2);
    for (TProbe const & probe : m_Probes)
    {
        if (!probe.isNear && probe.counts[2] != (m_IsMember(probe.counts[0], probe.counts[1]) ? 1U : 0U))
        {
            return probe.point;
        }
    }
    return std::nullopt;
}

} // namespace geometry
