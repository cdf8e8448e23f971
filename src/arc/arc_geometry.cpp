// What follows from the ends, the centre and the radius of an arc.
//
// The mid-point is where the perpendicular bisector of the chord meets the circle within the sweep; where it does not
// (the radius is too small for the chord), the centre is corrected first. The rectangle takes an extreme of the circle
// for each axis direction that the sweep passes.
#include "arc/arc_geometry.h"

#include <algorithm>
#include <cfloat>

namespace geometry
{

namespace
{

constexpr double HalfPi = 1.5707963267948966;
constexpr double Pi = 3.141592653589793;
constexpr double ThreeHalvesPi = 4.71238898038469;
constexpr double TwoPi = 6.283185307179586;

/// Direction of `p` seen from `c`, in radians from -pi/2 to 3 pi/2.
double CalculateAngle(TPoint<double> const & p, TPoint<double> const & c)
{
    if (c.x == p.x)
    {
        return p.y > c.y ? HalfPi : ThreeHalvesPi;
    }
    if (c.y == p.y)
    {
        return c.x > p.x ? Pi : 0.0;
    }
    double const t = std::atan((p.y - c.y) / (p.x - c.x));
    return p.x > c.x ? t : t + Pi;
}

/// A sweep from direction (ax, ay) to direction (bx, by) passes the positive x axis.
bool PassesAxis(double ay, double by, double ax, double bx)
{
    if (ay <= 0.0)
    {
        return by >= 0.0 || bx <= ax;
    }
    return by > 0.0 && bx > ax;
}

/// The point opposite `A`, or `fallback` where the line through the centre doesn't cut the circle.
TPoint<double> FindOppositePoint(Sweep const & sweep, TPoint<double> const & fallback)
{
    CrossingPoints h;
    IntersectCircleLine(sweep.C, CalculateArcRadius(sweep.A, sweep.B, sweep.C), sweep.C, sweep.A, h);
    if (h.count < 2)
    {
        return fallback;
    }
    return SquareDistance(h.points[0], sweep.A) > sweep.r * sweep.r ? h.points[0] : h.points[1];
}

/// A second point on the perpendicular bisector of the chord, whose middle is `m`: `r` away along the longer axis.
TPoint<double> FindPointOnBisector(Sweep const & sweep, TPoint<double> const & m)
{
    double const dx = sweep.B.x - sweep.A.x;
    double const dy = sweep.B.y - sweep.A.y;
    double const r = sweep.r;
    if (IsAlmostEqual(dx, 0.0, FineUlpLimit))
    {
        return TPoint<double>(m.x + r, m.y);
    }
    if (IsAlmostEqual(dy, 0.0, FineUlpLimit))
    {
        return TPoint<double>(m.x, m.y + r);
    }
    double const s = -(dx / dy);
    if (std::fabs(dy) > std::fabs(dx))
    {
        return TPoint<double>(m.x + r, m.y + r * s);
    }
    return TPoint<double>(m.x + r / s, m.y + r);
}

/// Where the line through `m` and `t` meets the circle (c, r) within the sweep. False: nowhere.
bool FindOnBisector(Sweep const & sweep, TPoint<double> const & c, double r, TPoint<double> const & m,
                    TPoint<double> const & t, TPoint<double> & midPoint)
{
    CrossingPoints h;
    IntersectCircleLine(c, r, m, t, h);
    for (unsigned int i = 0; i < h.count; ++i)
    {
        if (h.count == 1 || IsPointInSweep(sweep, h.points[i]))
        {
            midPoint = h.points[i];
            return true;
        }
    }
    return false;
}

} // namespace

double CalculateArcRadius(TPoint<double> const & p, TPoint<double> const & q, TPoint<double> const & c)
{
    return (DistanceBetween(c, q) + DistanceBetween(c, p)) * 0.5;
}

TPoint<double> CalculateArcMidPoint(Sweep const & sweep)
{
    TPoint<double> const & a = sweep.A;
    TPoint<double> const & b = sweep.B;
    TPoint<double> const m = Midpoint(a, b);
    if (sweep.IsClosed() && !(a == sweep.C))
    {
        return FindOppositePoint(sweep, m);
    }
    if (m == sweep.C) // half circle: A turned by a quarter turn
    {
        return TPoint<double>(sweep.C.x - (a.y - sweep.C.y), (a.x - sweep.C.x) + sweep.C.y);
    }
    TPoint<double> const t = FindPointOnBisector(sweep, m);
    TPoint<double> centre = sweep.C;
    double radius = sweep.r;
    TPoint<double> midPoint;
    if (FindOnBisector(sweep, centre, radius, m, t, midPoint))
    {
        return midPoint;
    }
    CorrectArcCentre(a, b, centre, radius);
    if (FindOnBisector(sweep, centre, radius, m, t, midPoint))
    {
        return midPoint;
    }
    if (IsPointInSweep(a, b, centre, m))
    {
        return m;
    }
    return TPoint<double>(centre.x - (m.x - centre.x), centre.y - (m.y - centre.y));
}

CBoundingRect<double> CalculateArcBoundingRect(Sweep const & sweep)
{
    return CalculateArcBoundingRect(sweep, CalculateArcRadius(sweep.A, sweep.B, sweep.C));
}

CBoundingRect<double> CalculateArcBoundingRect(Sweep const & sweep, double r)
{
    TPoint<double> const & a = sweep.A;
    TPoint<double> const & b = sweep.B;
    TPoint<double> const & c = sweep.C;
    if (IsExactlyEqual(a, b))
    {
        return CBoundingRect<double>(TPoint<double>(c.x - r, c.y - r), TPoint<double>(c.x + r, c.y + r));
    }
    TPoint<double> const u(a.x - c.x, a.y - c.y);
    TPoint<double> const v(b.x - c.x, b.y - c.y);
    double right = std::max(a.x, b.x);
    double top = std::max(a.y, b.y);
    double left = std::min(a.x, b.x);
    double bottom = std::min(a.y, b.y);
    // Each extreme is the rightmost one of the circle turned by a multiple of a quarter turn.
    if (PassesAxis(u.y, v.y, u.x, v.x))
    {
        right = std::max(right, c.x + r);
    }
    if (PassesAxis(-u.x, -v.x, u.y, v.y))
    {
        top = std::max(top, c.y + r);
    }
    if (PassesAxis(-u.y, -v.y, -u.x, -v.x))
    {
        left = std::min(left, c.x - r);
    }
    if (PassesAxis(u.x, v.x, -u.y, -v.y))
    {
        bottom = std::min(bottom, c.y - r);
    }
    return CBoundingRect<double>(TPoint<double>(left, bottom), TPoint<double>(right, top));
}

double CalculateSweepLength(Sweep const & sweep)
{
    double const a = CalculateAngle(sweep.A, sweep.C);
    double b = CalculateAngle(sweep.B, sweep.C);
    if (a >= b)
    {
        b += TwoPi;
    }
    return (b - a) * sweep.r;
}

bool IsOrderDoubtful(TPoint<double> const & p, TPoint<double> const & q, TPoint<double> const & centre, double radius)
{
    constexpr double doubtfulPart = 1000.0 * DBL_EPSILON; // of the largest coordinate
    double const distance = doubtfulPart * (std::max(std::fabs(centre.x), std::fabs(centre.y)) + radius);
    return SquareDistance(p, q) < distance * distance && !(p == q);
}

void CorrectArcCentre(TPoint<double> const & a, TPoint<double> const & b, TPoint<double> & c, double & r)
{
    if (a == b)
    {
        return;
    }
    CrossingPoints h;
    ECirclePair const pair = IntersectCircleCircle(a, r, b, r, h);
    if (h.count == 1)
    {
        c = h.points[0];
        return;
    }
    if (h.count == 2)
    {
        double const d0 = SquareDistance(h.points[0], c);
        double const d1 = SquareDistance(h.points[1], c);
        if (!IsAlmostEqual(d0, d1))
        {
            c = d1 > d0 ? h.points[0] : h.points[1];
            return;
        }
    }
    else if (pair == ECirclePair::eSame)
    {
        return;
    }
    c = Midpoint(a, b);
    r = CalculateArcRadius(a, b, c);
}

} // namespace geometry
