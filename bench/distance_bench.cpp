// Where a point lies and how far two polygons are apart, for outlines of n vertices with a hole of n vertices: one
// polyline each, waves around a circle.

#include <benchmark/benchmark.h>

#include <geometry/geometry.h>

#include <cmath>
#include <memory>
#include <vector>

namespace
{

using geometry::CPathObjectPolyline;
using geometry::CPolygon;
using CPoint = geometry::TPoint<double>;

std::unique_ptr<CPolygon> MakeWave(double x, double radius, int count)
{
    auto polyline = std::make_unique<CPathObjectPolyline>();
    for (int vertex = 0; vertex <= count; ++vertex)
    {
        double const angle = 2.0 * 3.14159265358979323846 * (vertex % count) / count;
        double const r = radius * (1.0 + 0.05 * std::sin(0.1 * count * angle));
        polyline->AddVertex(x + r * std::cos(angle), r * std::sin(angle));
    }
    return std::make_unique<CPolygon>(polyline.release());
}

std::unique_ptr<CPolygon> MakeRing(double x, int count)
{
    auto ring = MakeWave(x, 1000000.0, count);
    std::vector<CPolygon*> extra;
    ring->AddHole(MakeWave(x, 500000.0, count).get(), nullptr, nullptr, extra);
    return ring;
}

void PointInPolygon(benchmark::State & state)
{
    auto const ring = MakeRing(0.0, static_cast<int>(state.range(0)));
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

void MeasurePair(benchmark::State & state, CPolygon const & first, CPolygon const & second)
{
    CPoint onFirst;
    CPoint onSecond;
    double distance = 0.0;
    for (auto _ : state)
    {
        distance = std::sqrt(first.SquareDistanceToPolygon(second, false, false, onFirst, onSecond));
    }
    state.counters["distance"] = distance;
}

void DistanceApart(benchmark::State & state)
{
    int const count = static_cast<int>(state.range(0));
    MeasurePair(state, *MakeRing(0.0, count), *MakeRing(3000000.0, count));
}

void DistanceInHole(benchmark::State & state)
{
    int const count = static_cast<int>(state.range(0));
    MeasurePair(state, *MakeRing(0.0, count), *MakeWave(12345.0, 100000.0, count));
}

BENCHMARK(PointInPolygon)->RangeMultiplier(10)->Range(100, 10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(DistanceApart)->RangeMultiplier(10)->Range(100, 10000)->Unit(benchmark::kMillisecond);
BENCHMARK(DistanceInHole)->RangeMultiplier(10)->Range(100, 10000)->Unit(benchmark::kMillisecond);

} // namespace
