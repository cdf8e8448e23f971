// The chord approximation of an arc, for callers that walk an outline vertex by vertex.
//
// All circles share one grid of 64 directions. The grid points of the whole circle are built from one octant by
// mirroring; those within the sweep are selected as one stretch of the ring; the exact ends are put in front and behind.
#include <algorithm>
#include <cstddef>
#include <memory>

#include <geometry/arc/path_object_arc.h>

#include "arc/arc_geometry.h"

namespace geometry
{

namespace
{

using Points = std::vector<TPoint<double>>;

constexpr double GridStep = 0.09817477042468103; // radians: pi / 32
constexpr int StepsInOctant = 8;
constexpr std::size_t ClosedGridSize = 65;

/// Appends the mirror images of the present points, from the last but one back to the first.
template <typename Mirror>
void AppendMirrored(Points & points, Mirror const & mirror)
{
    for (std::size_t i = points.size() - 1; i-- > 0;)
    {
        TPoint<double> const point = points[i];
        points.push_back(mirror(point));
    }
}

/// The whole circle from its rightmost point counter-clockwise back to it; the centre alone if there is no radius.
Points BuildCirclePoints(TPoint<double> const & c, double r)
{
    Points points;
    if (r <= 0.0)
    {
        points.push_back(c);
        return points;
    }
    points.reserve(ClosedGridSize);
    points.emplace_back(r, 0.0);
    for (int i = 1; i <= StepsInOctant; ++i)
    {
        points.emplace_back(r * std::cos(i * GridStep), r * std::sin(i * GridStep));
    }
    AppendMirrored(points, [](TPoint<double> const & p) { return TPoint<double>(p.y, p.x); });
    AppendMirrored(points, [](TPoint<double> const & p) { return TPoint<double>(-p.x, p.y); });
    AppendMirrored(points, [](TPoint<double> const & p) { return TPoint<double>(p.x, -p.y); });
    for (TPoint<double> & point : points)
    {
        point.x += c.x;
        point.y += c.y;
    }
    return points;
}

/// Index of the grid point that follows `A` where all grid points lie in the sweep; the size of the ring if none does.
std::size_t FindFirstAfterStart(Sweep const & sweep, Points const & ring)
{
    std::size_t found = ring.size();
    double best = 0.0;
    TPoint<double> const & c = sweep.C;
    for (std::size_t i = 0; i < ring.size(); ++i)
    {
        TPoint<double> const & p = ring[i];
        if (!((p.y - c.y) * (sweep.A.x - c.x) - (p.x - c.x) * (sweep.A.y - c.y) > 0.0))
        {
            continue;
        }
        double const distance = SquareDistance(p, sweep.A);
        if (found == ring.size() || distance < best)
        {
            found = i;
            best = distance;
        }
    }
    return found;
}

/// The stretch of the ring that lies in the sweep, in counter-clockwise order.
Points SelectArcPoints(Sweep const & sweep, Points const & ring)
{
    std::size_t const n = ring.size();
    if (n == 0)
    {
        return {};
    }
    bool inside = IsPointInSweep(sweep, ring[n - 1]);
    std::size_t entry = n;
    std::size_t exit = n;
    for (std::size_t i = 0; i < n && (entry == n || exit == n); ++i)
    {
        bool const isIn = IsPointInSweep(sweep, ring[i]);
        if (isIn != inside)
        {
            (isIn ? entry : exit) = i;
            inside = isIn;
        }
    }

    std::size_t first = n;
    std::size_t count = 0;
    if (entry != n && exit != n)
    {
        first = entry;
        count = (exit + n - entry) % n;
    }
    else if (entry == n && exit == n && inside)
    {
        first = FindFirstAfterStart(sweep, ring);
        count = first < n ? n : 0;
    }

    Points selected;
    selected.reserve(count + 2); // and the two ends of the sweep
    for (std::size_t i = 0; i < count; ++i)
    {
        selected.push_back(ring[(first + i) % n]);
    }
    return selected;
}

} // namespace

std::vector<TPoint<double>> BuildArcPoints(Sweep const & sweep)
{
    TPoint<double> const & a = sweep.A;
    TPoint<double> const & b = sweep.B;
    Points circle = BuildCirclePoints(sweep.C, CalculateArcRadius(a, b, sweep.C));
    if (IsExactlyEqual(a, b))
    {
        return circle;
    }
    circle.pop_back();
    Points points = SelectArcPoints(sweep, circle);
    if (points.empty() || (points.front().x != a.x && points.front().y != a.y))
    {
        points.insert(points.begin(), a);
    }
    bool const startIsOffCentre = a.x != sweep.C.x && a.y != sweep.C.y;
    if ((points.size() < 2 && startIsOffCentre) || !IsExactlyEqual(points.back(), b))
    {
        points.push_back(b);
    }
    return points;
}

CPathObjectBase::Points const & CPathObjectArc::GetArcPoints() const
{
    if (Points const* present = m_ArcPoints.Get())
    {
        return *present;
    }
    static Points const none;
    if (!IsValid())
    {
        return none;
    }
    auto points = std::make_unique<Points>();
    if (IsDegenerate())
    {
        *points = {GetStartPoint(), GetEndPoint()};
    }
    else
    {
        *points = BuildArcPoints(SweepOf(*this));
        if (!IsCounterClockwise())
        {
            std::reverse(points->begin(), points->end());
        }
    }
    return m_ArcPoints.Set(std::move(points));
}

CPathObjectBase::PointIterator CPathObjectArc::GetPointsBegin() const
{
    return GetArcPoints().begin();
}

CPathObjectBase::PointIterator CPathObjectArc::GetPointsEnd() const
{
    return GetArcPoints().end();
}

} // namespace geometry
