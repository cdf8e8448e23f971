// Copper pours: a board less all the tracks, pads and vias on it, of n made-up shapes each, with 1 worker and with 2.
// The board grows with n, so that it stays as full as it is; larger ones have more tiles to share out.

#include <benchmark/benchmark.h>

#include "copper_pour/board_generator.h"
#include "copper_pour/outline.h"
#include "copper_pour/shapes.h"

namespace
{

using geometry::CPolygon;

constexpr double Clearance = 200000.0; // nanometres

void Pour(benchmark::State & state)
{
    copper_pour::CBoard const board = copper_pour::GenerateBoard(static_cast<std::size_t>(state.range(0)), 1);
    svg::CPolygons const area = copper_pour::MakeBoardArea(board.outline);
    svg::CPolygons const shapes = copper_pour::MakeShapes(board, Clearance);
    std::vector<CPolygon const*> others;
    for (auto const & shape : shapes)
    {
        others.push_back(shape.get());
    }
    std::size_t pieces = 0;
    for (auto _ : state)
    {
        SelfDestructingContainer<std::vector<CPolygon*>> result;
        bool const isDone = area.front()->SubtractPolygons(result, others, static_cast<unsigned int>(state.range(1)));
        if (!isDone) state.SkipWithError("the subtraction failed");
        pieces = result.size();
    }
    state.counters["obstacles"] = static_cast<double>(others.size());
    state.counters["pieces"] = static_cast<double>(pieces);
}

BENCHMARK(Pour)
    ->ArgNames({"shapes", "workers"})
    ->ArgsProduct({{100, 1000}, {1, 2}})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

/// Under a name of its own, to be left out with a filter: a minute and more.
void LargePour(benchmark::State & state)
{
    Pour(state);
}

BENCHMARK(LargePour)
    ->ArgNames({"shapes", "workers"})
    ->ArgsProduct({{10000}, {1, 2}})
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
