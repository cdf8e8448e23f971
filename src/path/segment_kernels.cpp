// Closest points, crossings and distances of straight segments. The order of the arithmetic decides last bits, and
// with them the ties of everything above: keep it.
#include "path/segment_kernels.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace geometry
{

double ClosestPointOnSegment(TPoint<double> const & s0, TPoint<double> const & s1, TPoint<double> const & p,
                             TPoint<double> & c)
{
    if (IsExactlyEqual(s0, s1))
    {
        c = s0;
        return SquareDistance(c, p);
    }
    double const dx = s1.x - s0.x;
    double const dy = s1.y - s0.y;
    double const t = (dy * (p.y - s0.y) + dx * (p.x - s0.x)) / (dy * dy + dx * dx);
    if (0.0 <= t && t <= 1.0)
    {
        c = TPoint<double>(s0.x + t * dx, s0.y + t * dy);
    }
    else
    {
        c = SquareDistance(s0, p) < SquareDistance(s1, p) ? s0 : s1;
    }
    return SquareDistance(c, p);
}

bool IsPointOnSegment(TPoint<double> const & s0, TPoint<double> const & s1, TPoint<double> const & p)
{
    if (IsExactlyEqual(p, s0) || IsExactlyEqual(p, s1))
    {
        return true;
    }
    TPoint<double> c;
    ClosestPointOnSegment(s0, s1, p, c);
    return c == p;
}

namespace
{

/// The point lies in the rectangle of the segment but for the rounding of the coordinates that it was worked out from,
/// the largest of which are `reachX` and `reachY`.
bool IsInRectOf(TPoint<double> const & s0, TPoint<double> const & s1, TPoint<double> const & p, double reachX,
                double reachY)
{
    constexpr double roundings = 100.0 * DBL_EPSILON;
    double const roomX = roundings * reachX;
    double const roomY = roundings * reachY;
    return p.x <= std::max(s0.x, s1.x) + roomX && p.x >= std::min(s0.x, s1.x) - roomX &&
           p.y <= std::max(s0.y, s1.y) + roomY && p.y >= std::min(s0.y, s1.y) - roomY;
}

/// The end points of one segment that lie on the other, in a fixed order; step two of `IntersectSegments`.
bool IntersectByEndPoints(TPoint<double> const & a0, TPoint<double> const & a1, TPoint<double> const & b0,
                          TPoint<double> const & b1, bool includeEndA, bool includeEndB, TPoint<double> & first,
                          TPoint<double> & second)
{
    bool found = false;
    if (IsPointOnSegment(a0, a1, b0) && (includeEndA || !(b0 == a1)))
    {
        first = b0;
        found = true;
    }
    if (includeEndB && IsPointOnSegment(a0, a1, b1) && (includeEndA || !(b1 == a1)))
    {
        if (found)
        {
            second = b1;
            return true;
        }
        first = b1;
        found = true;
    }
    if (IsPointOnSegment(b0, b1, a0) && (includeEndB || !(a0 == b1)))
    {
        if (!found)
        {
            first = a0;
            found = true;
        }
        else if (!(a0 == first))
        {
            second = a0;
            return true;
        }
    }
    if (includeEndA && IsPointOnSegment(b0, b1, a1) && (includeEndB || !(a1 == b1)))
    {
        if (found)
        {
            second = a1;
            return true;
        }
        first = a1;
        found = true;
    }
    if (found)
    {
        second = first;
    }
    return found;
}

} // namespace

bool IntersectSegments(TPoint<double> const & a0, TPoint<double> const & a1, TPoint<double> const & b0,
                       TPoint<double> const & b1, bool includeEndA, bool includeEndB, TPoint<double> & first,
                       TPoint<double> & second)
{
    if (IsClearlyLess(std::max(a0.x, a1.x), std::min(b0.x, b1.x)) ||
        IsClearlyGreater(std::min(a0.x, a1.x), std::max(b0.x, b1.x)) ||
        IsClearlyLess(std::max(a0.y, a1.y), std::min(b0.y, b1.y)) ||
        IsClearlyGreater(std::min(a0.y, a1.y), std::max(b0.y, b1.y)))
    {
        return false;
    }
    double const dax = a1.x - a0.x;
    double const day = a1.y - a0.y;
    double const dbx = b1.x - b0.x;
    double const dby = b1.y - b0.y;
    double const den = dax * dby - dbx * day;
    if (den != 0.0)
    {
        double const s = ((b0.x - a0.x) * dby - (b0.y - a0.y) * dbx) / den;
        double const t = ((b0.x - a0.x) * day - (b0.y - a0.y) * dax) / den;
        if (0.0 <= s && s <= 1.0 && 0.0 <= t && t <= 1.0)
        {
            TPoint<double> const p(a0.x + s * dax, a0.y + s * day);
            // where the determinant is but rounding, p may lie anywhere along one of the two
            double const reachX = std::max({std::fabs(a0.x), std::fabs(a1.x), std::fabs(b0.x), std::fabs(b1.x)});
            double const reachY = std::max({std::fabs(a0.y), std::fabs(a1.y), std::fabs(b0.y), std::fabs(b1.y)});
            bool const isOnBoth = IsInRectOf(a0, a1, p, reachX, reachY) && IsInRectOf(b0, b1, p, reachX, reachY);
            if (isOnBoth && (includeEndA || !(p == a1)) && (includeEndB || !(p == b1)))
            {
                first = p;
                second = p;
                return true;
            }
        }
    }
    // also reached by segments that cross just outside their ends: an end within tolerance of the other one counts
    return IntersectByEndPoints(a0, a1, b0, b1, includeEndA, includeEndB, first, second);
}

double SquareDistanceSegments(TPoint<double> const & p0, TPoint<double> const & p1, TPoint<double> const & q0,
                              TPoint<double> const & q1, TPoint<double> & onP, TPoint<double> & onQ)
{
    // Closest points p0 + sc * u and q0 + tc * v; numerators and denominators apart, clamped to the unit square. The
    // clamps run one after the other: where rounding makes the determinant negative, both of a pair can apply.
    double const ux = p1.x - p0.x, uy = p1.y - p0.y;
    double const vx = q1.x - q0.x, vy = q1.y - q0.y;
    double const wx = p0.x - q0.x, wy = p0.y - q0.y;
    double const a = ux * ux + uy * uy;
    double const b = ux * vx + uy * vy;
    double const c = vx * vx + vy * vy;
    double const d = ux * wx + uy * wy;
    double const e = vx * wx + vy * wy;
    double const determinant = a * c - b * b;
    double sN, sD = determinant, tN, tD = determinant;
    if (IsAlmostEqual(determinant, 0.0))
    {
        sN = 0.0;
        sD = 1.0;
        tN = e;
        tD = c;
    }
    else
    {
        sN = b * e - c * d;
        tN = a * e - b * d;
        if (sN < 0.0)
        {
            sN = 0.0;
            tN = e;
            tD = c;
        }
        if (sN > sD)
        {
            sN = sD;
            tN = e + b;
            tD = c;
        }
    }
    if (tN < 0.0)
    {
        tN = 0.0;
        if (-d < 0.0)
        {
            sN = 0.0;
        }
        else if (-d > a)
        {
            sN = sD;
        }
        else
        {
            sN = -d;
            sD = a;
        }
    }
    if (tN > tD)
    {
        tN = tD;
        double const r = b - d;
        if (r < 0.0)
        {
            sN = 0.0;
        }
        else if (r > a)
        {
            sN = sD;
        }
        else
        {
            sN = r;
            sD = a;
        }
    }
    double const sc = IsAlmostEqual(sN, 0.0) ? 0.0 : sN / sD;
    double const tc = IsAlmostEqual(tN, 0.0) ? 0.0 : tN / tD;
    onP = TPoint<double>((sc * ux + q0.x) + wx, (sc * uy + q0.y) + wy);
    onQ = TPoint<double>(tc * vx + q0.x, tc * vy + q0.y);
    double const gapX = (sc * ux + wx) - tc * vx;
    double const gapY = (sc * uy + wy) - tc * vy;
    return std::fabs(gapX * gapX + gapY * gapY);
}

} // namespace geometry
