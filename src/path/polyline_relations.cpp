// What a polyline answers about a point and about another polyline, but for distances. Pairs with an arc are the arc's
// work: the overloads for other kinds hand over to the other object and swap the outputs back.
#include <geometry/path/path_object_polyline.h>

#include <algorithm>
#include <cmath>

#include <geometry/arc/path_object_arc.h>

#include "numeric/chain_index.h"
#include "path/segment_kernels.h"

namespace geometry
{

// --- points ----------------------------------------------------------------------------------------------------

namespace
{

/// Like `IsPointOnSegment`, with the arithmetic of the path test: a tie of the ends goes to `b`.
bool IsPointOnPathSegment(TPoint<double> const & a, TPoint<double> const & b, TPoint<double> const & point)
{
    if (IsClearlyOffLine(a, b, point, 0.0))
    {
        return false; // as most are, without a division
    }
    if (IsExactlyEqual(a, point) || IsExactlyEqual(b, point))
    {
        return true;
    }
    TPoint<double> c = a;
    if (!IsExactlyEqual(a, b))
    {
        double const dx = b.x - a.x;
        double const dy = b.y - a.y;
        double const t = (dx * (point.x - a.x) + dy * (point.y - a.y)) / (dx * dx + dy * dy);
        if (0.0 <= t && t <= 1.0)
        {
            c = TPoint<double>(a.x + t * dx, a.y + t * dy);
        }
        else if (!(SquareDistance(a, point) < SquareDistance(b, point)))
        {
            c = b;
        }
    }
    return c == point;
}

/// Room around the rectangles of segments that lets through whatever the tests with tolerance let through: 100 units in
/// the last place of the point, and the rounding of computed points, which goes by the largest coordinate there is.
double SearchRoom(CChainIndex const & index, TPoint<double> const & point)
{
    CBoundingRect<double> const & r = index.GetRect();
    return 1e-13 * std::max({std::fabs(r.minX), std::fabs(r.minY), std::fabs(r.maxX), std::fabs(r.maxY),
                             std::fabs(point.x), std::fabs(point.y)});
}

} // namespace

bool CPathObjectPolyline::IsPointOnPath(double x, double y) const
{
    TPoint<double> const point(x, y);
    if (CChainIndex const* const index = FindSegmentIndex(false))
    {
        double const room = SearchRoom(*index, point);
        bool isFound = false;
        index->Search([&](CBoundingRect<double> const & r)
                      { return r.minX - room <= x && x <= r.maxX + room && r.minY - room <= y && y <= r.maxY + room; },
                      [&](std::size_t i)
                      {
                          isFound = IsPointOnPathSegment(m_Points[i], m_Points[i + 1], point);
                          return !isFound;
                      });
        return isFound;
    }
    for (std::size_t i = 1; i < m_Points.size(); ++i)
    {
        if (IsPointOnPathSegment(m_Points[i - 1], m_Points[i], point))
        {
            return true;
        }
    }
    return false;
}

unsigned int CPathObjectPolyline::IntersectWithVerticalProbeLine(TPoint<double> const & point) const
{
    if (m_Points.empty() || IsClearlyLess(point.x, m_BoundingRect.minX) ||
        IsClearlyGreater(point.x, m_BoundingRect.maxX) || IsClearlyGreater(point.y, m_BoundingRect.maxY))
    {
        return 0;
    }
    unsigned int count = 0;
    if (CChainIndex const* const index = FindSegmentIndex(false))
    {
        double const room = SearchRoom(*index, point);
        index->Search([&](CBoundingRect<double> const & r)
                      { return r.minX - room <= point.x && point.x <= r.maxX + room && r.maxY + room >= point.y; },
                      [&](std::size_t i)
                      {
                          count += PassesAbove(m_Points[i], m_Points[i + 1], point.x, point.y) ? 1 : 0;
                          return true;
                      });
        return count;
    }
    for (std::size_t i = 1; i < m_Points.size(); ++i)
    {
        if (PassesAbove(m_Points[i - 1], m_Points[i], point.x, point.y))
        {
            ++count;
        }
    }
    return count;
}

// Each vertex lies on one side of the probe line, whose left side holds the points on it, and a segment above the point
// is crossed if its ends lie on different sides. So a whole stretch above the point counts by its two ends.
bool CPathObjectPolyline::IsProbeCountOdd(TPoint<double> const & point) const
{
    bool isOdd = false;
    if (IsClearlyLess(point.x, m_BoundingRect.minX) || IsClearlyGreater(point.x, m_BoundingRect.maxX) ||
        IsClearlyGreater(point.y, m_BoundingRect.maxY))
    {
        return isOdd;
    }
    CChainIndex const* const index = FindSegmentIndex(false);
    if (index == nullptr)
    {
        for (std::size_t i = 1; i < m_Points.size(); ++i)
        {
            isOdd = isOdd != PassesAbove(m_Points[i - 1], m_Points[i], point.x, point.y);
        }
        return isOdd;
    }
    double const room = SearchRoom(*index, point);
    index->Walk(
        [&](CBoundingRect<double> const & r)
        {
            bool const isApart = point.x < r.minX - room || point.x > r.maxX + room || point.y > r.maxY + room;
            return isApart                   ? CChainIndex::EAction::ePass
                   : point.y < r.minY - room ? CChainIndex::EAction::eTake
                                             : CChainIndex::EAction::eOpen;
        },
        [&](std::size_t i)
        {
            isOdd = isOdd != PassesAbove(m_Points[i], m_Points[i + 1], point.x, point.y);
            return true;
        },
        [&](std::size_t first, std::size_t last)
        { isOdd = isOdd != (IsClearlyLess(point.x, m_Points[first].x) != IsClearlyLess(point.x, m_Points[last].x)); });
    return isOdd;
}

unsigned int CPathObjectPolyline::WindAroundPoint(TPoint<double> const & point) const
{
    // a segment includes its lower end and not its upper end; comparisons are exact
    double const px = point.x;
    double const py = point.y;
    unsigned int count = 0;
    for (std::size_t i = 1; i < m_Points.size(); ++i)
    {
        TPoint<double> const & a = m_Points[i - 1];
        TPoint<double> const & b = m_Points[i];
        if (a == b)
        {
            continue;
        }
        double const cross = (b.x - a.x) * (py - a.y) - (b.y - a.y) * (px - a.x);
        if (py >= a.y)
        {
            if (b.y > py && cross > 0.0)
            {
                ++count;
            }
        }
        else if (py >= b.y && cross < 0.0)
        {
            --count;
        }
    }
    return count;
}

// --- intersections ---------------------------------------------------------------------------------------------

bool CPathObjectPolyline::IntersectWithPath(CPathObjectPolyline const & other, Points & points) const
{
    points.clear();
    Points const & p = m_Points;
    Points const & q = other.m_Points;
    for (std::size_t i = 1; i < p.size(); ++i)
    {
        for (std::size_t j = 1; j < q.size(); ++j)
        {
            TPoint<double> first;
            TPoint<double> second;
            // a vertex in the middle of a path counts once, as the start of the following segment
            if (IntersectSegments(p[i - 1], p[i], q[j - 1], q[j], i + 1 == p.size(), j + 1 == q.size(), first, second))
            {
                points.push_back(first);
                if (!(second == first))
                {
                    points.push_back(second);
                }
            }
        }
    }
    return !points.empty();
}

bool CPathObjectPolyline::IntersectWithPath(CPathObjectArc const & other, Points & points) const
{
    return other.IntersectWithPath(*this, points);
}

bool CPathObjectPolyline::IntersectWithPath(CPathObjectBase const & other, Points & points) const
{
    return other.IntersectWithPath(*this, points);
}

// --- coincidence -----------------------------------------------------------------------------------------------

namespace
{

bool AreOpenTracksEqual(CPathObjectBase::Points const & a, CPathObjectBase::Points const & b)
{
    if (a.front() == b.front() && std::equal(a.begin(), a.end(), b.begin()))
    {
        return true;
    }
    return a.front() == b.back() && std::equal(a.begin(), a.end(), b.rbegin());
}

/// `a[(offset + k) mod m]` equals `b[k]`, or `b[m - 1 - k]` if backward, for all `k` below `m`.
bool AreRotationsEqual(CPathObjectBase::Points const & a, CPathObjectBase::Points const & b, std::size_t m,
                       std::size_t offset, bool backward)
{
    for (std::size_t k = 0; k < m; ++k)
    {
        std::size_t const i = offset + k < m ? offset + k : offset + k - m;
        if (!(a[i] == b[backward ? m - 1 - k : k]))
        {
            return false;
        }
    }
    return true;
}

/// Both closed; the closing vertex isn't looked at.
bool AreClosedTracksEqual(CPathObjectBase::Points const & a, CPathObjectBase::Points const & b)
{
    std::size_t const m = a.size() - 1;
    if (m == 1)
    {
        return a[0] == b[0];
    }
    auto const end = a.begin() + static_cast<std::ptrdiff_t>(m);
    auto const lastOfB = std::find(a.begin(), end, b[m - 1]);
    bool const isBackward =
        lastOfB != end && AreRotationsEqual(a, b, m, static_cast<std::size_t>(lastOfB - a.begin()), true);
    for (std::size_t i = 0; i < m; ++i)
    {
        if (a[i] == b[0] && (isBackward || AreRotationsEqual(a, b, m, i, false)))
        {
            return true;
        }
    }
    return false;
}

} // namespace

bool CPathObjectPolyline::IsCoincidentWith(CPathObjectPolyline const & other) const
{
    if (m_Points.size() != other.m_Points.size() || m_Points.empty())
    {
        return false;
    }
    if (!IsClosed())
    {
        return AreOpenTracksEqual(m_Points, other.m_Points);
    }
    return other.IsClosed() && AreClosedTracksEqual(m_Points, other.m_Points);
}

bool CPathObjectPolyline::IsCoincidentWith(CPathObjectArc const & other) const
{
    return other.IsCoincidentWith(*this);
}

bool CPathObjectPolyline::IsCoincidentWith(CPathObjectBase const & other) const
{
    return other.IsCoincidentWith(*this);
}

} // namespace geometry
