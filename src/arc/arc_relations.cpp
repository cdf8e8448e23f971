// An arc against points and tracks: on it or not, crossings of a probe ray, winding, intersection, coincidence.
//
// The probe ray counts as for a polyline that runs along the arc: a piece of the track owns its end of smaller x and
// not its end of greater x, so that neighbours which share an end on the ray count it together as one crossing, or as
// none or two where the track turns back.
#include <geometry/arc/path_object_arc.h>
#include <geometry/path/path_object_polyline.h>

#include "arc/arc_geometry.h"
#include "arc/distance_kernels.h"
#include "arc/probe_kernels.h"

namespace geometry
{

namespace
{

/// A point is on an arc below this square distance. Square of coordinate units, absolute.
constexpr double OnArcSquareLimit = 0.001;
constexpr double OnArcLimit = 0.032; ///< just above its root

/// The ray upward from `p` against one arc.
struct ProbeWalk
{
    TPoint<double> const & p;
    TPoint<double> const & start;
    TPoint<double> const & end;
    Sweep sweep;
    bool counterClockwise;
    CrossingPoints h;

    bool IsOnRay(TPoint<double> const & pathEnd) const
    {
        return IsAlmostEqual(pathEnd.x, p.x) && IsLessOrAlmostEqual(p.y, pathEnd.y);
    }

    /// A path end on the ray replaces the computed point that stands for it.
    void ReplaceByExact(TPoint<double> const & pathEnd)
    {
        bool const secondIsNearer =
            h.count == 2 && !(SquareDistance(h.points[1], pathEnd) > SquareDistance(h.points[0], pathEnd));
        h.points[secondIsNearer ? 1 : 0] = pathEnd;
    }

    /// The ray touches the circle at its left or right extreme: only an arc that starts or ends there and lies to the
    /// right of the ray counts, since the touching end is its end of smaller x.
    unsigned int CountTouch() const
    {
        bool const atEnd = IsAlmostEqual(h.points[0].x, start.x) || IsAlmostEqual(h.points[0].x, end.x);
        return h.count == 1 && atEnd && start != end && sweep.C.x > p.x ? 1 : 0;
    }

    /// The points without those at an end of greater x.
    unsigned int CountOwned() const
    {
        if (start == end)
        {
            return h.count;
        }
        double const centre = sweep.C.y;
        bool const ownsEnd = counterClockwise ? !(end.y < centre) : !(end.y > centre);
        bool const ownsStart = counterClockwise ? !(start.y >= centre) : !(start.y <= centre);
        unsigned int result = h.count;
        for (unsigned int i = 0; i < h.count; ++i)
        {
            if ((!ownsEnd && h.points[i] == end) || (!ownsStart && h.points[i] == start))
            {
                --result;
            }
        }
        return result;
    }

