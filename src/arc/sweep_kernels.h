/// \file
/// Arcs as counter-clockwise sweeps: what lies in their angular range, and where they meet lines and each other.
#pragma once

#include "arc/circle_kernels.h"

namespace geometry
{

class CPathObjectArc;

/// The part of a circle that is passed when going counter-clockwise from `A` to `B` about `C`. It has no direction of
/// travel: an arc and its reverse have the same sweep.
struct Sweep
{
    TPoint<double> A;
    TPoint<double> B;
    TPoint<double> C;
    double r = 0.0; ///< the stored radius; it need not fit `A` and `B` exactly

    /// `A` and `B` agree within tolerance: the sweep is the whole circle.
    bool IsClosed() const { return A == B; }
};

/// What two sweeps have in common.
enum class EArcMeeting : int
{
    eFound = 0,     ///< one or two points
    eNone = 1,      ///< no point
    eSameTrack = 2, ///< both cover the same track; one or two points
    eTouch = 3      ///< one point at which they only touch, an end of neither (unless that one is closed)
};

/// The sweep of a valid arc (derives its direction on first use).
Sweep SweepOf(CPathObjectArc const & arc);

/// `p` lies in the angular range; its distance from `C` plays no part. Both ends lie in it within tolerance. A closed
/// sweep accepts the direction of `A` only: callers that mean the whole circle ask `IsClosed` first.
inline bool IsPointInSweep(TPoint<double> const & a, TPoint<double> const & b, TPoint<double> const & c,
                           TPoint<double> const & p)
{
    TPoint<double> const u(a.x - c.x, a.y - c.y);
    TPoint<double> const v(b.x - c.x, b.y - c.y);
    TPoint<double> const w(p.x - c.x, p.y - c.y);
    bool const leftOfA = w.y * u.x - w.x * u.y >= 0.0;
    bool const rightOfB = w.y * v.x - w.x * v.y <= 0.0;
    bool const isAtMostHalfTurn = u.x * v.y - u.y * v.x >= 0.0;
    return (isAtMostHalfTurn ? leftOfA && rightOfB : leftOfA || rightOfB) || p == a || p == b;
}
inline bool IsPointInSweep(Sweep const & sweep, TPoint<double> const & p)
{
    return IsPointInSweep(sweep.A, sweep.B, sweep.C, p);
}

/// The same question for a point of the circle, answered by half planes and the order of x alone. Meant for points on
/// a vertical line that meets the sweep's range of x; left or right of that range it may say true too often.
bool IsPointInSweepByHalves(Sweep const & sweep, TPoint<double> const & p);

/// The same for the upper or the lower point of the circle at `x`, its ends apart from both.
bool IsAbscissaInSweep(TPoint<double> const & a, TPoint<double> const & b, TPoint<double> const & c, double x,
                       bool isUpper);

/// Removes the points outside the sweep by `IsPointInSweep`; a closed sweep keeps all.
void FilterPointsBySweep(Sweep const & sweep, CrossingPoints & h);
/// The same by `IsPointInSweepByHalves`.
void FilterProbePointsBySweep(Sweep const & sweep, CrossingPoints & h);

/// Sweep with segment. An end of the sweep that lies on an end of the segment is found even if rounding hides it.
ELineMeeting IntersectArcSegment(Sweep const & sweep, TPoint<double> const & p, TPoint<double> const & q,
                                 CrossingPoints & out);
/// The same with the infinite line through `l0` and `l1`.
ELineMeeting IntersectArcLine(Sweep const & sweep, TPoint<double> const & l0, TPoint<double> const & l1,
                              CrossingPoints & out);

/// Sweep with sweep. On one circle: the ends of what they share. On two circles whose crossings both fall out of a
/// sweep: the middle of two ends that meet near a crossing.
EArcMeeting IntersectArcArc(Sweep const & s1, Sweep const & s2, CrossingPoints & out);

} // namespace geometry
