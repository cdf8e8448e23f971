// Circles against circles, lines and segments.
//
// Circles: apart, inside and touching are told from the distance of the centres before anything is solved; two
// crossings are a foot point on the line of the centres and an offset across it. Lines: horizontal and vertical ones
// are solved on their own with tolerance at the extremes of the circle, a general line by its slope, along its longer
// axis.
#include "arc/circle_kernels.h"

#include <algorithm>

namespace geometry
{

namespace
{

/// The point of the inner circle where it touches the outer one from inside: its centre moved away from the outer
/// centre by its radius.
TPoint<double> FindInnerTouch(TPoint<double> const & c1, double r1, TPoint<double> const & c2, double r2)
{
    bool const firstIsInner = r2 > r1;
    TPoint<double> inner = firstIsInner ? c1 : c2;
    TPoint<double> outer = firstIsInner ? c2 : c1;
    ExtendSegment(inner, outer, firstIsInner ? r1 : r2, 0.0);
    return inner;
}

/// Horizontal line at height `y`: right point first.
ELineMeeting IntersectCircleHorizontal(TPoint<double> const & c, double r, double y, CrossingPoints & out)
{
    double const top = c.y + r;
    double const bottom = c.y - r;
    if (!IsGreaterOrAlmostEqual(top, y) || !IsGreaterOrAlmostEqual(y, bottom))
    {
        return ELineMeeting::eNone;
    }
    if (IsAlmostEqual(y, top))
    {
        out.Add(c.x, top);
        return ELineMeeting::eTouch;
    }
    if (IsAlmostEqual(y, bottom))
    {
        out.Add(c.x, bottom);
        return ELineMeeting::eTouch;
    }
    double const rise = y - c.y;
    double const h = SquareRootFromZero(r * r - rise * rise);
    out.Add(c.x + h, y);
    out.Add(c.x - h, y);
    return ELineMeeting::eFound;
}

/// Vertical line at `x`: upper point first.
ELineMeeting IntersectCircleVertical(TPoint<double> const & c, double r, double x, CrossingPoints & out)
{
    double const right = c.x + r;
    double const left = c.x - r;
    if (!IsGreaterOrAlmostEqual(right, x) || !IsGreaterOrAlmostEqual(x, left))
    {
        return ELineMeeting::eNone;
    }
    if (IsAlmostEqual(x, right))
    {
        out.Add(right, c.y);
        return ELineMeeting::eTouch;
    }
    if (IsAlmostEqual(x, left))
    {
        out.Add(left, c.y);
        return ELineMeeting::eTouch;
    }
    double const run = x - c.x;
    double const h = SquareRootFromZero(r * r - run * run);
    out.Add(x, c.y + h);
    out.Add(x, c.y - h);
    return ELineMeeting::eFound;
}

/// y = m * x + b put into the circle's equation and solved for y (steep lines) or for x.
ELineMeeting IntersectCircleSlope(TPoint<double> const & c, double r, TPoint<double> const & l0,
                                  TPoint<double> const & l1, CrossingPoints & out)
{
    double const m = (l1.y - l0.y) / (l1.x - l0.x);
    double const b = l0.y - l0.x * m;
    bool const steep = !(std::fabs(l1.x - l0.x) > std::fabs(l1.y - l0.y));
    double const e = (c.x * m - c.y) + b;
    double const w = m * m + 1.0;
    double const discriminant = r * r * w - e * e;
    if (!(discriminant >= 0.0)) // also for NaN
    {
        return ELineMeeting::eNone;
    }
    double const s = std::sqrt(discriminant);
    auto const addSteep = [&](double y) { out.Add((y - b) / m, y); };
    auto const addFlat = [&](double x) { out.Add(x, x * m + b); };
    if (steep)
    {
        addSteep((m * m * c.y + c.x * m + b - s * m) / w);
    }
    else
    {
        addFlat(((c.y * m + c.x) - b * m - s) / w);
    }
    if (!(discriminant > 0.0))
    {
        return ELineMeeting::eTouch;
    }
    if (steep)
    {
        addSteep((m * m * c.y + c.x * m + b + s * m) / w);
    }
    else
    {
        addFlat(((c.y * m + c.x) - b * m + s) / w);
    }
    return ELineMeeting::eFound;
}

/// The axis on which a point of the line through `p` and `q` is compared with the segment's ends: the longer one.
bool IsRangeOnX(TPoint<double> const & p, TPoint<double> const & q)
{
    if (IsAlmostEqual(p.y, q.y))
    {
        return true;
    }
    if (IsAlmostEqual(p.x, q.x))
    {
        return false;
    }
    double const width = std::max(p.x, q.x) - std::min(p.x, q.x);
    double const height = std::max(p.y, q.y) - std::min(p.y, q.y);
    return !(width <= height);
}

bool IsBetween(double value, double a, double b)
{
    return IsGreaterOrAlmostEqual(value, std::min(a, b)) && IsLessOrAlmostEqual(value, std::max(a, b));
}

} // namespace

void ExtendSegment(TPoint<double> & a, TPoint<double> & b, double da, double db)
{
    if (a.x == b.x)
    {
        bool const aAbove = a.y > b.y;
        a.y = aAbove ? a.y + da : a.y - da;
        b.y = aAbove ? b.y - db : b.y + db;
        return;
    }
    if (a.y == b.y)
    {
        bool const aRight = a.x > b.x;
        a.x = aRight ? a.x + da : a.x - da;
        b.x = aRight ? b.x - db : b.x + db;
        return;
    }
    // From the middle outward: half the length and the amount, split over the axes by the slope dx / dy.
    double const h = DistanceBetween(a, b) / 2.0;
    TPoint<double> const m = Midpoint(a, b);
    double const k = (a.x - b.x) / (a.y - b.y);
    double const w = std::sqrt(k * k + 1.0);
    double const sx = b.x > a.x ? 1.0 : -1.0;
    double const sy = b.y > a.y ? 1.0 : -1.0;
    double const ea = (da + h) / w;
    double const eb = (db + h) / w;
    a = TPoint<double>(m.x - ea * sx * std::fabs(k), m.y - ea * sy);
    b = TPoint<double>(m.x + eb * sx * std::fabs(k), m.y + eb * sy);
}

ECirclePair IntersectCircleCircle(TPoint<double> const & c1, double r1, TPoint<double> const & c2, double r2,
                                  CrossingPoints & out)
{
    out.Clear();
    if (c1 == c2 && IsAlmostEqual(r1, r2))
    {
        return ECirclePair::eSame;
    }
    double const dx = c1.x - c2.x;
    double const dy = c1.y - c2.y;
    double const d2 = dy * dy + dx * dx;
    double const d = std::sqrt(d2);
    if (d > r1 + r2)
    {
        return ECirclePair::eApart;
    }
    double const radiusGap = std::fabs(r1 - r2);
    if (IsAlmostEqual(d, radiusGap))
    {
        out.Add(FindInnerTouch(c1, r1, c2, r2));
        return ECirclePair::eMeet;
    }
    if (radiusGap > d)
    {
        return r2 <= r1 ? ECirclePair::eSecondInside : ECirclePair::eFirstInside;
    }
    // t / d is the distance from c1 along the line of the centres at which both circles have the same offset h.
    double const t = (r1 * r1 - r2 * r2 + d2) * 0.5;
    double const along = t / d;
    double const h = SquareRootFromZero(r1 * r1 - along * along);
    TPoint<double> const foot(c1.x - t * dx / d2, c1.y - t * dy / d2);
    TPoint<double> const offset(h * dy / d, -(h * dx / d));
    out.Add(offset.x + foot.x, offset.y + foot.y);
    if (!(offset.x == 0.0 && offset.y == 0.0))
    {
        out.Add(foot.x - offset.x, foot.y - offset.y);
    }
    return ECirclePair::eMeet;
}

ELineMeeting IntersectCircleLine(TPoint<double> const & c, double r, TPoint<double> const & l0,
                                 TPoint<double> const & l1, CrossingPoints & out)
{
    out.Clear();
    if (IsAlmostEqual(l0.y, l1.y))
    {
        return IntersectCircleHorizontal(c, r, l0.y, out);
    }
    if (IsAlmostEqual(l0.x, l1.x))
    {
        return IntersectCircleVertical(c, r, l0.x, out);
    }
    return IntersectCircleSlope(c, r, l0, l1, out);
}

ELineMeeting IntersectCircleSegment(TPoint<double> const & c, double r, TPoint<double> const & p,
                                    TPoint<double> const & q, CrossingPoints & out)
{
    CrossingPoints onLine;
    ELineMeeting const meeting = IntersectCircleLine(c, r, p, q, onLine);
    bool const onX = IsRangeOnX(p, q);
    out.Clear();
    for (unsigned int i = 0; i < onLine.count; ++i)
    {
        TPoint<double> const & h = onLine.points[i];
        if (onX ? IsBetween(h.x, p.x, q.x) : IsBetween(h.y, p.y, q.y))
        {
            out.Add(h);
        }
    }
    return out.count > 0 ? meeting : ELineMeeting::eNone;
}

} // namespace geometry
