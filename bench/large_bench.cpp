// Large outlines: two stars with random wobble, which cross about 0.55 times a vertex, as one polyline each and as single
// segments; two polygons of a circle, which cross twice; and many point questions to one outline.
#include <benchmark/benchmark.h>

#include <geometry/geometry.h>

#include <cmath>
#include <cstddef>
#include <memory>
#include <random>
#include <vector>

namespace
{

using geometry::CPathObjectBase;
using geometry::CPathObjectPolyline;
using geometry::CPolygon;
using CPoints = std::vector<geometry::TPoint<double>>;
using CResult = SelfDestructingContainer<std::vector<CPolygon*>>;

CPoints MakeStar(std::int64_t count, unsigned int seed, double wobble, double phase, double shift)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    CPoints points;
    for (std::int64_t i = 0; i < count; ++i)
    {
        double const angle =
            2.0 * 3.14159265358979323846 * (static_cast<double>(i) + phase) / static_cast<double>(count);
        double const radius = 1e8 * (1.0 + wobble * unit(random));
        points.emplace_back(shift + radius * std::cos(angle), radius * std::sin(angle));
    }
    points.push_back(points.front());
    return points;
}

std::unique_ptr<CPolygon> OnePolyline(CPoints const & points)
{
    return std::make_unique<CPolygon>(new CPathObjectPolyline(points.begin(), points.end()));
}

std::unique_ptr<CPolygon> SingleSegments(CPoints const & points)
{
    std::vector<CPathObjectBase*> objects;
    for (std::size_t i = 0; i + 1 < points.size(); ++i)
    {
        objects.push_back(new CPathObjectPolyline(points[i], points[i + 1]));
    }
    return std::make_unique<CPolygon>(objects.begin(), objects.end());
}

using Operation = bool (CPolygon::*)(std::vector<CPolygon*> &, CPolygon const &) const;

void Run(benchmark::State & state, CPolygon const & a, CPolygon const & b, Operation operation)
{
    std::size_t rings = 0;
    for (auto _ : state)
    {
        CResult result;
        (a.*operation)(result, b);
        rings = result.size();
    }
    state.counters["rings"] = static_cast<double>(rings);
    state.SetComplexityN(state.range(0));
}

void StarsOnePolyline(benchmark::State & state)
{
    Run(state, *OnePolyline(MakeStar(state.range(0), 1, 0.003, 0.0, 0.0)),
        *OnePolyline(MakeStar(state.range(0), 2, 0.003, 0.37, 0.0)), &CPolygon::SubtractPolygon);
}

void StarsSingleSegments(benchmark::State & state)
{
    Run(state, *SingleSegments(MakeStar(state.range(0), 1, 0.003, 0.0, 0.0)),
        *SingleSegments(MakeStar(state.range(0), 2, 0.003, 0.37, 0.0)), &CPolygon::SubtractPolygon);
}

void CrossingTwice(benchmark::State & state)
{
    Run(state, *OnePolyline(MakeStar(state.range(0), 1, 0.0, 0.0, 0.0)),
        *OnePolyline(MakeStar(state.range(0), 1, 0.0, 0.37, 1.3e8)), &CPolygon::MergePolygon);
}

/// 100,000 questions to one outline, the building of its index included.
void PointsInStar(benchmark::State & state)
{
    CPoints const outline = MakeStar(state.range(0), 1, 0.003, 0.0, 0.0);
    std::mt19937 random(3);
    std::uniform_real_distribution<double> coordinate(-1.3e8, 1.3e8);
    CPoints questions(100000);
    for (auto & point : questions)
    {
        point = {coordinate(random), coordinate(random)};
    }
    for (auto _ : state)
    {
        std::unique_ptr<CPolygon> const polygon = OnePolyline(outline);
        int inside = 0;
        for (auto const & point : questions)
        {
            inside += polygon->PointInPolygon(point.x, point.y) ? 1 : 0;
        }
        benchmark::DoNotOptimize(inside);
    }
    state.SetComplexityN(state.range(0));
}

BENCHMARK(StarsOnePolyline)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(StarsSingleSegments)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(CrossingTwice)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(PointsInStar)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond)->Complexity();

} // namespace
