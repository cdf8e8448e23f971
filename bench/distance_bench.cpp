// Where a point lies and how far two polygons are apart, for outlines of n vertices, most with a hole of n vertices:
// waves around a circle. They are one polyline each, single segments, or segments and arcs by turns.

#include <benchmark/benchmark.h>

#include <geometry/geometry.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace
{

using geometry::CPathObjectArc;
using geometry::CPathObjectBase;
using geometry::CPathObjectPolyline;
using geometry::CPolygon;
using CPoint = geometry::TPoint<double>;

enum EPieces
{
    eOnePolyline,
    eSegments,
    eArcsAndSegments
};

CPoint PointOfWave(double x, double radius, int vertex, int count)
{
    double const angle = 2.0 * 3.14159265358979323846 * (vertex % count) / count;
    double const r = radius * (1.0 + 0.05 * std::sin(0.1 * count * angle));
    return CPoint(x + r * std::cos(angle), r * std::sin(angle));
}

std::unique_ptr<CPolygon> MakeWave(double x, double radius, int count, EPieces pieces)
{
    std::vector<CPathObjectBase*> objects;
    auto polyline = std::make_unique<CPathObjectPolyline>();
    for (int vertex = 0; vertex <= count; ++vertex)
    {
        CPoint const a = PointOfWave(x, radius, vertex, count), b = PointOfWave(x, radius, vertex + 1, count);
        polyline->AddVertex(a.x, a.y);
        if (pieces == eOnePolyline || vertex == count)
        {
            continue;
        }
        bool const isArc = pieces == eArcsAndSegments && vertex % 2 == 0;
        CPoint const centre((a.x + b.x) / 2.0 - 5.0 * (b.y - a.y), (a.y + b.y) / 2.0 + 5.0 * (b.x - a.x)); // shallow
        objects.push_back(isArc ? static_cast<CPathObjectBase*>(new CPathObjectArc(a, b, centre, true))
                                : new CPathObjectPolyline(a, b));
    }
    return pieces == eOnePolyline ? std::make_unique<CPolygon>(polyline.release())
                                  : std::make_unique<CPolygon>(objects.begin(), objects.end());
}

std::unique_ptr<CPolygon> MakeRing(double x, int count, EPieces pieces)
{
    auto ring = MakeWave(x, 1000000.0, count, pieces);
    std::vector<CPolygon*> extra;
    ring->AddHole(MakeWave(x, 500000.0, count, pieces).get(), nullptr, nullptr, extra);
    return ring;
}

void PointInPolygon(benchmark::State & state)
{
    auto const ring = MakeRing(0.0, static_cast<int>(state.range(0)), static_cast<EPieces>(state.range(1)));
    CPoint point(-1000000.0, -1000000.0);
    int count = 0;
    for (auto _ : state)
    {
        count += ring->PointInPolygon(point.x, point.y) ? 1 : 0;
        point.x = point.x < 1000000.0 ? point.x + 12345.678 : -1000000.0;
        point.y = point.y < 1000000.0 ? point.y + 9876.543 : -1000000.0;
    }
    benchmark::DoNotOptimize(count);
}

/// Of the nearest of a thousand vertices of each: no distance of the two may be above it.
double SampleSquareDistance(CPolygon const & first, CPolygon const & second)
{
    auto const sample = [](CPolygon const & polygon)
    {
        std::vector<CPoint> points;
        for (CPathObjectBase const* object : polygon.GetOutline())
        {
            bool const isArc = !object->CanAppendVertex();
            points.insert(points.end(), object->GetPointsBegin(),
                          isArc ? object->GetPointsBegin() + 1 : object->GetPointsEnd());
        }
        std::size_t const step = points.size() / 1000 + 1;
        for (std::size_t i = 0; i < points.size(); i += step)
        {
            points[i / step] = points[i];
        }
        points.resize((points.size() + step - 1) / step);
        return points;
    };
    double best = 1e300;
    auto const others = sample(second);
    for (CPoint const & p : sample(first))
    {
        for (CPoint const & q : others)
        {
            best = std::min(best, (p.x - q.x) * (p.x - q.x) + (p.y - q.y) * (p.y - q.y));
        }
    }
    return best;
}

/// The first question to fresh copies: whatever is kept for more of them is worked out in the time.
void MeasurePair(benchmark::State & state, CPolygon const & first, CPolygon const & second)
{
    CPoint onFirst;
    CPoint onSecond;
    double squareDistance = 0.0;
    for (auto _ : state)
    {
        state.PauseTiming();
        auto a = std::make_unique<CPolygon>(first), b = std::make_unique<CPolygon>(second);
        state.ResumeTiming();
        squareDistance = a->SquareDistanceToPolygon(*b, false, false, onFirst, onSecond);
        state.PauseTiming();
        a.reset();
        b.reset();
        state.ResumeTiming();
    }
    double const dx = onFirst.x - onSecond.x, dy = onFirst.y - onSecond.y;
    CPolygon const & nearest = first.GetHoles().empty() ? first : *first.GetHoles().front();
    double const sampled = SampleSquareDistance(nearest, second);
    if (std::fabs(dx * dx + dy * dy - squareDistance) > 1e-6 * squareDistance || squareDistance > sampled)
    {
        state.SkipWithError("not the distance of the two");
    }
    state.counters["distance"] = std::sqrt(squareDistance);
}

void DistanceApart(benchmark::State & state)
{
    int const count = static_cast<int>(state.range(0));
    auto const pieces = static_cast<EPieces>(state.range(1));
    MeasurePair(state, *MakeWave(0.0, 1000000.0, count, pieces), *MakeWave(3000000.0, 1000000.0, count, pieces));
}

void DistanceInHole(benchmark::State & state)
{
    int const count = static_cast<int>(state.range(0));
    auto const pieces = static_cast<EPieces>(state.range(1));
    MeasurePair(state, *MakeRing(0.0, count, pieces), *MakeWave(12345.0, 100000.0, count, pieces));
}

void SizesAndPieces(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"n", "pieces"});
    for (int pieces : {eOnePolyline, eSegments, eArcsAndSegments})
    {
        for (int count : {100, 1000, 10000, 100000})
        {
            benchmark->Args({count, pieces});
        }
    }
}

BENCHMARK(PointInPolygon)->Apply(SizesAndPieces)->Unit(benchmark::kMicrosecond);
BENCHMARK(DistanceApart)->Apply(SizesAndPieces)->Unit(benchmark::kMillisecond);
BENCHMARK(DistanceInHole)->Apply(SizesAndPieces)->Unit(benchmark::kMillisecond);

} // namespace
