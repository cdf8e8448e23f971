// Square distances of circles and sweeps to points, segments and each other.
//
// The whole circle is asked first: its closest point lies on a line through the centre. If that point is outside the
// sweep, the closest pair has an end of the sweep or of the segment in it, and the few candidates are compared.
#include "arc/distance_kernels.h"

#include <algorithm>
#include <cfloat>

namespace geometry
{

namespace
{

double Square(double value)
{
    return value * value;
}

/// Of the two points of a circle on a line, the one nearer to `x`; the second on a tie.
TPoint<double> const & NearerPoint(CrossingPoints const & h, TPoint<double> const & x)
{
    return SquareDistance(x, h.points[1]) > SquareDistance(x, h.points[0]) ? h.points[0] : h.points[1];
}

/// The one farther from `x`; the second on a tie.
TPoint<double> const & FartherPoint(CrossingPoints const & h, TPoint<double> const & x)
{
    return SquareDistance(x, h.points[0]) > SquareDistance(x, h.points[1]) ? h.points[0] : h.points[1];
}

/// The two points of a circle on the line through `l0` and `l1`; false if there are not two.
bool CutCircleTwice(TPoint<double> const & c, double r, TPoint<double> const & l0, TPoint<double> const & l1,
                    CrossingPoints & h)
{
    return IntersectCircleLine(c, r, l0, l1, h) == ELineMeeting::eFound && h.count == 2;
}

/// The one point of a circle on the segment `p`, `q`; false (and `out` as it was) if there is not exactly one.
bool CutCircleOnce(TPoint<double> const & c, double r, TPoint<double> const & p, TPoint<double> const & q,
                   TPoint<double> & out)
{
    CrossingPoints h;
    if (IntersectCircleSegment(c, r, p, q, h) != ELineMeeting::eFound || h.count != 1)
    {
        return false;
    }
    out = h.points[0];
    return true;
}

bool IsInClosedOrOpenSweep(Sweep const & sweep, TPoint<double> const & p)
{
    return sweep.IsClosed() || IsPointInSweep(sweep, p);
}

/// A circle against a point at `centre` that is a circle of radius zero.
double SquareDistanceCircleToCentre(TPoint<double> const & c, double r, TPoint<double> const & centre, double d,
                                    TPoint<double> & onCircle)
{
    CrossingPoints h;
    if (!CutCircleOnce(c, r, centre, c, onCircle) && CutCircleTwice(c, r, centre, c, h))
    {
        onCircle = NearerPoint(h, centre);
    }
    return Square(d - r);
}

/// The nearest pair of two circles, one inside the other, on the line of the centres `l0`, `l1`. About one common
/// centre all directions are as near: the second point of both circles then, lest rounding takes points on opposite
/// sides.
void FindNestedPair(TPoint<double> const & innerCentre, double innerRadius, TPoint<double> const & outerCentre,
                    double outerRadius, TPoint<double> const & l0, TPoint<double> const & l1, TPoint<double> & onInner,
                    TPoint<double> & onOuter)
{
    bool const isTie = IsExactlyEqual(l0, l1);
    CrossingPoints h;
    if (CutCircleTwice(innerCentre, innerRadius, l0, l1, h))
    {
        onInner = isTie ? h.points[1] : FartherPoint(h, outerCentre);
    }
    if (CutCircleTwice(outerCentre, outerRadius, l0, l1, h))
    {
        onOuter = isTie ? h.points[1] : NearerPoint(h, innerCentre);
    }
}

/// The smaller of two distances of ends `a`, `b` of an open sweep to a whole circle; `b` wins a tie.
double SquareDistanceCircleToEnds(TPoint<double> const & c, double r, Sweep const & ends, TPoint<double> & onCircle,
                                  TPoint<double> & onEnds)
{
    TPoint<double> pA = onCircle;
    TPoint<double> pB = onCircle;
    double const dA = SquareDistanceCirclePoint(c, r, ends.A, pA);
    double const dB = SquareDistanceCirclePoint(c, r, ends.B, pB);
    bool const takeB = dB <= dA;
    onCircle = takeB ? pB : pA;
    onEnds = takeB ? ends.B : ends.A;
    return takeB ? dB : dA;
}

/// The best of the four ends, each against the other sweep; of equal ones the earlier.
double SquareDistanceOfEnds(Sweep const & s1, Sweep const & s2, TPoint<double> & out1, TPoint<double> & out2)
{
    TPoint<double> const onFirst = out1;
    TPoint<double> const onSecond = out2;
    TPoint<double> closest = onFirst;
    double best = SquareDistanceArcPoint(s1, s2.A, closest);
    out1 = closest;
    out2 = s2.A;

    closest = onFirst;
    double distance = SquareDistanceArcPoint(s1, s2.B, closest);
    if (distance < best)
    {
        best = distance;
        out1 = closest;
        out2 = s2.B;
    }
    for (TPoint<double> const* end : {&s1.A, &s1.B})
    {
        closest = onSecond;
        distance = SquareDistanceArcPoint(s2, *end, closest);
        if (distance < best)
        {
            best = distance;
            out1 = *end;
            out2 = closest;
        }
    }
    return best;
}

/// The pairs of a sweep and a segment that dips into its circle without crossing the sweep.
struct NearestCandidate
{
    TPoint<double> const & p;
    TPoint<double> const & q;
    TPoint<double> & onArc;
    TPoint<double> & onSegment;
    double best = DBL_MAX;

