// The vertical probe ray against circles and sweeps: the circle is solved at the ray's x, the points below the ray's
// start and those outside the sweep drop out, and an end of the sweep at the ray's start is caught last.
#include "arc/probe_kernels.h"

namespace geometry
{

namespace
{

/// The ray runs through an extreme of the circle.
ELineMeeting TouchAt(TPoint<double> const & extreme, TPoint<double> const & p, CrossingPoints & h)
{
    if (!IsGreaterOrAlmostEqual(extreme.y, p.y))
    {
        return ELineMeeting::eNone;
    }
    h.Add(extreme);
    return ELineMeeting::eTouch;
}

} // namespace

ELineMeeting IntersectCircleProbeRay(TPoint<double> const & c, double r, TPoint<double> const & p, CrossingPoints & h)
{
    h.Clear();
    double const x = p.x;
    double const right = c.x + r;
    double const left = c.x - r;
    if (!IsGreaterOrAlmostEqual(right, x) || !IsGreaterOrAlmostEqual(x, left))
    {
        return ELineMeeting::eNone;
    }
    if (IsAlmostEqual(x, right))
    {
        return TouchAt(TPoint<double>(right, c.y), p, h);
    }
    if (IsAlmostEqual(x, left))
    {
        return TouchAt(TPoint<double>(left, c.y), p, h);
    }
    double const run = x - c.x;
    double const d = SquareRootFromZero(r * r - run * run);
    double const upper = c.y + d;
    if (!IsGreaterOrAlmostEqual(upper, p.y))
    {
        return ELineMeeting::eNone;
    }
    h.Add(x, upper);
    double const lower = c.y - d;
    if (IsGreaterOrAlmostEqual(lower, p.y))
    {
        h.Add(x, lower);
    }
    return ELineMeeting::eFound;
}

ELineMeeting IntersectArcProbeRay(Sweep const & sweep, TPoint<double> const & p, CrossingPoints & h)
{
    bool const startIsNearer = std::fabs(sweep.B.x - p.x) > std::fabs(sweep.A.x - p.x);
    double const r = DistanceBetween(sweep.C, startIsNearer ? sweep.A : sweep.B);
    ELineMeeting const meeting = IntersectCircleProbeRay(sweep.C, r, p, h);
    if (meeting != ELineMeeting::eNone)
    {
        FilterProbePointsBySweep(sweep, h);
    }
    if (h.count == 0)
    {
        if (sweep.A == p)
        {
            h.Add(sweep.A);
        }
        if (!sweep.IsClosed() && sweep.B == p)
        {
            h.Add(sweep.B);
        }
    }
    if (h.count == 0)
    {
        return ELineMeeting::eNone;
    }
    return meeting == ELineMeeting::eTouch ? ELineMeeting::eTouch : ELineMeeting::eFound;
}

} // namespace geometry
