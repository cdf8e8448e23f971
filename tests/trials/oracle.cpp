// An arc is taken in pieces of the left and the right half of its circle, so that each rises or falls all along.
#include "oracle.h"

#include <algorithm>
#include <cmath>

namespace trials
{

namespace
{

constexpr Real pi = 3.14159265358979323846264338327950288L;

void ReadRing(CPolygon const & ring, TFace & face)
{
    for (geometry::CPathObjectBase const* object : ring.GetOutline())
    {
        if (auto const* arc = dynamic_cast<geometry::CPathObjectArc const*>(object))
        {
            auto a = arc->GetStartPoint();
            auto b = arc->GetEndPoint();
            auto const c = arc->GetCentre();
            double const radius = (std::hypot(a.x - c.x, a.y - c.y) + std::hypot(b.x - c.x, b.y - c.y)) / 2;
            if (!arc->IsCounterClockwise()) std::swap(a, b);
            if (arc->IsFullCircle()) b = a;
            face.edges.push_back({{a.x, a.y}, {b.x, b.y}, {c.x, c.y}, radius});
            continue;
        }
        for (auto p = object->GetPointsBegin(); p != object->GetPointsEnd() && p + 1 != object->GetPointsEnd(); ++p)
            face.edges.push_back({{p[0].x, p[0].y}, {p[1].x, p[1].y}, {0, 0}, 0});
    }
}

Real AngleOf(TSpot const & p, TSpot const & c)
{
    return std::atan2(Real(p.y) - c.y, Real(p.x) - c.x);
}

/// From `a` on, more than 0 and at most a whole turn.
Real SweepOf(TEdge const & e)
{
    if (e.a.x == e.b.x && e.a.y == e.b.y) return 2 * pi;
    Real const sweep = AngleOf(e.b, e.centre) - AngleOf(e.a, e.centre);
    return sweep > 0 ? sweep : sweep + 2 * pi;
}

/// Crossings with the ray to the right of a piece of a half circle between two heights.
bool CrossesHalf(TEdge const & e, TSpot const & p, Real low, Real high, bool isRight)
{
    if ((low <= p.y) == (high <= p.y)) return false;
    Real const dx = Real(p.x) - e.centre.x;
    Real const dy = Real(p.y) - e.centre.y;
    bool const isWithin = dx * dx + dy * dy < Real(e.radius) * e.radius;
    return isRight ? dx < 0 || isWithin : dx < 0 && !isWithin;
}

bool CrossesArc(TEdge const & e, TSpot const & p)
{
    if (p.y > e.centre.y + e.radius * 1.001 + 1 || p.y < e.centre.y - e.radius * 1.001 - 1) return false;
    Real const start = AngleOf(e.a, e.centre);
    Real const end = start + SweepOf(e);
    bool isOdd = false;
    Real y = e.a.y;
    Real angle = start;
    bool const isClosed = e.a.x == e.b.x && e.a.y == e.b.y;
    // extremes at -pi/2, pi/2, 3 pi/2, ...
    for (int k = static_cast<int>(std::floor((start - pi / 2) / pi)) + 1;; ++k)
    {
        Real const extreme = pi / 2 + k * pi;
        bool const isLast = extreme >= end;
        Real const top = k % 2 == 0 ? Real(e.centre.y) + e.radius : Real(e.centre.y) - e.radius;
        Real const next = isLast ? Real(isClosed ? e.a.y : e.b.y) : top;
        Real const middle = (angle + (isLast ? end : extreme)) / 2;
        isOdd ^= CrossesHalf(e, p, y, next, std::cos(middle) > 0);
        if (isLast) return isOdd;
        y = next;
        angle = extreme;
    }
}

} // namespace

TFace ReadFace(CPolygon const & polygon)
{
    TFace face{{}, 0, 0, 0, 0};
    ReadRing(polygon, face);
    for (CPolygon const* hole : polygon.GetHoles()) ReadRing(*hole, face);
    auto const & r = polygon.GetBoundingRect();
    face.minX = r.minX, face.minY = r.minY, face.maxX = r.maxX, face.maxY = r.maxY;
    return face;
}

bool IsInside(TFace const & face, TSpot const & p)
{
    bool isOdd = false;
    for (TEdge const & e : face.edges)
    {
        if (e.radius > 0)
        {
            isOdd ^= CrossesArc(e, p);
        }
        else if ((e.a.y <= p.y) != (e.b.y <= p.y))
        {
            Real const side = (Real(e.b.x) - e.a.x) * (Real(p.y) - e.a.y) - (Real(p.x) - e.a.x) * (Real(e.b.y) - e.a.y);
            isOdd ^= (e.b.y > e.a.y) == (side > 0);
        }
    }
    return isOdd;
}

double DistanceTo(TFace const & face, TSpot const & p)
{
    double nearest = 1e300;
    for (TEdge const & e : face.edges)
    {
        double const toA = std::hypot(p.x - e.a.x, p.y - e.a.y);
        double const toB = std::hypot(p.x - e.b.x, p.y - e.b.y);
        nearest = std::min({nearest, toA, toB});
        if (e.radius > 0)
        {
            Real turn = AngleOf(p, e.centre) - AngleOf(e.a, e.centre);
            turn = turn < 0 ? turn + 2 * pi : turn;
            double const off = std::fabs(std::hypot(p.x - e.centre.x, p.y - e.centre.y) - e.radius);
            if (turn <= SweepOf(e)) nearest = std::min(nearest, off);
            continue;
        }
        double const dx = e.b.x - e.a.x, dy = e.b.y - e.a.y, square = dx * dx + dy * dy;
        double const t = square > 0 ? ((p.x - e.a.x) * dx + (p.y - e.a.y) * dy) / square : 0;
        if (t > 0 && t < 1)
            nearest = std::min(nearest, std::fabs(dx * (p.y - e.a.y) - dy * (p.x - e.a.x)) / std::sqrt(square));
    }
    return nearest;
}

TSpot MiddleOf(TEdge const & e)
{
    if (e.radius == 0) return {e.a.x + 0.43 * (e.b.x - e.a.x), e.a.y + 0.43 * (e.b.y - e.a.y)};
    Real const angle = AngleOf(e.a, e.centre) + SweepOf(e) * 0.43L;
    return {double(e.centre.x + e.radius * std::cos(angle)), double(e.centre.y + e.radius * std::sin(angle))};
}

TSpot NormalOf(TEdge const & e)
{
    TSpot const m = MiddleOf(e);
    TSpot const n = e.radius > 0 ? TSpot{m.x - e.centre.x, m.y - e.centre.y} : TSpot{e.a.y - e.b.y, e.b.x - e.a.x};
    double const length = std::hypot(n.x, n.y);
    return length > 0 ? TSpot{n.x / length, n.y / length} : TSpot{1, 0};
}

} // namespace trials
