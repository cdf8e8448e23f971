// Union of N stadiums and discs: scattered, so that most lie alone or in clusters of a few, or so dense that nearly
// all grow together, as the pads and tracks of a board do. The largest dense one may take minutes and has a name of
// its own.

#include <benchmark/benchmark.h>

#include <geometry/geometry.h>

#include <cmath>
#include <memory>
#include <random>
#include <vector>

namespace
{

using geometry::CPathObjectArc;
using geometry::CPathObjectBase;
using geometry::CPathObjectPolyline;
using geometry::CPolygon;
using CPoint = geometry::TPoint<double>;
using CPolygons = std::vector<std::unique_ptr<CPolygon>>;

constexpr double Radius = 10000.0;

/// The points within `Radius` of a segment.
std::unique_ptr<CPolygon> MakeStadium(CPoint const & from, CPoint const & to)
{
    double const length = std::hypot(to.x - from.x, to.y - from.y);
    double const nx = -Radius * (to.y - from.y) / length;
    double const ny = Radius * (to.x - from.x) / length;
    CPoint const a(from.x - nx, from.y - ny);
    CPoint const b(to.x - nx, to.y - ny);
    CPoint const c(to.x + nx, to.y + ny);
    CPoint const d(from.x + nx, from.y + ny);
    CPathObjectBase* const objects[] = {new CPathObjectPolyline(a, b), new CPathObjectArc(b, c, to, true),
                                        new CPathObjectPolyline(c, d), new CPathObjectArc(d, a, from, true)};
    return std::make_unique<CPolygon>(std::begin(objects), std::end(objects));
}

/// In a square so large that the shapes would cover `cover` of it if they lay side by side.
CPolygons Scatter(int count, double cover)
{
    double const side = std::sqrt(count * 8.0 / cover) * Radius;
    std::mt19937_64 random(4711);
    std::uniform_real_distribution<double> place(0.0, side);
    std::uniform_real_distribution<double> offset(-5.0 * Radius, 5.0 * Radius);
    CPolygons polygons;
    for (int i = 0; i < count; ++i)
    {
        CPoint const at(place(random), place(random));
        polygons.push_back(i % 2 == 0 ? std::make_unique<CPolygon>(new CPathObjectArc(at, Radius))
                                      : MakeStadium(at, {at.x + offset(random), at.y + offset(random)}));
    }
    return polygons;
}

void Merge(benchmark::State & state, double cover)
{
    CPolygons const polygons = Scatter(static_cast<int>(state.range(0)), cover);
    std::vector<CPolygon const*> input;
    for (auto const & polygon : polygons)
    {
        input.push_back(polygon.get());
    }
    std::size_t pieces = 0;
    for (auto _ : state)
    {
        SelfDestructingContainer<std::vector<CPolygon*>> result;
        if (!CPolygon::MergePolygons(result, input)) state.SkipWithError("the merge failed");
        pieces = result.size();
    }
    state.counters["pieces"] = static_cast<double>(pieces);
}

constexpr double Sparse = 0.15;
constexpr double Dense = 2.0;

BENCHMARK_CAPTURE(Merge, sparse, Sparse)->RangeMultiplier(10)->Range(100, 10000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Merge, dense, Dense)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Merge, huge, Dense)->Arg(10000)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
