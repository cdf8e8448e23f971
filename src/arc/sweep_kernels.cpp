// Counter-clockwise sweeps: their angular range, and where they meet segments, lines and each other.
//
// The circles are intersected first (circle_kernels), then what lies outside a sweep is filtered out, and where nothing
// is left the ends of the sweeps get a second chance, since an end that lies on the partner must not be lost to
// rounding. Two sweeps of one circle have no crossings: they share the ends of their common part.
#include "arc/sweep_kernels.h"

namespace geometry
{

namespace
{

/// Largest sum of the square distances (square coordinate units, absolute) from a lost crossing to the two ends that
/// may stand in for it.
constexpr double EndsMeetSquareLimit = 1.0;

template <typename InSweep>
void FilterPoints(Sweep const & sweep, CrossingPoints & h, InSweep const & inSweep)
{
    if (sweep.IsClosed())
    {
        return;
    }
    if (h.count > 1 && !inSweep(sweep, h.points[1]))
    {
        --h.count;
    }
    if (h.count != 0 && !inSweep(sweep, h.points[0]))
    {
        h.DropFirst();
    }
}

/// What is left of the circle's points on the sweep, or else its ends where they stand on `l0` or `l1`.
ELineMeeting FinishLineMeeting(ELineMeeting circleMeeting, Sweep const & sweep, TPoint<double> const & l0,
                               TPoint<double> const & l1, CrossingPoints & out)
{
    if (circleMeeting != ELineMeeting::eNone)
    {
        FilterPointsBySweep(sweep, out);
    }
    if (out.count == 0)
    {
        if (sweep.A == l0 || sweep.A == l1)
        {
            out.Add(sweep.A);
        }
        if (!sweep.IsClosed() && (sweep.B == l1 || sweep.B == l0))
        {
            out.Add(sweep.B);
        }
    }
    if (out.count == 0)
    {
        return ELineMeeting::eNone;
    }
    return circleMeeting == ELineMeeting::eTouch ? ELineMeeting::eTouch : ELineMeeting::eFound;
}

bool IsNearBothEnds(TPoint<double> const & x, TPoint<double> const & u, TPoint<double> const & v)
{
    return SquareDistance(x, u) + SquareDistance(x, v) <= EndsMeetSquareLimit;
}

/// Two sweeps may meet end to end where the crossing of their circles is a little off: the middle of the two ends
/// stands in for the crossing `p0` or `p1` that both sweeps lost.
void FindMeetingEnds(Sweep const & s1, Sweep const & s2, TPoint<double> const & p0, TPoint<double> const & p1,
                     CrossingPoints & out)
{
    TPoint<double> const m1 = Midpoint(s1.A, s2.B);
    TPoint<double> const m2 = Midpoint(s2.A, s1.B);
    out.Clear();
    if (IsNearBothEnds(p0, s1.A, s2.B))
    {
        out.Add(m1);
        if (IsNearBothEnds(p1, s2.A, s1.B))
        {
            out.Add(m2);
        }
    }
    else if (IsNearBothEnds(p0, s2.A, s1.B))
    {
        out.Add(m2);
        if (IsNearBothEnds(p1, s1.A, s2.B))
        {
            out.Add(m1);
        }
    }
    else if (IsNearBothEnds(p1, s1.A, s2.B))
    {
        out.Add(m1);
    }
    else if (IsNearBothEnds(p1, s2.A, s1.B))
    {
        out.Add(m2);
    }
}

/// `point` is an end of the sweep; a closed sweep has none.
bool IsEndOf(Sweep const & sweep, TPoint<double> const & point)
{
    return !sweep.IsClosed() && (point == sweep.A || point == sweep.B);
}

/// Two circles that meet; `out` holds their points.
EArcMeeting IntersectOnDifferentCircles(Sweep const & s1, Sweep const & s2, CrossingPoints & out)
{
    CrossingPoints const crossings = out;
    bool const touching = crossings.count == 1 && !IsEndOf(s1, out.points[0]) && !IsEndOf(s2, out.points[0]);
    FilterPointsBySweep(s1, out);
    FilterPointsBySweep(s2, out);
    if (out.count > 0)
    {
        return touching ? EArcMeeting::eTouch : EArcMeeting::eFound;
    }
    if (crossings.count != 2)
    {
        return EArcMeeting::eNone;
    }
    FindMeetingEnds(s1, s2, crossings.points[0], crossings.points[1], out);
    FilterPointsBySweep(s1, out);
    FilterPointsBySweep(s2, out);
    return out.count == 0 ? EArcMeeting::eNone : EArcMeeting::eFound;
}

/// Two sweeps of one circle that share the end `common`: the other end of the common part is the one of the two
/// remaining ends that lies in the partner.
EArcMeeting ShareOneEnd(TPoint<double> const & common, Sweep const & s1, TPoint<double> const & end1, Sweep const & s2,
                        TPoint<double> const & end2, CrossingPoints & out)
{
    out.Add(common);
    if (IsPointInSweep(s1, end2))
    {
        out.Add(end2);
    }
    else if (IsPointInSweep(s2, end1))
    {
        out.Add(end1);
    }
    return EArcMeeting::eFound;
}

/// Two open sweeps of one circle without a common start or end: those of the four ends that lie in the partner, at
/// most two, none twice.
EArcMeeting CollectSharedEnds(Sweep const & s1, Sweep const & s2, CrossingPoints & out)
{
    auto const isNew = [&out](TPoint<double> const & point)
    { return !(out.count > 0 && out.points[0] == point) && !(out.count > 1 && out.points[1] == point); };
    if (IsPointInSweep(s1, s2.A))
    {
        out.Add(s2.A);
    }
    if (IsPointInSweep(s1, s2.B) && isNew(s2.B))
    {
        out.Add(s2.B);
    }
    if (out.count < 2 && IsPointInSweep(s2, s1.A) && isNew(s1.A))
    {
        out.Add(s1.A);
    }
    if (out.count < 2 && IsPointInSweep(s2, s1.B) && isNew(s1.B))
    {
        out.Add(s1.B);
    }
    return out.count == 0 ? EArcMeeting::eNone : EArcMeeting::eFound;
}

EArcMeeting IntersectOnSameCircle(Sweep const & s1, Sweep const & s2, CrossingPoints & out)
{
    if (s1.IsClosed() && s2.IsClosed())
    {
        out.Add(s1.A);
        return EArcMeeting::eSameTrack;
    }
    if (s1.IsClosed() || s2.IsClosed())
    {
        Sweep const & open = s1.IsClosed() ? s2 : s1;
        out.Add(open.A);
        out.Add(open.B);
        return EArcMeeting::eFound;
    }
    if (s1.A == s2.A && s1.B == s2.B)
    {
        out.Add(s1.A);
        out.Add(s1.B);
        return EArcMeeting::eSameTrack;
    }
    if (s1.A == s2.A)
    {
        return ShareOneEnd(s1.A, s1, s1.B, s2, s2.B, out);
    }
    if (s1.B == s2.B)
    {
        return ShareOneEnd(s1.B, s1, s1.A, s2, s2.A, out);
    }
    return CollectSharedEnds(s1, s2, out);
}

} // namespace

// Counter-clockwise, x falls in the upper half and grows in the lower half, so that within one half the order along
// the sweep is the order of x.
bool IsPointInSweepByHalves(Sweep const & sweep, TPoint<double> const & p)
{
    TPoint<double> const & a = sweep.A;
    TPoint<double> const & b = sweep.B;
    return p == a || p == b || IsAbscissaInSweep(a, b, sweep.C, p.x, !(p.y < sweep.C.y));
}

bool IsAbscissaInSweep(TPoint<double> const & a, TPoint<double> const & b, TPoint<double> const & c, double x,
                       bool isUpper)
{
    bool const aUpper = !(a.y < c.y);
    bool const bUpper = !(b.y < c.y);
    if (aUpper)
    {
        if (isUpper)
        {
            return x <= a.x || (bUpper && b.x <= x);
        }
        return bUpper ? a.x <= b.x : x <= b.x;
    }
    if (!isUpper)
    {
        return a.x <= x || (!bUpper && x <= b.x);
    }
    return bUpper ? b.x <= x : b.x <= a.x;
}

void FilterPointsBySweep(Sweep const & sweep, CrossingPoints & h)
{
    FilterPoints(sweep, h, [](Sweep const & s, TPoint<double> const & p) { return IsPointInSweep(s, p); });
}

void FilterProbePointsBySweep(Sweep const & sweep, CrossingPoints & h)
{
    FilterPoints(sweep, h, [](Sweep const & s, TPoint<double> const & p) { return IsPointInSweepByHalves(s, p); });
}

ELineMeeting IntersectArcSegment(Sweep const & sweep, TPoint<double> const & p, TPoint<double> const & q,
                                 CrossingPoints & out)
{
    return FinishLineMeeting(IntersectCircleSegment(sweep.C, sweep.r, p, q, out), sweep, p, q, out);
}

ELineMeeting IntersectArcLine(Sweep const & sweep, TPoint<double> const & l0, TPoint<double> const & l1,
                              CrossingPoints & out)
{
    return FinishLineMeeting(IntersectCircleLine(sweep.C, sweep.r, l0, l1, out), sweep, l0, l1, out);
}

EArcMeeting IntersectArcArc(Sweep const & s1, Sweep const & s2, CrossingPoints & out)
{
    switch (IntersectCircleCircle(s1.C, s1.r, s2.C, s2.r, out))
    {
    case ECirclePair::eMeet:
        return IntersectOnDifferentCircles(s1, s2, out);
    case ECirclePair::eSame:
        return IntersectOnSameCircle(s1, s2, out);
    case ECirclePair::eApart:
    case ECirclePair::eFirstInside:
    case ECirclePair::eSecondInside:
        break;
    }
    return EArcMeeting::eNone;
}

} // namespace geometry
