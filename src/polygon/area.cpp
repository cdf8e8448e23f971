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

/// From start to end, in radians, whichever way it runs.
double AngleOfArc(CPathObjectArc const & arc)
{
    bool const isCounterClockwise = arc.IsCounterClockwise();
    TPoint<double> const & a = isCounterClockwise ? arc.GetStartPoint() : arc.GetEndPoint();
    TPoint<double> const & b = isCounterClockwise ? arc.GetEndPoint() : arc.GetStartPoint();
    if (a == b)
    {
        return twoPi;
    }
    TPoint<double> const & c = arc.GetCentre();
    double const ax = a.x - c.x, ay = a.y - c.y;
    double const bx = b.x - c.x, by = b.y - c.y;
    double const angle = std::atan2(ax * by - ay * bx, ax * bx + ay * by);
    return angle < 0.0 ? angle + twoPi : angle;
}

/// The area between the chord from start to end and the arc, positive for a counter-clockwise arc:
/// `r * r / 2 * (angle - sin(angle))` with the angle of the sweep.
double CircularSegmentArea(CPathObjectArc const & arc)
{
    if (arc.IsDegenerate())
    {
        return 0.0;
    }
    TPoint<double> const & a = arc.GetStartPoint();
    TPoint<double> const & b = arc.GetEndPoint();
    TPoint<double> const & c = arc.GetCentre();
    double const ax = a.x - c.x, ay = a.y - c.y;
    double const bx = b.x - c.x, by = b.y - c.y;
    double const squareRadius = (ax * ax + ay * ay + bx * bx + by * by) * 0.5;
    double const area = squareRadius * 0.5 * AngleMinusSine(AngleOfArc(arc));
    return arc.IsCounterClockwise() ? area : -area;
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

double SignedAreaOf(TEdge const & edge, TPoint<double> const & origin)
{
    return SignedTriangleArea(origin, edge.start, edge.end) +
           (edge.arc != nullptr ? CircularSegmentArea(*edge.arc) : 0.0);
}

/// Tells on which side of its edges an outline has its inside.
class CSides
{
public:
    CSides(CPolygon const & polygon, std::vector<TEdge> const & edges) : m_Edges(edges)
    {
        CBoundingRect<double> const & r = polygon.GetBoundingRect();
        m_Reach = std::max({std::fabs(r.minX), std::fabs(r.minY), std::fabs(r.maxX), std::fabs(r.maxY)});
        m_Probe.Read(polygon);
    }

    /// 1 to the left, -1 to the right; 0 where both sides are the same: the outline runs along itself there.
    int Ask(TEdge const & edge) const
    {
        TPoint<double> const & from = edge.start;
        TPoint<double> at(from.x + place * (edge.end.x - from.x), from.y + place * (edge.end.y - from.y));
        TPoint<double> left(from.y - edge.end.y, edge.end.x - from.x);
        if (edge.arc != nullptr)
        {
            TPoint<double> const & c = edge.arc->GetCentre();
            double const sense = edge.arc->IsCounterClockwise() ? 1.0 : -1.0;
            double const turn = sense * place * AngleOfArc(*edge.arc);
            double const x = from.x - c.x, y = from.y - c.y;
            double const scale = edge.arc->GetRadius() / std::sqrt(x * x + y * y); // onto the circle of the arc
            at = TPoint<double>(c.x + scale * (x * std::cos(turn) - y * std::sin(turn)),
                                c.y + scale * (x * std::sin(turn) + y * std::cos(turn)));
            left = TPoint<double>(sense * (c.x - at.x), sense * (c.y - at.y));
        }
        double const length = std::sqrt(left.x * left.x + left.y * left.y);
        double const ex = left.x / length * roundings * m_Reach;
        double const ey = left.y / length * roundings * m_Reach;
        bool const isLeft = m_Probe.Locate({at.x + ex, at.y + ey}, 0.0).isInside;
        bool const isRight = m_Probe.Locate({at.x - ex, at.y - ey}, 0.0).isInside;
        return isLeft == isRight ? 0 : isLeft ? 1 : -1;
    }

    /// Some of the edges have the inside on the other side than `side`.
    bool AreMixed(int side) const
    {
        constexpr std::size_t looks = 64; // in any case
        constexpr std::size_t perLook = 32;
        std::size_t const step = m_Edges.size() / (looks + m_Edges.size() / perLook) + 1;
        for (std::size_t i = 0; i < m_Edges.size(); i += step)
        {
            if (Ask(m_Edges[i]) == -side)
            {
                return true;
            }
        }
        return false;
    }

    /// Each edge, cut where another part of the outline has a vertex on it, counts with the sense in which it goes round
    /// the inside, and with `side` where there is none.
    double SumAreas(int side) const
    {
        std::vector<TPoint<double>> vertices;
        bool hasArc = false;
        for (TEdge const & edge : m_Edges)
        {
            vertices.push_back(edge.start);
            hasArc = hasArc || edge.arc != nullptr;
        }
        std::sort(vertices.begin(), vertices.end(), [](auto const & p, auto const & q) { return p.x < q.x; });
        double const room = 1e-9 * m_Reach + (hasArc ? 0.05 : 0.0); // a cut too many does no harm
        double area = 0.0;
        for (TEdge const & edge : m_Edges)
        {
            ForEachPart(edge, vertices, room,
                        [&](TEdge const & part)
                        {
                            int const found = Ask(part);
                            area += (found != 0 ? found : side) * SignedAreaOf(part, m_Edges.front().start);
                        });
        }
        return std::fabs(area);
    }

private:
    static constexpr double place = 0.38196601125010515;    // along an edge: where symmetric shapes seldom touch
    static constexpr double roundings = 64.0 * DBL_EPSILON; // of the largest coordinate

    template <typename Visit>
    static void ForEachPart(TEdge const & edge, std::vector<TPoint<double>> const & vertices, double room,
                            Visit const & visit);

    std::vector<TEdge> const & m_Edges;
    COutlineProbe m_Probe;
    double m_Reach;
};

/// How far along the edge the point lies: a number that grows from its start to its end. Not from 0 to 1, if the point
/// isn't on the edge.
double PlaceOn(TEdge const & edge, TPoint<double> const & point, double room)
{
    constexpr double nowhere = -1.0;
    if (edge.arc != nullptr)
    {
        TPoint<double> const & c = edge.arc->GetCentre();
        if (std::fabs(std::sqrt(SquareDistance(point, c)) - edge.arc->GetRadius()) > room)
        {
            return nowhere;
        }
        double const ax = edge.start.x - c.x, ay = edge.start.y - c.y;
        double const px = point.x - c.x, py = point.y - c.y;
        double const sense = edge.arc->IsCounterClockwise() ? 1.0 : -1.0;
        double const angle = sense * std::atan2(ax * py - ay * px, ax * px + ay * py);
        return (angle < 0.0 ? angle + twoPi : angle) / AngleOfArc(*edge.arc);
    }
    double const dx = edge.end.x - edge.start.x, dy = edge.end.y - edge.start.y;
    double const square = dx * dx + dy * dy;
    double const px = point.x - edge.start.x, py = point.y - edge.start.y;
    double const cross = dx * py - dy * px;
    return cross * cross > room * room * square ? nowhere : (dx * px + dy * py) / square;
}

/// The point of the edge next to one that lies on it within some room, at the place `at`.
TPoint<double> PointOn(TEdge const & edge, double at, TPoint<double> const & point)
{
    if (edge.arc == nullptr)
    {
        return TPoint<double>(edge.start.x + at * (edge.end.x - edge.start.x),
                              edge.start.y + at * (edge.end.y - edge.start.y));
    }
    TPoint<double> const & c = edge.arc->GetCentre();
    double const scale = edge.arc->GetRadius() / std::sqrt(SquareDistance(point, c));
    return TPoint<double>(c.x + scale * (point.x - c.x), c.y + scale * (point.y - c.y));
}

template <typename Visit>
void CSides::ForEachPart(TEdge const & edge, std::vector<TPoint<double>> const & vertices, double room,
                         Visit const & visit)
{
    CBoundingRect<double> rect =
        edge.arc != nullptr ? edge.arc->GetBoundingRect() : CBoundingRect<double>(edge.start, edge.end);
    rect.Inflate(room);
    std::vector<std::pair<double, TPoint<double>>> cuts;
    auto vertex = std::lower_bound(vertices.begin(), vertices.end(), rect.minX,
                                   [](TPoint<double> const & p, double x) { return p.x < x; });
    for (; vertex != vertices.end() && vertex->x <= rect.maxX; ++vertex)
    {
        double const at = rect.ContainsPoint(vertex->x, vertex->y) ? PlaceOn(edge, *vertex, room) : -1.0;
        if (at > 0.0 && at < 1.0 && !(*vertex == edge.start) && !(*vertex == edge.end))
        {
            cuts.emplace_back(at, PointOn(edge, at, *vertex));
        }
    }
    std::sort(cuts.begin(), cuts.end(), [](auto const & p, auto const & q) { return p.first < q.first; });
    cuts.emplace_back(1.0, edge.end);
    TPoint<double> from = edge.start;
    for (auto const & [at, to] : cuts)
    {
        if (edge.arc == nullptr || cuts.size() == 1)
        {
            visit(TEdge{from, to, edge.arc});
        }
        else if (!(from == to))
        {
            CPathObjectArc const part(from, to, edge.arc->GetCentre(), edge.arc->IsCounterClockwise(),
                                      edge.arc->GetRadius());
            visit(TEdge{from, to, &part});
        }
        from = to;
    }
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
    auto const & outline = polygon.GetOutline();
    double const signedArea = SignedOutlineArea(outline);
    std::vector<TEdge> const edges = EdgesOf(outline);
    if (edges.size() < 2)
    {
        return std::fabs(signedArea);
    }
    int const side = signedArea > 0.0 ? 1 : -1;
    CSides const sides(polygon, edges);
    bool const isSimple = (IsSmallLoop(outline) || !HasRepeatedPoint(edges)) && !sides.AreMixed(side);
    return isSimple ? std::fabs(signedArea) : sides.SumAreas(side);
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
