// Points are taken where faults show: at random, on both sides of the middle of each edge of the operands and of the
// result, in the centres of arcs, between neighbouring vertices of the two operands. Those too near to an outline of an
// operand are left out. What quick arithmetic finds wrong is confirmed by long doubles and two other rays.
#include "scene.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace trials
{

namespace
{

constexpr int EdgeLimit = 160; // edges of an operand or of a result that points are taken beside
constexpr int RandomCount = 24;
constexpr int PairLimit = 40; // vertices that a neighbour is looked for

double ToleranceOf(TFaces const & a, TFaces const & b)
{
    double const side = std::min(a.smallestSide, b.smallestSide);
    double const farthest = std::max(a.farthest, b.farthest);
    double const ulp = std::nextafter(farthest, DBL_MAX) - farthest;
    return 1e-6 * (side < DBL_MAX ? side : 0.0) + (a.hasArcs || b.hasArcs ? 0.07 : 0.0) + 400.0 * ulp;
}

std::vector<TEdge const*> EdgesOf(TFaces const & faces)
{
    std::vector<TEdge const*> edges;
    for (TFace const & face : faces.faces)
    {
        for (TRing const & ring : face)
        {
            for (TEdge const & edge : ring)
            {
                edges.push_back(&edge);
            }
        }
    }
    return edges;
}

} // namespace

TSpot OriginOf(Polygons const & polygons)
{
    for (geometry::CPolygon const* polygon : polygons)
    {
        auto const & rect = polygon->GetBoundingRect();
        if (rect.minX <= rect.maxX) return OriginNear(rect.minX, rect.minY);
    }
    return {};
}

CScene::CScene(Polygons const & a, Polygons const & b, CRandom random)
    : m_PolygonsA(a), m_PolygonsB(b), m_A(ReadFaces(a, OriginOf(a))), m_B(ReadFaces(b, m_A.origin)), m_InA(m_A),
      m_InB(m_B), m_Tolerance(ToleranceOf(m_A, m_B)), m_Random(random)
{
    m_Extent = std::max(std::max(m_A.high.x, m_B.high.x) - std::min(m_A.low.x, m_B.low.x),
                        std::max(m_A.high.y, m_B.high.y) - std::min(m_A.low.y, m_B.low.y));
    AddRandom(m_Samples);
    AddBetween(m_Samples);
    AddEdges(m_A, EdgeLimit, m_Samples);
    AddEdges(m_B, EdgeLimit, m_Samples);
}

double CScene::GetAreaTolerance() const
{
    double const perimeter = m_A.perimeter + m_B.perimeter;
    return 2.0 * m_Tolerance * perimeter;
}

void CScene::AddSample(TSpot const & at, std::vector<TSample> & samples) const
{
    if (IsNear(at, m_A, m_Tolerance) || IsNear(at, m_B, m_Tolerance)) return;
    samples.push_back({at, m_InA.Count(at) > 0, m_InB.Count(at) > 0});
}

void CScene::AddRandom(std::vector<TSample> & samples) const
{
    double const lowX = std::min(m_A.low.x, m_B.low.x);
    double const lowY = std::min(m_A.low.y, m_B.low.y);
    double const highX = std::max(m_A.high.x, m_B.high.x);
    double const highY = std::max(m_A.high.y, m_B.high.y);
    for (int i = 0; i < RandomCount; ++i)
    {
        AddSample({m_Random.Real(lowX, highX), m_Random.Real(lowY, highY)}, samples);
    }
}

/// Small faces lie between vertices of different operands that are near each other.
void CScene::AddBetween(std::vector<TSample> & samples) const
{
    std::vector<TEdge const*> const edges = EdgesOf(m_A);
    std::vector<TEdge const*> const others = EdgesOf(m_B);
    if (others.empty()) return;
    for (int i = 0; i < std::min<int>(PairLimit, static_cast<int>(edges.size())); ++i)
    {
        TSpot const a = edges[m_Random.Next() % edges.size()]->a;
        TSpot nearest = others.front()->a;
        for (TEdge const* other : others)
        {
            if (Length(other->a - a) < Length(nearest - a)) nearest = other->a;
        }
        if (Length(nearest - a) > 2.0 * m_Tolerance) AddSample(0.5 * (a + nearest), samples);
    }
}

void CScene::AddEdges(TFaces const & faces, int limit, std::vector<TSample> & samples) const
{
    std::vector<TEdge const*> const edges = EdgesOf(faces);
    if (static_cast<int>(edges.size()) <= limit)
    {
        for (TEdge const* edge : edges)
        {
            AddBeside(*edge, samples);
        }
        return;
    }
    for (int i = 0; i < limit; ++i)
    {
        AddBeside(*edges[m_Random.Next() % edges.size()], samples);
    }
}

void CScene::AddBeside(TEdge const & edge, std::vector<TSample> & samples) const
{
    TSpot normal;
    TSpot const middle = MiddleOf(edge, normal);
    double const near = m_Tolerance * m_Random.Real(2.0, 4.0);
    AddSample(middle + near * normal, samples);
    AddSample(middle - near * normal, samples);
    double const far = m_Random.Scale(2.0 * m_Tolerance, std::max(4.0 * m_Tolerance, 0.3 * m_Extent));
    AddSample(middle + m_Random.Sign() * far * normal, samples);
    if (edge.isArc && Length(edge.centre - middle) < m_Extent) AddSample(edge.centre, samples);
}

TFault CScene::Check(Polygons const & result, Rule rule) const
{
    TFaces const faces = ReadFaces(result, m_A.origin);
    TMembership<double> const covers(faces);
    std::vector<TSample> more;
    AddEdges(faces, EdgeLimit, more);
    for (std::vector<TSample> const* samples : {&m_Samples, static_cast<std::vector<TSample> const*>(&more)})
    {
        for (TSample const & sample : *samples)
        {
            if (covers.Count(sample.at) == (rule(sample.inA, sample.inB) ? 1 : 0)) continue;
            TFault const fault = Confirm(result, rule, sample);
            if (fault.isFound) return fault;
        }
    }
    return {};
}

TFault CScene::Confirm(Polygons const & result, Rule rule, TSample const & sample) const
{
    TFault fault;
    TFaces const faces = ReadFaces(result, m_A.origin);
    for (double const angle : {0.7, 2.2})
    {
        bool const inA = TMembership<long double>(m_A, angle).Count(sample.at) > 0;
        bool const inB = TMembership<long double>(m_B, angle).Count(sample.at) > 0;
        fault.count = TMembership<long double>(faces, angle).Count(sample.at);
        fault.isMember = rule(inA, inB);
        if (inA != sample.inA || inB != sample.inB || fault.count == (fault.isMember ? 1 : 0)) return {};
    }
    fault.isFound = true;
    fault.at = sample.at + m_A.origin;
    fault.distance = std::min(Distance(sample.at, m_A), Distance(sample.at, m_B));
    return fault;
}

} // namespace trials
