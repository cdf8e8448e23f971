// Booleans of two outlines of n pieces: gears, whose outlines are half arcs, and wavy polylines. Both cross each other in
// a number of places that grows with n.

#include <benchmark/benchmark.h>

#include <geometry/geometry.h>

#include <cmath>
#include <cstddef>
#include <memory>
#include <vector>

namespace
{

using geometry::CPathObjectArc;
using geometry::CPathObjectBase;
using geometry::CPathObjectPolyline;
using geometry::CPolygon;
using CPoint = geometry::TPoint<double>;
using CResult = SelfDestructingContainer<std::vector<CPolygon*>>;

constexpr double Pi = 3.14159265358979323846;

CPoint At(CPoint const & centre, double radius, double angle)
{
    return {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
}

/// Root and tip arcs about one centre, joined by flanks: 4 path objects a tooth.
std::unique_ptr<CPolygon> MakeGear(CPoint const & centre, int teeth, double phase)
{
    double const root = 900000.0;
    double const tip = 1000000.0;
    double const pitch = 2.0 * Pi / teeth;
    std::vector<CPathObjectBase*> objects;
    for (int tooth = 0; tooth < teeth; ++tooth)
    {
        double const begin = phase + tooth * pitch;
        double const middle = begin + 0.5 * pitch;
        double const end = tooth + 1 < teeth ? phase + (tooth + 1) * pitch : phase;
        objects.push_back(new CPathObjectArc(At(centre, tip, begin), At(centre, tip, middle), centre, true));
        objects.push_back(new CPathObjectPolyline(At(centre, tip, middle), At(centre, root, middle)));
        objects.push_back(new CPathObjectArc(At(centre, root, middle), At(centre, root, end), centre, true));
        objects.push_back(new CPathObjectPolyline(At(centre, root, end), At(centre, tip, end)));
    }
    return std::make_unique<CPolygon>(objects.begin(), objects.end());
}

/// One closed polyline of `count` vertices on a wave around a circle.
std::unique_ptr<CPolygon> MakeWave(CPoint const & centre, int count, double phase)
{
    auto polyline = std::make_unique<CPathObjectPolyline>();
    for (int vertex = 0; vertex <= count; ++vertex)
    {
        double const angle = 2.0 * Pi * (vertex % count) / count;
        CPoint const point = At(centre, 1000000.0 + 50000.0 * std::sin(0.1 * count * angle + phase), angle);
        polyline->AddVertex(point.x, point.y);
    }
    return std::make_unique<CPolygon>(polyline.release());
}

using COperation = bool (CPolygon::*)(std::vector<CPolygon*> &, CPolygon const &) const;

void Measure(benchmark::State & state, COperation operation, CPolygon const & first, CPolygon const & second)
{
    std::size_t pieces = 0;
    for (auto _ : state)
    {
        CResult result;
        if (!(first.*operation)(result, second)) state.SkipWithError("the operation failed");
        pieces = result.size();
    }
    state.counters["pieces"] = static_cast<double>(pieces);
}

void Gears(benchmark::State & state, COperation operation)
{
    int const teeth = static_cast<int>(state.range(0));
    auto const first = MakeGear({0.0, 0.0}, teeth, 0.0);
    auto const second = MakeGear({31000.0, 17000.0}, teeth, 0.3 / teeth);
    Measure(state, operation, *first, *second);
}

void Polylines(benchmark::State & state, COperation operation)
{
    int const count = static_cast<int>(state.range(0));
    auto const first = MakeWave({0.0, 0.0}, count, 0.0);
    auto const second = MakeWave({31000.0, 17000.0}, count, 1.0);
    Measure(state, operation, *first, *second);
}

BENCHMARK_CAPTURE(Gears, subtract, &CPolygon::SubtractPolygon)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Gears, intersect, &CPolygon::IntersectPolygon)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Polylines, subtract, &CPolygon::SubtractPolygon)
    ->RangeMultiplier(10)
    ->Range(100, 10000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Polylines, intersect, &CPolygon::IntersectPolygon)
    ->RangeMultiplier(10)
    ->Range(100, 10000)
    ->Unit(benchmark::kMillisecond);

} // namespace
