// Distances of an arc to points, polylines and arcs: the sweep of the arc is handed to the kernels.
//
// Against a polyline the segments are walked; once a first distance is known, those outside the arc's rectangle
// inflated by it are skipped. A search tree finds the same segment of a long polyline. Closest points are worked out in
// locals, so that a caller may pass one object twice.
#include <algorithm>
#include <cfloat>
#include <cmath>

#include <geometry/arc/path_object_arc.h>
#include <geometry/path/path_object_polyline.h>

#include "arc/arc_geometry.h"
#include "arc/distance_kernels.h"
#include "arc/distance_reach.h"
#include "numeric/nearest_pair.h"

namespace geometry
{

double CPathObjectArc::SquareDistanceToPoint(double x, double y, TPoint<double> & closest) const
{
    if (!IsValid())
    {
        return DBL_MAX;
    }
    TPoint<double> found;
    double const result = SquareDistanceArcPoint(SweepOf(*this), TPoint<double>(x, y), found);
    closest = found;
    return result;
}

/// The kernels solve a line through the centre and `x`: where that isn't nearly parallel to an axis, in coordinates
/// like these, the points found are on the circle but for less than 1e-4, and one of them is on the way to a point
/// outside.
bool IsClearlyFarther(CPathObjectArc const & arc, TPoint<double> const & x, double distance)
{
    constexpr double LargestCoordinate = 4e9;
    constexpr double SmallestSlope = 1e-6;
    if (!CArcInternals::HasPoints(arc) || !IsIndexUsed(true))
    {
        return false;
    }
    TPoint<double> const* const points = CArcInternals::GetPoints(arc);
    TPoint<double> const & c = points[2];
    double const r = arc.GetRadius();
    double const room = 2.0 * distance;
    double const dx = std::fabs(x.x - c.x);
    double const dy = std::fabs(x.y - c.y);
    double const d2 = dx * dx + dy * dy;
    double const r2 = r * r;
    bool const isAccurate = r > 1.0 && r > 2.0 * room && r < LargestCoordinate && std::fabs(c.x) < LargestCoordinate &&
                            std::fabs(c.y) < LargestCoordinate && d2 < LargestCoordinate * LargestCoordinate &&
                            dx > SmallestSlope * dy && dy > SmallestSlope * dx;
    // d2 - r2 is the distance to the circle times d + r
    return isAccurate && (d2 > 4.0 * r2 || std::fabs(d2 - r2) > 3.0 * r * room) &&
           SquareDistance(x, points[0]) > room * room && SquareDistance(x, points[1]) > room * room;
}

namespace
{

/// The segments of a polyline by their distance to an arc.
class CArcSegments
{
public:
    CArcSegments(CPathObjectArc const & arc, CPathObjectPolyline const & polyline)
        : m_Arc(arc), m_Points(polyline.GetPointsBegin()),
          m_Count(polyline.GetPointsEnd() - m_Points > 1 ? polyline.GetPointsEnd() - m_Points - 1 : 0),
          m_Sweep(SweepOf(arc)), m_IsFullCircle(arc.IsFullCircle())
    {
    }

    double Measure(std::ptrdiff_t i, TPoint<double> & onArc, TPoint<double> & onSegment) const
    {
        TPoint<double> const & p = m_Points[i];
        TPoint<double> const & q = m_Points[i + 1];
        return m_IsFullCircle ? SquareDistanceCircleSegment(m_Sweep.C, m_Sweep.r, p, q, onArc, onSegment)
                              : SquareDistanceArcSegment(m_Sweep, p, q, onArc, onSegment);
    }

    /// All that a loop measures which knows the distance `best`.
    CBoundingRect<double> ReachOf(double best) const
    {
        CBoundingRect<double> reach = m_Arc.GetBoundingRect();
        reach.Inflate(std::sqrt(best));
        return reach;
    }
    bool IsReached(std::ptrdiff_t i, CBoundingRect<double> const & reach) const
    {
        return CBoundingRect<double>(m_Points[i], m_Points[i + 1]).Overlaps(reach);
    }

    /// The loop itself. It ends at distance zero.
    double FindByLoop(TPoint<double> & onArc, TPoint<double> & onSegment) const
    {
        double best = DBL_MAX;
        CBoundingRect<double> reach;
        for (std::ptrdiff_t i = 0; i < m_Count; ++i)
        {
            if (best < DBL_MAX && !IsReached(i, reach))
            {
                continue;
            }
            TPoint<double> a;
            TPoint<double> b;
            double const d = Measure(i, a, b);
            if (d < best)
            {
                best = d;
                onArc = a;
                onSegment = b;
                if (ZeroIfFine(best) == 0.0)
                {
                    return 0.0;
                }
                reach = ReachOf(best);
            }
        }
        return best;
    }

    /// The segment that the loop finds; -1 where that can't be told: if the loop may have passed over the nearest one.
    std::ptrdiff_t FindByIndex(CChainIndex const & index) const
    {
        TDistanceReach const reach = DistanceReachOf(m_Arc);
        double const largest = std::max(reach.largest, GetLargestCoordinate(index.GetRect()));
        if (reach.largest == 0.0 || !reach.IsCertainWithin(largest))
        {
            return -1;
        }
        CNearestPair nearest(largest);
        FindNearestPair(CChainIndex({reach.rect}), index, nearest,
                        [&](std::size_t, std::size_t i)
                        {
                            TPoint<double> a;
                            TPoint<double> b;
                            return ZeroIfFine(Measure(static_cast<std::ptrdiff_t>(i), a, b));
                        });
        auto const i = static_cast<std::ptrdiff_t>(nearest.GetPlace().second);
        return nearest.IsFound() && IsReached(i, ReachOf(nearest.GetBest())) ? i : -1;
    }

private:
    CPathObjectArc const & m_Arc;
    CPathObjectBase::PointIterator m_Points;
    std::ptrdiff_t m_Count;
    Sweep m_Sweep;
    bool m_IsFullCircle;
};

} // namespace

double CPathObjectArc::SquareDistanceToPath(CPathObjectPolyline const & other, TPoint<double> & onThis,
                                            TPoint<double> & onOther) const
{
    if (!IsValid())
    {
        return DBL_MAX;
    }
    CArcSegments const segments(*this, other);
    CChainIndex const* const index = other.FindSegmentIndex(false);
    std::ptrdiff_t const found = index != nullptr ? segments.FindByIndex(*index) : -1;
    TPoint<double> onArc = found < 0 ? onThis : TPoint<double>();
    TPoint<double> onSegment = found < 0 ? onOther : TPoint<double>();
    double const result = found < 0 ? segments.FindByLoop(onArc, onSegment) : segments.Measure(found, onArc, onSegment);
    onThis = onArc;
    onOther = onSegment;
    return ZeroIfFine(result);
}

double CPathObjectArc::SquareDistanceToPath(CPathObjectArc const & other, TPoint<double> & onThis,
                                            TPoint<double> & onOther) const
{
    if (!IsValid() || !other.IsValid())
    {
        return DBL_MAX;
    }
    TPoint<double> out1;
    TPoint<double> out2;
    double const result = SquareDistanceArcArc(SweepOf(*this), SweepOf(other), out1, out2);
    onThis = out1;
    onOther = out2;
    return result;
}

double CPathObjectArc::SquareDistanceToPath(CPathObjectBase const & other, TPoint<double> & onThis,
                                            TPoint<double> & onOther) const
{
    return other.SquareDistanceToPath(*this, onOther, onThis);
}

} // namespace geometry
