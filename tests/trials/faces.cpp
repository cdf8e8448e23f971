// Path objects are read through what their headers promise: a polyline by its vertices, an arc by start, end, centre
// and direction. Neighbouring objects may differ by a few units in the last place where they meet; an edge ends where
// the next one starts, so that rings are closed without gaps. An arc whose ends agree within the tolerance of points is
// either a whole circle or nearly nothing: the point in the middle of its track tells.
#include "faces.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include <geometry/arc/path_object_arc.h>

namespace trials
{

namespace
{

constexpr double Pi = 3.14159265358979323846;

double Cross(TSpot const & a, TSpot const & b)
{
    return a.x * b.y - a.y * b.x;
}

bool IsOnePoint(geometry::TPoint<double> const & a, geometry::TPoint<double> const & b)
{
    double const limit = 100.0 * DBL_EPSILON;
    return std::abs(a.x - b.x) <= limit * std::max(std::abs(a.x), std::abs(b.x)) &&
           std::abs(a.y - b.y) <= limit * std::max(std::abs(a.y), std::abs(b.y));
}

double SweepOf(geometry::CPathObjectArc const & arc, TEdge const & edge)
{
    long double const start = std::atan2(static_cast<long double>(edge.from.y) - edge.centre.y,
                                         static_cast<long double>(edge.from.x) - edge.centre.x);
    long double const end = std::atan2(static_cast<long double>(edge.to.y) - edge.centre.y,
                                       static_cast<long double>(edge.to.x) - edge.centre.x);
    long double const round = 2.0L * std::acos(-1.0L);
    long double sweep = end - start;
    if (IsOnePoint(arc.GetStartPoint(), arc.GetEndPoint()))
    {
        geometry::TPoint<double> const middle = arc.GetInbetweenPoint();
        TSpot const off = {middle.x - arc.GetStartPoint().x, middle.y - arc.GetStartPoint().y};
        if (Length(off) > edge.radius) return static_cast<double>(round);
        return static_cast<double>(std::abs(sweep) < 1.0L ? std::abs(sweep) : round - std::abs(sweep));
    }
    return static_cast<double>(sweep <= 0.0L ? sweep + round : sweep);
}

void ReadArc(geometry::CPathObjectArc const & arc, TSpot const & origin, TEdge & edge)
{
    auto const local = [&](geometry::TPoint<double> const & p) { return TSpot{p.x, p.y} - origin; };
    edge.isArc = true;
    edge.centre = local(arc.GetCentre());
    edge.from = local(arc.GetStartPoint());
    edge.to = local(arc.GetEndPoint());
    if (!arc.IsCounterClockwise())
    {
        edge.sense = -1.0;
        std::swap(edge.from, edge.to);
    }
    edge.radius = 0.5 * (Length(edge.from - edge.centre) + Length(edge.to - edge.centre));
    edge.start = std::atan2(edge.from.y - edge.centre.y, edge.from.x - edge.centre.x);
    edge.sweep = SweepOf(arc, edge);
}

void SetRectangle(TEdge & edge)
{
    edge.low = {std::min(edge.a.x, edge.b.x), std::min(edge.a.y, edge.b.y)};
    edge.high = {std::max(edge.a.x, edge.b.x), std::max(edge.a.y, edge.b.y)};
    if (!edge.isArc) return;
    for (int quarter = -2; quarter <= 6; ++quarter)
    {
        double const angle = quarter * 0.5 * Pi;
        if (angle < edge.start - 1e-9 || angle > edge.start + edge.sweep + 1e-9) continue;
        double const x = edge.centre.x + edge.radius * std::cos(angle);
        double const y = edge.centre.y + edge.radius * std::sin(angle);
        edge.low = {std::min(edge.low.x, x), std::min(edge.low.y, y)};
        edge.high = {std::max(edge.high.x, x), std::max(edge.high.y, y)};
    }
}

TRing ReadObjects(std::vector<geometry::CPathObjectBase const*> const & objects, TSpot const & origin)
{
    TRing ring;
    for (geometry::CPathObjectBase const* object : objects)
    {
        auto const* arc = dynamic_cast<geometry::CPathObjectArc const*>(object);
        if (arc != nullptr)
        {
            ring.emplace_back();
            ring.back().a = TSpot{arc->GetStartPoint().x, arc->GetStartPoint().y} - origin;
            ReadArc(*arc, origin, ring.back());
            continue;
        }
        for (auto p = object->GetPointsBegin(); p + 1 < object->GetPointsEnd(); ++p)
        {
            ring.emplace_back();
            ring.back().a = TSpot{p->x, p->y} - origin;
        }
    }
    for (std::size_t i = 0; i < ring.size(); ++i)
    {
        ring[i].b = ring[(i + 1) % ring.size()].a;
        SetRectangle(ring[i]);
    }
    return ring;
}

TRing ReadRing(geometry::CPolygon const & polygon, TSpot const & origin)
{
    return ReadObjects({polygon.GetOutline().begin(), polygon.GetOutline().end()}, origin);
}

TFaces NoFaces(TSpot const & origin)
{
    TFaces faces;
    faces.origin = origin;
    faces.low = {DBL_MAX, DBL_MAX};
    faces.high = {-DBL_MAX, -DBL_MAX};
    faces.smallestSide = DBL_MAX;
    return faces;
}

void AddToSummary(TFaces & faces, TRing const & ring, bool isOutline)
{
    TSpot low = {DBL_MAX, DBL_MAX};
    TSpot high = {-DBL_MAX, -DBL_MAX};
    for (TEdge const & edge : ring)
    {
        low = {std::min(low.x, edge.low.x), std::min(low.y, edge.low.y)};
        high = {std::max(high.x, edge.high.x), std::max(high.y, edge.high.y)};
        faces.hasArcs = faces.hasArcs || edge.isArc;
        faces.perimeter += edge.isArc ? edge.radius * edge.sweep : Length(edge.b - edge.a);
        ++faces.edgeCount;
    }
    if (ring.empty() || !isOutline) return;
    faces.smallestSide = std::min({faces.smallestSide, high.x - low.x, high.y - low.y});
    faces.low = {std::min(low.x, faces.low.x), std::min(low.y, faces.low.y)};
    faces.high = {std::max(high.x, faces.high.x), std::max(high.y, faces.high.y)};
    TSpot const & o = faces.origin;
    faces.farthest = std::max(
        {faces.farthest, std::abs(low.x + o.x), std::abs(low.y + o.y), std::abs(high.x + o.x), std::abs(high.y + o.y)});
}

/// An arc ends at both ends of its sweep; beside them, its ends are nearest.
double DistanceToArc(TSpot const & p, TEdge const & edge)
{
    TSpot const v = p - edge.centre;
    TSpot const f = edge.from - edge.centre;
    TSpot const t = edge.to - edge.centre;
    bool const isBehind = f.x * v.x + f.y * v.y < 0.0 && t.x * v.x + t.y * v.y < 0.0;
    bool const isBeside = edge.sweep <= Pi ? Cross(f, v) < 0.0 || Cross(v, t) < 0.0 || (isBehind && edge.sweep < 1.5)
                                           : Cross(t, v) > 0.0 && Cross(v, f) > 0.0;
    if (!isBeside || edge.sweep > 6.28) return std::abs(Length(v) - edge.radius);
    return std::min({Length(p - edge.from), Length(p - edge.to), Length(p - edge.a), Length(p - edge.b)});
}

} // namespace

double Length(TSpot const & a)
{
    return std::sqrt(a.x * a.x + a.y * a.y);
}

TSpot OriginNear(double x, double y)
{
    double const step = 0x1p20;
    return {step * std::round(x / step), step * std::round(y / step)};
}

TFaces ReadFaces(Polygons const & polygons, TSpot const & origin)
{
    TFaces faces = NoFaces(origin);
    for (geometry::CPolygon const* polygon : polygons)
    {
        TFace face{ReadRing(*polygon, origin)};
        for (geometry::CPolygon const* hole : polygon->GetHoles())
        {
            face.push_back(ReadRing(*hole, origin));
        }
        for (TRing const & ring : face)
        {
            AddToSummary(faces, ring, &ring == &face.front());
        }
        faces.faces.push_back(std::move(face));
    }
    return faces;
}

TFaces ReadPath(geometry::CPathObjectBase const & path, TSpot const & origin)
{
    TFaces faces = NoFaces(origin);
    TRing ring = ReadObjects({&path}, origin);
    ring.back().b = TSpot{path.GetEndPoint().x, path.GetEndPoint().y} - origin;
    SetRectangle(ring.back());
    AddToSummary(faces, ring, true);
    faces.faces.push_back({ring});
    return faces;
}

double Distance(TSpot const & p, TEdge const & edge)
{
    if (edge.isArc) return DistanceToArc(p, edge);
    TSpot const d = edge.b - edge.a;
    TSpot const v = p - edge.a;
    double const square = d.x * d.x + d.y * d.y;
    double const along = v.x * d.x + v.y * d.y;
    if (!(along > 0.0) || square == 0.0) return Length(v);
    if (along >= square) return Length(p - edge.b);
    return std::abs(Cross(d, v)) / std::sqrt(square);
}

double Distance(TSpot const & p, TFaces const & faces)
{
    double nearest = DBL_MAX;
    for (TFace const & face : faces.faces)
    {
        for (TRing const & ring : face)
        {
            for (TEdge const & edge : ring)
            {
                bool const isBeyond = p.x < edge.low.x - nearest || p.x > edge.high.x + nearest ||
                                      p.y < edge.low.y - nearest || p.y > edge.high.y + nearest;
                if (!isBeyond) nearest = std::min(nearest, Distance(p, edge));
            }
        }
    }
    return nearest;
}

bool IsNear(TSpot const & p, TFaces const & faces, double limit)
{
    for (TFace const & face : faces.faces)
    {
        for (TRing const & ring : face)
        {
            for (TEdge const & edge : ring)
            {
                bool const isBeyond = p.x < edge.low.x - limit || p.x > edge.high.x + limit ||
                                      p.y < edge.low.y - limit || p.y > edge.high.y + limit;
                if (!isBeyond && Distance(p, edge) < limit) return true;
            }
        }
    }
    return false;
}

TSpot MiddleOf(TEdge const & edge, TSpot & normal)
{
    if (edge.isArc)
    {
        double const angle = edge.start + 0.5 * edge.sweep;
        normal = {std::cos(angle), std::sin(angle)};
        return edge.centre + edge.radius * normal;
    }
    TSpot const d = edge.b - edge.a;
    double const length = Length(d);
    normal = length > 0.0 ? TSpot{-d.y / length, d.x / length} : TSpot{1.0, 0.0};
    return edge.a + 0.5 * d;
}

double SimpleArea(TFace const & face)
{
    double area = 0.0;
    for (TRing const & ring : face)
    {
        double sum = 0.0;
        for (TEdge const & edge : ring)
        {
            sum += Cross(edge.a - ring.front().a, edge.b - ring.front().a);
            if (edge.isArc) sum += edge.sense * edge.radius * edge.radius * (edge.sweep - std::sin(edge.sweep));
        }
        area += (&ring == &face.front() ? 0.5 : -0.5) * std::abs(sum);
    }
    return area;
}

} // namespace trials
