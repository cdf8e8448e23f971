// Growing and shrinking of outlines of n path objects: zigzag stars, each edge an object of its own, and rosettes,
// whose outlines are half arcs.

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
constexpr double Inner = 900000.0;
constexpr double Outer = 1000000.0;

/// `count` path objects around the origin: segments between corners that lie by turns far from it and near it, or, with
/// arcs, between corners at one distance, every second one replaced by a half circle outward.
std::unique_ptr<CPolygon> MakeRing(int count, bool withArcs)
{
    std::vector<CPathObjectBase*> objects;
    CPoint from{Outer, 0.0};
    for (int index = 1; index <= count; ++index)
    {
        double const angle = 2.0 * Pi * (index % count) / count;
        double const radius = withArcs || index % 2 == 0 ? Outer : Inner;
        CPoint const to{radius * std::cos(angle), radius * std::sin(angle)};
        CPoint const middle{0.5 * (from.x + to.x), 0.5 * (from.y + to.y)};
        if (withArcs && index % 2 == 0)
        {
            objects.push_back(new CPathObjectArc(from, to, middle, true));
        }
        else
        {
            objects.push_back(new CPathObjectPolyline(from, to));
        }
        from = to;
    }
    return std::make_unique<CPolygon>(objects.begin(), objects.end());
}

/// `share` of the mean length of a path object is the distance; negative to shrink.
void Inflate(benchmark::State & state, bool withArcs, double share)
{
    int const count = static_cast<int>(state.range(0));
    auto const polygon = MakeRing(count, withArcs);
    double const distance = share * 2.0 * Pi * Outer / count;
    std::size_t pieces = 0;
    for (auto _ : state)
    {
        CResult result;
        polygon->GetInflatedPolygon(result, distance);
        if (result.empty()) state.SkipWithError("nothing came out");
        pieces = result.size();
    }
    state.counters["pieces"] = static_cast<double>(pieces);
}

BENCHMARK_CAPTURE(Inflate, grow_star, false, 0.3)->RangeMultiplier(10)->Range(10, 1000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Inflate, shrink_star, false, -0.3)
    ->RangeMultiplier(10)
    ->Range(10, 1000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Inflate, grow_arcs, true, 0.3)->RangeMultiplier(10)->Range(10, 1000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Inflate, shrink_arcs, true, -0.3)
    ->RangeMultiplier(10)
    ->Range(10, 1000)
    ->Unit(benchmark::kMillisecond);

} // namespace
