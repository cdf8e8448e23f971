// Areas of outlines, exact on arcs: the shoelace sum over straight pieces and chords, and for each arc the circular
// segment between chord and arc. A boolean can leave an outline that touches itself, in lobes that wind against each other
// or lie in one another: there each edge counts with the sense in which it goes round the inside.
#include "polygon/area.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <numeric>

#include <geometry/path/path_object_polyline.h>

#include "arc/as_arc.h"
#include "path/segment_kernels.h"
#include "polygon/outline_facts.h"
#include "polygon/polygon_tools.h"
#include "proof/outline_probe.h"

namespace geometry
{

namespace
{

constexpr double twoPi = 6.283185307179586;

/// `angle - sin(angle)`, by its series where the difference would cancel.
double AngleMinusSine(double angle)
{
    if (angle > 0.25)
    {
        return angle - std::sin(angle);
    }
    double const s = angle * angle;
    return angle * s / 6.0 * (1.0 - s / 20.0 * (1.0 - s / 42.0 * (1.0 - s / 72.0 * (1.0 - s / 110.0))));
}

/// The area between the chord from start to end and the arc, positive for a counter-clockwise arc:
/// `r * r / 2 * (angle - sin(angle))` with the angle of the sweep.
double CircularSegmentArea(CPathObjectArc const & arc)
{
    if (arc.IsDegenerate())
    {
        return 0.0;
    }
    bool const isCounterClockwise = arc.IsCounterClockwise();
    TPoint<double> const & a = isCounterClockwise ? arc.GetStartPoint() : arc.GetEndPoint();
    TPoint<double> const & b = isCounterClockwise ? arc.GetEndPoint() : arc.GetStartPoint();
    TPoint<double> const & c = arc.GetCentre();
    double const ax = a.x - c.x, ay = a.y - c.y;
    double const bx = b.x - c.x, by = b.y - c.y;
    double angle = twoPi;
    if (!(a == b))
    {
        angle = std::atan2(ax * by - ay * bx, ax * bx + ay * by);
        if (angle < 0.0)
        {
            angle += twoPi;
        }
    }
    double const squareRadius = (ax * ax + ay * ay + bx * bx + by * by) * 0.5;
    double const area = squareRadius * 0.5 * AngleMinusSine(angle);
    return isCounterClockwise ? area : -area;
}

/// One straight segment or one arc of an outline.
struct TEdge
{
    TPoint<double> start;
    TPoint<double> end;
    CPathObjectArc const* arc; ///< null for a segment
};

std::vector<TEdge> EdgesOf(CPolygon::PathObjects const & outline)
{
    std::vector<TEdge> edges;
    for (CPathObjectBase const* object : outline)
    {
        if (auto const* arc = AsArc(*object))
        {
            edges.push_back({arc->GetStartPoint(), arc->GetEndPoint(), arc});
            continue;
        }
        auto const end = object->GetPointsEnd();
        for (auto p = object->GetPointsBegin(); end - p > 1; ++p)
        {
            edges.push_back({p[0], p[1], nullptr});
        }
    }
    return edges;
}

/// For each edge the number of its start: equal points have equal numbers.
std::vector<std::size_t> NumberStarts(std::vector<TEdge> const & edges)
{
    std::vector<std::size_t> order(edges.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    auto const byX = [&](std::size_t i, std::size_t j) { return edges[i].start.x < edges[j].start.x; };
    auto const byY = [&](std::size_t i, std::size_t j) { return edges[i].start.y < edges[j].start.y; };
    std::sort(order.begin(), order.end(), byX);
    std::vector<std::size_t> numbers(edges.size());
    for (auto first = order.begin(); first != order.end();)
    {
        // a column of points of the same x, within which equal points are neighbours by y
        auto last = first + 1;
        while (last != order.end() && IsAlmostEqual(edges[*last].start.x, edges[last[-1]].start.x))
        {
            ++last;
        }
        std::sort(first, last, byY);
        numbers[*first] = *first;
        for (++first; first != last; ++first)
        {
            bool const isSame = edges[*first].start == edges[first[-1]].start;
            numbers[*first] = isSame ? numbers[first[-1]] : *first;
        }
    }
    return numbers;
}

/// The outline passes a point twice.
bool HasRepeatedPoint(std::vector<TEdge> const & edges)
{
    std::vector<std::size_t> numbers = NumberStarts(edges);
    std::sort(numbers.begin(), numbers.end());
    return std::adjacent_find(numbers.begin(), numbers.end()) != numbers.end();
}

double SignedTriangleArea(TPoint<double> const & origin, TPoint<double> const & p, TPoint<double> const & q)
{
    return 0.5 * ((p.x - origin.x) * (q.y - origin.y) - (q.x - origin.x) * (p.y - origin.y));
}

/// Whether the inside of the outline, of which `probe` tells, lies to the left of the edge. An edge of an outline that
/// doesn't cross itself has it on one side all along, whatever it touches.
bool IsInsideToTheLeft(TEdge const & edge, COutlineProbe const & probe, double reach)
{
    constexpr double part = 1e-7;                  // of the edge
    constexpr double roundings = 64 * DBL_EPSILON; // of the largest coordinate
    TPoint<double> at = Midpoint(edge.start, edge.end);
    TPoint<double> left(edge.start.y - edge.end.y, edge.end.x - edge.start.x);
    if (edge.arc != nullptr)
    {
        TPoint<double> const & centre = edge.arc->GetCentre();
        at = edge.arc->GetInbetweenPoint();
        double const sense = edge.arc->IsCounterClockwise() ? 1.0 : -1.0;
        left = TPoint<double>(sense * (centre.x - at.x), sense * (centre.y - at.y));
    }
    double const length = std::sqrt(left.x * left.x + left.y * left.y);
    double const distance = std::max(part * length, roundings * reach);
    TPoint<double> const point(at.x + left.x / length * distance, at.y + left.y / length * distance);
    return probe.Locate(point, 0.0).isInside;
}

double SignedAreaOf(TEdge const & edge, TPoint<double> const & origin)
{
    return SignedTriangleArea(origin, edge.start, edge.end) +
           (edge.arc != nullptr ? CircularSegmentArea(*edge.arc) : 0.0);
}

/// Each edge counts with the sense in which it goes round the inside.
double AreaBySides(std::vector<TEdge> const & edges, COutlineProbe const & probe, double reach)
{
    double area = 0.0;
    for (TEdge const & edge : edges)
    {
        double const part = SignedAreaOf(edge, edges.front().start);
        area += IsInsideToTheLeft(edge, probe, reach) ? part : -part;
    }
    return std::fabs(area);
}

constexpr std::size_t FewEdges = 8;

/// The outline passes no point twice. Tells it of outlines with few edges only.
bool IsSmallLoop(CPolygon::PathObjects const & outline)
{
    std::array<TPoint<double> const*, FewEdges> starts;
    std::size_t count = 0;
    auto const isNew = [&](TPoint<double> const & point)
    {
        bool const isKnown =
            std::any_of(starts.begin(), starts.begin() + count, [&](auto const* start) { return *start == point; });
        starts[count] = &point;
        return !isKnown && ++count < FewEdges;
    };
    for (CPathObjectBase const* object : outline)
    {
        if (AsArc(*object) != nullptr)
        {
            if (!isNew(object->GetStartPoint()))
            {
                return false;
            }
            continue;
        }
        for (auto p = object->GetPointsBegin(); object->GetPointsEnd() - p > 1; ++p)
        {
            if (!isNew(*p))
            {
                return false;
            }
        }
    }
    return true;
}

/// The area of the points around which the outline goes an odd number of times. Where some edges have the inside on
/// the left and others on the right, it consists of loops that touch, or nest, in any sense.
double OutlineArea(CPolygon const & polygon)
{
    constexpr std::size_t looks = 64; // at the sides of edges, in any case
    constexpr std::size_t perLook = 32;
    auto const & outline = polygon.GetOutline();
    double const signedArea = SignedOutlineArea(outline);
    if (outline.empty() || (outline.size() == 1 && outline.front()->IsSingleSegment()))
    {
        return std::fabs(signedArea);
    }
    std::vector<TEdge> const edges = EdgesOf(outline);
    CBoundingRect<double> const & r = polygon.GetBoundingRect();
    double const reach = std::max({std::fabs(r.minX), std::fabs(r.minY), std::fabs(r.maxX), std::fabs(r.maxY)});
    COutlineProbe probe;
    probe.Read(polygon);
    bool isSimple = IsSmallLoop(outline) || !HasRepeatedPoint(edges);
    std::size_t const step = edges.size() / (looks + edges.size() / perLook) + 1;
    for (std::size_t i = 0; isSimple && i < edges.size(); i += step)
    {
        isSimple = IsInsideToTheLeft(edges[i], probe, reach) == (signedArea > 0.0);
    }
    return isSimple ? std::fabs(signedArea) : AreaBySides(edges, probe, reach);
}

} // namespace

namespace
{

/// The signed area of the outline, of which `segmentArea(arc)` tells what lies between an arc and its chord.
template <typename SegmentArea>
double SumAreas(CPolygon::PathObjects const & outline, SegmentArea const & segmentArea)
{
    double area = 0.0;
    TPoint<double> const* origin = nullptr; // a point of the outline, as for a loop
    for (CPathObjectBase const* object : outline)
    {
        if (CPathObjectArc const* arc = AsArc(*object))
        {
            origin = origin == nullptr ? &arc->GetStartPoint() : origin;
            area += SignedTriangleArea(*origin, arc->GetStartPoint(), arc->GetEndPoint());
            area += segmentArea(*arc);
            continue;
        }
        auto const end = object->GetPointsEnd();
        for (auto p = object->GetPointsBegin(); end - p > 1; ++p)
        {
            origin = origin == nullptr ? &p[0] : origin;
            area += SignedTriangleArea(*origin, p[0], p[1]);
        }
    }
    return area;
}

/// At least the absolute value of `CircularSegmentArea`: an angle less its sine is at most pi / 2 times one less its
/// cosine, if it is no greater than pi.
double LargestSegmentArea(CPathObjectArc const & arc)
{
    constexpr double quarterPi = 0.7854; // rounded up
    TPoint<double> const & a = arc.GetStartPoint();
    TPoint<double> const & b = arc.GetEndPoint();
    TPoint<double> const & c = arc.GetCentre();
    double const ax = a.x - c.x, ay = a.y - c.y;
    double const bx = b.x - c.x, by = b.y - c.y;
    double const cross = arc.IsCounterClockwise() ? ax * by - ay * bx : bx * ay - by * ax;
    double const squareRadius = (ax * ax + ay * ay + bx * bx + by * by) * 0.5;
    bool const isAtMostHalf = cross >= 0.0 && !(a == b);
    return quarterPi * (isAtMostHalf ? squareRadius * (1.0 + 1e-14) - (ax * bx + ay * by) : 4.0 * squareRadius);
}

} // namespace

double SignedOutlineArea(CPolygon::PathObjects const & outline)
{
    return SumAreas(outline, CircularSegmentArea);
}

int SignOfOutlineArea(CPolygon::PathObjects const & outline, double least)
{
    double below = 0.0;
    double above = 0.0;
    double const chords = SumAreas(outline,
                                   [&](CPathObjectArc const & arc)
                                   {
                                       (arc.IsCounterClockwise() ? above : below) += LargestSegmentArea(arc);
                                       return 0.0;
                                   });
    double const clear = 2.0 * least + 1e-11 * (std::fabs(chords) + below + above); // far above rounding
    bool const isClear = outline.size() < 10000 && (chords - below > clear || chords + above < -clear);
    double const area = isClear ? chords : SignedOutlineArea(outline);
    return !(std::fabs(area) > least) ? 0 : area < 0.0 ? -1 : 1;
}

double SignedAreaTo(CPathObjectBase const & object, TPoint<double> const & origin)
{
    if (auto const* arc = AsArc(object))
    {
        return SignedTriangleArea(origin, arc->GetStartPoint(), arc->GetEndPoint()) + CircularSegmentArea(*arc);
    }
    double area = 0.0;
    for (auto p = object.GetPointsBegin(); object.GetPointsEnd() - p > 1; ++p)
    {
        area += SignedTriangleArea(origin, p[0], p[1]);
    }
    return area;
}

double CPolygon::GetArea() const
{
    double area = OutlineArea(*this);
    for (CPolygon const* hole : GetHoles())
    {
        area -= OutlineArea(*hole);
    }
    return area;
}

double AreaOf(CPolygon const & ring)
{
    return std::fabs(SignedOutlineArea(ring.GetOutline()));
}

bool IsThinnerThan(CPolygon const & ring, double width)
{
    double const most = width * LengthOf(ring);
    return AreaOf(ring) <= most && OutlineArea(ring) <= most; // lobes may wind against each other
}

bool IsWithoutWidth(CPolygon const & ring)
{
    constexpr double roundings = 16.0 * DBL_EPSILON;
    CBoundingRect<double> const & r = ring.GetBoundingRect();
    double const reach = std::max({std::fabs(r.minX), std::fabs(r.minY), std::fabs(r.maxX), std::fabs(r.maxY)});
    return IsThinnerThan(ring, roundings * reach);
}

bool IsAreaClearlyLarger(CPolygon const & ring, double area)
{
    if (!CPolygonInternals::HasFacts(ring))
    {
        return false;
    }
    COutlineFacts const & facts = CPolygonInternals::FactsOf(ring);
    CBoundingRect<double> const & rect = ring.GetBoundingRect();
    double const room = facts.GetAreaRounding(rect) + 1e-9 * RectArea(rect);
    TFactsSum const sum = facts.Sum(0, facts.GetCount());
    return sum.isSteady && std::fabs(sum.area) - room > area; // of what isn't steady, the area isn't known
}

double LengthOf(CPolygon const & ring)
{
    double length = 0.0;
    for (CPathObjectBase const* object : ring.GetOutline())
    {
        length += object->CalculateLength();
    }
    return length;
}

bool IsPointContact(std::vector<CPolygon*> const & rings, CPolygon const & a, CPolygon const & b, double & areaOfB)
{
    auto const sum = [&](auto measure)
    {
        return std::accumulate(rings.begin(), rings.end(), 0.0,
                               [&](double s, CPolygon const* r) { return s + measure(*r); });
    };
    auto const isSame = [](double p, double q) { return std::fabs(p - q) <= 1e-10 * q; };
    double const area = AreaOf(a) + areaOfB;
    areaOfB = sum(AreaOf);
    return isSame(areaOfB, area) && isSame(sum(LengthOf), LengthOf(a) + LengthOf(b));
}

} // namespace geometry
