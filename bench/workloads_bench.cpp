// All workloads of the list, each at its sizes, as benchmarks by the names and sizes of the list.

#include <benchmark/benchmark.h>

#include "workloads.h"

#include <exception>

namespace
{

void Measure(benchmark::State & state, bench::CSeries const & series)
{
    bench::CWorkload const workload = series.make(static_cast<int>(state.range(0)));
    bench::COutcome outcome;
    try
    {
        for (auto _ : state)
        {
            outcome = bench::Run(workload);
            state.SetIterationTime(1e-3 * outcome.milliseconds);
        }
    }
    catch (std::exception const & error)
    {
        state.SkipWithError(error.what());
    }
    state.counters["value"] = outcome.value;
    state.counters["pieces"] = static_cast<double>(outcome.pieces);
}

bool RegisterAll()
{
    for (bench::CSeries const & series : bench::GetSeries())
    {
        auto* const benchmark = benchmark::RegisterBenchmark(series.name.c_str(), [&series](benchmark::State & state)
                                                             { Measure(state, series); });
        for (int const size : series.sizes)
        {
            benchmark->Arg(size);
        }
        benchmark->UseManualTime()->Unit(benchmark::kMillisecond);
    }
    return true;
}

[[maybe_unused]] bool const isRegistered = RegisterAll();

} // namespace