    unsigned int Run()
    {
        bool const startOnRay = IsOnRay(start);
        bool const endOnRay = IsOnRay(end);
        // the ends on the ray moved to its x exactly
        if (startOnRay)
        {
            (counterClockwise ? sweep.A : sweep.B).x = p.x;
        }
        if (endOnRay)
        {
            (counterClockwise ? sweep.B : sweep.A).x = p.x;
        }
        ELineMeeting const meeting = IntersectArcProbeRay(sweep, p, h);
        if (h.count == 0)
        {
            if (startOnRay)
            {
                h.Add(start);
            }
            if (endOnRay)
            {
                h.Add(end);
            }
        }
        if (meeting == ELineMeeting::eTouch)
        {
            return CountTouch();
        }
        if (startOnRay)
        {
            ReplaceByExact(start);
        }
        if (endOnRay)
        {
            ReplaceByExact(end);
        }
        return CountOwned();
    }
};

/// What a crossing of the ray to the right of a point adds to the winding: 1 up, -1 down, 0 where the piece doesn't
/// own the crossing. `k` is positive when the point lies inside the circle.
int SignOfCrossing(TPoint<double> const & h, TPoint<double> const & p, Sweep const & sweep, bool counterClockwise,
                   double k)
{
    TPoint<double> const & start = counterClockwise ? sweep.A : sweep.B;
    TPoint<double> const & end = counterClockwise ? sweep.B : sweep.A;
    bool const onRightSide = h.x >= sweep.C.x && (k > 0.0 || sweep.C.x > p.x);
    bool const onLeftSide = h.x <= sweep.C.x && k < 0.0;
    bool const goesUp = counterClockwise ? onRightSide : onLeftSide;
    bool const goesDown = counterClockwise ? onLeftSide : onRightSide;
    if (goesUp && h != end)
    {
        return 1;
    }
    if (goesDown && h != start)
    {
        return -1;
    }
    return 0;
}

} // namespace

bool IsClearlyCrossed(CPathObjectArc const & arc, TPoint<double> const & point)
{
    CBoundingRect<double> const & rect = arc.GetBoundingRect();
    if (point.x < rect.minX || point.x > rect.maxX)
    {
        return false;
    }
    TPoint<double> const* const points = CArcInternals::GetPoints(arc);
    TPoint<double> const & c = points[2];
    TPoint<double> const & a = points[arc.IsCounterClockwise() ? 0 : 1];
    TPoint<double> const & b = points[arc.IsCounterClockwise() ? 1 : 0];
    bool const isInside = SquareDistance(point, c) < arc.GetRadius() * arc.GetRadius();
    bool const isBelow = !isInside && point.y < c.y; // both points of the circle
    return ((isInside || isBelow) && IsAbscissaInSweep(a, b, c, point.x, true)) !=
           (isBelow && IsAbscissaInSweep(a, b, c, point.x, false));
}

bool CPathObjectArc::IsPointOnPath(double x, double y) const
{
    TPoint<double> closest;
    return !IsClearlyFarther(*this, TPoint<double>(x, y), OnArcLimit) &&
           CPathObjectArc::SquareDistanceToPoint(x, y, closest) < OnArcSquareLimit;
}

unsigned int CPathObjectArc::IntersectWithVerticalProbeLine(TPoint<double> const & point) const
{
    CBoundingRect<double> const & rect = m_BoundingRect;
    if (!IsValid() || IsClearlyLess(point.x, rect.minX) || IsClearlyGreater(point.x, rect.maxX) ||
        IsClearlyGreater(point.y, rect.maxY))
    {
        return 0;
    }
    TPoint<double> const* const ends = CArcInternals::GetPoints(*this);
    ProbeWalk walk{point, ends[0], ends[1], SweepOf(*this), IsCounterClockwise(), {}};
    return walk.Run();
}

unsigned int CPathObjectArc::WindAroundPoint(TPoint<double> const & point) const
{
    if (!IsValid() || point.y > m_BoundingRect.maxY || point.y < m_BoundingRect.minY)
    {
        return 0;
    }
    Sweep const sweep = SweepOf(*this);
    CrossingPoints h;
    ELineMeeting const meeting = IntersectArcLine(sweep, point, TPoint<double>(point.x + m_Radius, point.y), h);
    if (meeting == ELineMeeting::eNone)
    {
        return 0;
    }
    if (meeting == ELineMeeting::eTouch && h.points[0] != GetStartPoint() && h.points[0] != GetEndPoint())
    {
        return 0;
    }
    double const k = m_Radius * m_Radius - SquareDistance(point, sweep.C);
    unsigned int winding = 0;
    for (unsigned int i = 0; i < h.count; ++i)
    {
        if (h.points[i].x > point.x)
        {
            winding += static_cast<unsigned int>(SignOfCrossing(h.points[i], point, sweep, IsCounterClockwise(), k));
        }
    }
    return winding;
}

bool CPathObjectArc::IntersectWithPath(CPathObjectPolyline const & other, Points & points) const
{
    points.clear();
    if (!IsValid())
    {
        return false;
    }
    Sweep const sweep = SweepOf(*this);
    PointIterator const end = other.GetPointsEnd();
    PointIterator p = other.GetPointsBegin();
    for (PointIterator q = p; p != end && ++q != end; p = q)
    {
        CrossingPoints h;
        IntersectArcSegment(sweep, *p, *q, h);
        points.insert(points.end(), h.points, h.points + h.count);
    }
    return !points.empty();
}

bool CPathObjectArc::IntersectWithPath(CPathObjectArc const & other, Points & points) const
{
    points.clear();
    if (!IsValid() || !other.IsValid())
    {
        return false;
    }
    CrossingPoints h;
    IntersectArcArc(SweepOf(*this), SweepOf(other), h);
    points.insert(points.end(), h.points, h.points + h.count);
    return !points.empty();
}

bool CPathObjectArc::IntersectWithPath(CPathObjectBase const & other, Points & points) const
{
    return other.IntersectWithPath(*this, points);
}

bool CPathObjectArc::IsCoincidentWith(CPathObjectPolyline const & other) const
{
    PointIterator const first = other.GetPointsBegin();
    PointIterator const end = other.GetPointsEnd();
    if (!IsValid() || first == end)
    {
        return false;
    }
    TPoint<double> const & start = GetStartPoint();
    return start == *first && start == GetEndPoint() && *first == *(end - 1) && GetInbetweenPoint() == start &&
           end - first < 3;
}

bool CPathObjectArc::IsCoincidentWith(CPathObjectArc const & other) const
{
    if (!IsValid() || !other.IsValid() || GetCentre() != other.GetCentre())
    {
        return false;
    }
    if (IsCounterClockwise() == other.IsCounterClockwise())
    {
        return GetStartPoint() == other.GetStartPoint() && GetEndPoint() == other.GetEndPoint();
    }
    return GetStartPoint() == other.GetEndPoint() && GetEndPoint() == other.GetStartPoint();
}

bool CPathObjectArc::IsCoincidentWith(CPathObjectBase const & other) const
{
    return other.IsCoincidentWith(*this);
}

} // namespace geometry