    void Try(TPoint<double> const & h)
    {
        TPoint<double> t;
        double const e = ClosestPointOnSegment(p, q, h, t);
        if (e < best)
        {
            best = e;
            onArc = h;
            onSegment = t;
        }
    }

    /// The points of the sweep on the line through the centre and an end of the segment.
    void TryRadius(Sweep const & sweep, TPoint<double> const & segmentEnd)
    {
        CrossingPoints h;
        if (!CutCircleTwice(sweep.C, sweep.r, segmentEnd, sweep.C, h))
        {
            return;
        }
        for (TPoint<double> const & point : h.points)
        {
            if (IsPointInSweep(sweep, point))
            {
                Try(point);
            }
        }
    }
};

} // namespace

double SquareDistanceCirclePoint(TPoint<double> const & c, double r, TPoint<double> const & x, TPoint<double> & closest)
{
    double const d2 = SquareDistance(c, x);
    double const r2 = r * r;
    if (IsAlmostEqual(d2, r2))
    {
        closest = x;
        return 0.0;
    }
    CrossingPoints h;
    if (d2 > r2)
    {
        if (IsAlmostEqual(r, 0.0))
        {
            closest = c;
            return d2;
        }
        if (IntersectCircleSegment(c, r, c, x, h) != ELineMeeting::eNone && h.count == 1)
        {
            closest = h.points[0];
            return Square(std::sqrt(d2) - r);
        }
        closest = x;
        return 0.0;
    }
    if (CutCircleTwice(c, r, c, x, h))
    {
        closest = NearerPoint(h, x);
        return SquareDistance(closest, x);
    }
    return d2;
}

double SquareDistanceArcPoint(Sweep const & sweep, TPoint<double> const & x, TPoint<double> & closest)
{
    double const d2 = SquareDistance(sweep.C, x);
    double const r2 = sweep.r * sweep.r;
    closest = sweep.C;
    if (sweep.r == 0.0)
    {
        return d2;
    }
    if (IsAlmostEqual(d2, 0.0, FineUlpLimit))
    {
        closest = sweep.A;
        return r2;
    }
    double const dA = SquareDistance(x, sweep.A);
    double const dB = SquareDistance(x, sweep.B);
    double const dc = SquareDistanceCirclePoint(sweep.C, sweep.r, x, closest);
    if (IsAlmostEqual(dc, 0.0) || !(r2 > d2))
    {
        if (IsInClosedOrOpenSweep(sweep, closest))
        {
            return dc;
        }
        closest = dB > dA ? sweep.A : sweep.B;
        return dB > dA ? dA : dB;
    }
    // Strictly inside: either point of the circle on the line through the centre, or an end.
    double best = DBL_MAX;
    auto const attempt = [&](TPoint<double> const & point, double distance)
    {
        if (distance < best)
        {
            best = distance;
            closest = point;
        }
    };
    CrossingPoints h;
    if (CutCircleTwice(sweep.C, sweep.r, sweep.C, x, h))
    {
        for (TPoint<double> const & point : h.points)
        {
            if (IsInClosedOrOpenSweep(sweep, point))
            {
                attempt(point, SquareDistance(point, x));
            }
        }
    }
    attempt(sweep.A, dA);
    attempt(sweep.B, dB);
    return best;
}

double SquareDistanceCircleSegment(TPoint<double> const & c, double r, TPoint<double> const & p,
                                   TPoint<double> const & q, TPoint<double> & onCircle, TPoint<double> & onSegment)
{
    double const d = ClosestPointOnSegment(p, q, c, onSegment);
    if (r == 0.0)
    {
        onCircle = c;
        return d;
    }
    if (!(r * r > d))
    {
        return SquareDistanceCirclePoint(c, r, onSegment, onCircle);
    }
    CrossingPoints h;
    if (IntersectCircleSegment(c, r, p, q, h) != ELineMeeting::eNone && h.count > 0)
    {
        onCircle = h.points[0];
        onSegment = h.points[0];
        return 0.0;
    }
    // Wholly inside: the end farther from the centre is the nearer one to the circle.
    double const dP = SquareDistance(c, p);
    double const dQ = SquareDistance(c, q);
    onSegment = dP > dQ ? p : q;
    if (!CutCircleTwice(c, r, c, onSegment, h))
    {
        return d;
    }
    onCircle = NearerPoint(h, onSegment);
    return Square(r - std::sqrt(std::max(dP, dQ)));
}

double SquareDistanceArcSegment(Sweep const & sweep, TPoint<double> const & p, TPoint<double> const & q,
                                TPoint<double> & onArc, TPoint<double> & onSegment)
{
    if (IsAlmostEqual(p.x, q.x, FineUlpLimit) && IsAlmostEqual(p.y, q.y, FineUlpLimit))
    {
        onSegment = p;
        return SquareDistanceArcPoint(sweep, p, onArc);
    }
    double const d = ClosestPointOnSegment(p, q, sweep.C, onSegment);
    onArc = sweep.C;
    if (sweep.r == 0.0)
    {
        return d;
    }
    if (!(sweep.r * sweep.r > d))
    {
        double const dc = SquareDistanceCirclePoint(sweep.C, sweep.r, onSegment, onArc);
        if (IsPointInSweep(sweep, onArc))
        {
            return dc;
        }
        TPoint<double> tA;
        TPoint<double> tB;
        double const dA = ClosestPointOnSegment(p, q, sweep.A, tA);
        double const dB = ClosestPointOnSegment(p, q, sweep.B, tB);
        onArc = dB > dA ? sweep.A : sweep.B;
        onSegment = dB > dA ? tA : tB;
        return dB > dA ? dA : dB;
    }
    CrossingPoints h;
    if (IntersectArcSegment(sweep, p, q, h) != ELineMeeting::eNone)
    {
        onArc = h.points[0];
        onSegment = h.points[0];
        return 0.0;
    }
    NearestCandidate nearest{p, q, onArc, onSegment};
    nearest.TryRadius(sweep, p);
    nearest.TryRadius(sweep, q);
    nearest.Try(sweep.A);
    nearest.Try(sweep.B);
    return nearest.best;
}

double SquareDistanceCircleCircle(TPoint<double> const & c1, double r1, TPoint<double> const & c2, double r2,
                                  TPoint<double> & out1, TPoint<double> & out2)
{
    double const d2 = SquareDistance(c1, c2);
    double const d = std::sqrt(d2);
    out1 = c1;
    out2 = c2;
    bool const firstIsPoint = IsAlmostEqual(r1, 0.0, FineUlpLimit);
    bool const secondIsPoint = IsAlmostEqual(r2, 0.0, FineUlpLimit);
    if (firstIsPoint && secondIsPoint)
    {
        return d2;
    }
    if (firstIsPoint)
    {
        return SquareDistanceCircleToCentre(c2, r2, c1, d, out2);
    }
    if (secondIsPoint)
    {
        return SquareDistanceCircleToCentre(c1, r1, c2, d, out1);
    }
    CrossingPoints h;
    switch (IntersectCircleCircle(c1, r1, c2, r2, h))
    {
    case ECirclePair::eMeet:
        out1 = h.points[0];
        out2 = h.points[0];
        return 0.0;
    case ECirclePair::eSame:
        out1 = TPoint<double>(c1.x - r1, c1.y);
        out2 = out1;
        return 0.0;
    case ECirclePair::eApart:
        CutCircleOnce(c1, r1, c1, c2, out1);
        CutCircleOnce(c2, r2, c1, c2, out2);
        return Square(d - r1 - r2);
    case ECirclePair::eFirstInside:
        FindNestedPair(c1, r1, c2, r2, c1, c2, out1, out2);
        return Square(r2 - (r1 + d));
    case ECirclePair::eSecondInside:
        FindNestedPair(c2, r2, c1, r1, c1, c2, out2, out1);
        return Square(r1 - (r2 + d));
    }
    return d2;
}

double SquareDistanceArcArc(Sweep const & s1, Sweep const & s2, TPoint<double> & out1, TPoint<double> & out2)
{
    if (IsAlmostEqual(s1.r, 0.0, FineUlpLimit))
    {
        out1 = s1.A;
        return SquareDistanceArcPoint(s2, s1.C, out2);
    }
    if (IsAlmostEqual(s2.r, 0.0, FineUlpLimit))
    {
        out2 = s2.A;
        return SquareDistanceArcPoint(s1, s2.C, out1);
    }
    auto const isFinelyClosed = [](Sweep const & s)
    { return IsAlmostEqual(s.A.x, s.B.x, FineUlpLimit) && IsAlmostEqual(s.A.y, s.B.y, FineUlpLimit); };
    bool const closed1 = isFinelyClosed(s1);
    bool const closed2 = isFinelyClosed(s2);
    double const d = SquareDistanceCircleCircle(s1.C, s1.r, s2.C, s2.r, out1, out2);
    if ((closed1 || IsPointInSweep(s1, out1)) && (closed2 || IsPointInSweep(s2, out2)))
    {
        return d; // the nearest pair of the circles lies on the arcs
    }
    CrossingPoints h;
    if (IntersectArcArc(s1, s2, h) != EArcMeeting::eNone && h.count > 0)
    {
        out1 = h.points[0];
        out2 = h.points[0];
        return 0.0;
    }
    if (closed1)
    {
        return SquareDistanceCircleToEnds(s1.C, s1.r, s2, out1, out2);
    }
    if (closed2)
    {
        return SquareDistanceCircleToEnds(s2.C, s2.r, s1, out2, out1);
    }
    return SquareDistanceOfEnds(s1, s2, out1, out2);
}

} // namespace geometry
