/// \file
/// What follows from the ends, the centre and the radius of an arc: mid-point, rectangle, length, a consistent centre.
#pragma once

#include <vector>

#include <geometry/arc/path_object_arc.h>

#include "arc/sweep_kernels.h"

namespace geometry
{

/// What needs the points of a valid arc themselves.
enum EArcSteadiness : std::int32_t
{
    eSteadinessUnknown = 0,
    eRectIsCurrent = 1, ///< and no more is known
    eUnsteady = 2,
    eSteady = 3
};

struct CArcInternals
{
    /// Start, end, centre, mid-point.
    static TPoint<double> const* GetPoints(CPathObjectArc const & arc) { return arc.m_Points.data(); }
    /// `IsValid`, of an arc of whatever class.
    static bool HasPoints(CPathObjectArc const & arc) { return arc.m_Points.size() == 4; }
    /// What is known of it: an `EArcSteadiness`.
    static TLazyValue<std::int32_t> & SteadinessOf(CPathObjectArc const & arc) { return arc.m_Steadiness; }
};

/// The mean of the distances of `c` to `p` and `q`, in coordinate units.
double CalculateArcRadius(TPoint<double> const & p, TPoint<double> const & q, TPoint<double> const & c);

/// A point of the sweep between its ends. Of a closed sweep the point opposite `A`. Where no circle of the given centre
/// and radius reaches between the ends, the centre is corrected first (on a copy).
TPoint<double> CalculateArcMidPoint(Sweep const & sweep);

/// Rectangle of the sweep. The radius is worked out from the ends; `r` plays no part.
CBoundingRect<double> CalculateArcBoundingRect(Sweep const & sweep);
/// The same with this radius, which is known.
CBoundingRect<double> CalculateArcBoundingRect(Sweep const & sweep, double r);

/// Length of the sweep in coordinate units. With `A` equal to `B`: the whole circle.
double CalculateSweepLength(Sweep const & sweep);

/// True only if `SquareDistanceToPoint` answers more than the square of `distance`, which must be 0.03 at least; false
/// where that isn't clear at once.
bool IsClearlyFarther(CPathObjectArc const & arc, TPoint<double> const & point, double distance);

/// The upward ray from the point crosses the arc an odd number of times: what `IntersectWithVerticalProbeLine` comes to
/// where nothing is to be decided by tolerance. The arc must be steady, the point clearly farther from it than 0.1 and
/// not near the abscissas that need care.
bool IsClearlyCrossed(CPathObjectArc const & arc, TPoint<double> const & point);

/// The sweep as a chain of chords from `A` to `B` on a fixed grid of 64 directions, so that neighbouring arcs of one
/// circle share their vertices. With `A` exactly equal to `B`: 65 points that begin and end at the rightmost one.
std::vector<TPoint<double>> BuildArcPoints(Sweep const & sweep);

/// Where the first chord of an arc ends and the last one begins.
struct TInnerChordPoints
{
    std::size_t chords = 0;
    TPoint<double> second;
    TPoint<double> lastButOne;
};

/// As in the points of the arc, which aren't kept for it. The arc must be valid and not degenerate.
TInnerChordPoints FindInnerChordPoints(CPathObjectArc const & arc);

/// Two points on a circle that are so near each other that rounding decides which comes first: an arc between them may
/// pass for nothing or for the whole circle. Points that are the same count as clear.
bool IsOrderDoubtful(TPoint<double> const & p, TPoint<double> const & q, TPoint<double> const & centre, double radius);

/// Makes the centre fit both ends and the radius with the smallest move. A chord longer than the diameter becomes a
/// half circle: the centre its middle, the radius half of it. Equal ends: nothing changes.
void CorrectArcCentre(TPoint<double> const & a, TPoint<double> const & b, TPoint<double> & c, double & r);

} // namespace geometry
