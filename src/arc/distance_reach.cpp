#include "arc/distance_reach.h"

#include <algorithm>
#include <cmath>

#include <geometry/arc/path_object_arc.h>

#include "arc/sweep_kernels.h"
#include "numeric/nearest_pair.h"

namespace geometry
{

namespace
{

/// Two arcs that lost the crossing of their circles meet in the middle of two ends that are so near to it, each.
constexpr double EndsMeetReach = 1.0;
constexpr double ClearChord = 1e-12; // of the largest coordinate: ends that are no nearer are never taken for one

/// The points of the kernels are those of the stored radius, about the angles of the ends, and the ends themselves. The
/// rectangle of a sweep of more than half a turn, or one that could pass for a whole one, is that of the circle.
TDistanceReach ReachOfArc(CPathObjectArc const & arc)
{
    Sweep const sweep = SweepOf(arc);
    TPoint<double> const & c = sweep.C;
    TPoint<double> const u(sweep.A.x - c.x, sweep.A.y - c.y);
    TPoint<double> const v(sweep.B.x - c.x, sweep.B.y - c.y);
    double const toA = DistanceBetween(sweep.A, c);
    double const toB = DistanceBetween(sweep.B, c);
    double const size = std::max({sweep.r, toA, toB});
    TDistanceReach reach;
    reach.rect = arc.GetBoundingRect();
    reach.radius = sweep.r;
    reach.largest = std::max({GetLargestCoordinate(reach.rect), std::fabs(c.x), std::fabs(c.y), size});
    if (!(u.x * v.y - u.y * v.x >= 0.0) || DistanceBetween(sweep.A, sweep.B) <= ClearChord * reach.largest)
    {
        reach.rect.Include(CBoundingRect<double>(c.x - size, c.y - size, c.x + size, c.y + size));
    }
    reach.rect.Inflate(std::fabs(sweep.r - toA) + std::fabs(sweep.r - toB));
    reach.metReach = std::min(EndsMeetReach, 2.0 * size);
    bool const isCertain =
        IsIndexable(sweep.A) && IsIndexable(sweep.B) && IsIndexable(c) && reach.IsCertainWithin(reach.largest);
    return isCertain ? reach : TDistanceReach();
}

} // namespace

TDistanceReach DistanceReachOf(CPathObjectBase const & object)
{
    if (!object.IsValid())
    {
        return TDistanceReach();
    }
    if (!object.CanAppendVertex())
    {
        return ReachOfArc(static_cast<CPathObjectArc const &>(object));
    }
    if (!std::all_of(object.GetPointsBegin(), object.GetPointsEnd(), IsIndexable))
    {
        return TDistanceReach();
    }
    TDistanceReach reach;
    reach.rect = object.GetBoundingRect();
    reach.largest = GetLargestCoordinate(reach.rect);
    return reach;
}

} // namespace geometry
