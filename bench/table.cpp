// Prints a table (markdown) of all workloads that have a title: times of truearc and of the libraries that it is built
// to be compared with, on the same input in turns, and whether the targets are met.
// Usage: truearc_table [--quick] [--only TEXT]: without the largest sizes; only series with TEXT in their names.

#include "peers/peers.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <exception>
#include <fstream>
#include <optional>
#include <stdexcept>

#include <malloc.h>
#include <sched.h>
#include <sys/sysinfo.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using bench::COutcome;
using bench::CRun;

struct COptions
{
    bool isQuick = false;
    std::string only;
};

/// What `run` answers in a process of its own, whose heap nobody else has used.
template <typename Answer, typename Run>
Answer RunApart(Run const & run)
{
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    std::fflush(stdout);
    pid_t const child = fork();
    if (child == 0)
    {
        Answer const answer = run();
        _exit(write(ends[1], &answer, sizeof answer) == sizeof answer ? 0 : 1);
    }
    Answer answer{};
    close(ends[1]);
    bool const isRead = child > 0 && read(ends[0], &answer, sizeof answer) == sizeof answer;
    close(ends[0]);
    if (child > 0) waitpid(child, nullptr, 0);
    if (!isRead) throw std::runtime_error("a run failed");
    return answer;
}

bool hasOneProcessor = false; // for all that ask

/// Lets the whole process run as on a machine with one processor: whoever starts a thread for each starts none.
void TakeOneProcessor()
{
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(sched_getcpu(), &one);
    if (sched_setaffinity(0, sizeof one, &one) != 0) throw std::runtime_error("the processor can't be chosen");
    hasOneProcessor = true;
}

/// truearc or another library, with one workload.
struct CContestant
{
    std::string name = {}; ///< empty for truearc
    double ratio = 0.0;
    bench::EArcs arcs = bench::EArcs::eKept;
    CRun run = {};
    bool isOneThread = true;
    std::vector<double> milliseconds = {};
    double value = 0.0;

    void RunOnce()
    {
        COutcome const outcome = RunApart<COutcome>(
            [this]
            {
                if (isOneThread) TakeOneProcessor();
                return run();
            });
        milliseconds.push_back(outcome.milliseconds);
        value = outcome.value;
    }

    double Median() const
    {
        auto sorted = milliseconds;
        std::sort(sorted.begin(), sorted.end());
        return sorted[sorted.size() / 2];
    }
};

/// Lets all run in turns: 51 times, or less where that takes long.
void Compete(std::vector<CContestant> & contestants)
{
    auto const began = std::chrono::steady_clock::now();
    for (int round = 1; round <= 51; ++round)
    {
        for (auto & contestant : contestants)
        {
            contestant.RunOnce();
        }
        std::chrono::duration<double> const seconds = std::chrono::steady_clock::now() - began;
        if (seconds.count() > 40.0 || (seconds.count() > 4.0 && round >= 3)) return;
    }
}

std::vector<CContestant> MakeContestants(bench::CSeries const & series, bench::CWorkload const & workload)
{
    std::vector<CContestant> contestants;
    bool const isOneThread = workload.workers == 1;
    contestants.push_back({.run = [&workload] { return bench::Run(workload); }, .isOneThread = isOneThread});
    for (auto const & rival : series.rivals)
    {
        for (auto const & peer : bench::GetPeers())
        {
            if (peer.name != rival.name) continue;
            contestants.push_back({rival.name, rival.ratio, peer.arcs, peer.prepare(workload, peer.arcs), isOneThread});
        }
    }
    return contestants;
}

/// "0.52 (0.6)": a figure, and in brackets what it is to stay below, if that is to be judged. Notes a miss in
/// `verdict`.
std::string Judged(double figure, double limit, char const* what, std::string & verdict)
{
    char text[64];
    if (limit == 0.0)
    {
        std::snprintf(text, sizeof text, "%.2f", figure);
        return text;
    }
    std::snprintf(text, sizeof text, "%.2f (%g)", figure, limit);
    if (figure > limit)
    {
        verdict = (verdict.empty() || verdict == "met" ? "missed: " : verdict + ", ") + what;
    }
    else if (verdict.empty())
    {
        verdict = "met";
    }
    return text;
}

std::string Formatted(char const* format, double value)
{
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string Milliseconds(double value)
{
    return Formatted(value < 10.0 ? "%.2f" : value < 100.0 ? "%.1f" : "%.0f", value);
}

/// The last finished size of a series.
struct CPrevious
{
    int size = 0;
    double median = 0.0;
};

/// A row for truearc alone, or one a rival.
void PrintRows(bench::CSeries const & series, bench::CWorkload const & workload, int size,
               std::vector<CContestant> const & contestants, std::optional<CPrevious> const & previous)
{
    bool const isLargest = size == series.sizes.back();
    CContestant const & ours = contestants.front();
    for (std::size_t i = contestants.size() > 1 ? 1 : 0; i < contestants.size(); ++i)
    {
        CContestant const & rival = contestants[i];
        std::string verdict;
        std::string growth;
        if (previous.has_value())
        {
            double const exponent = std::log(ours.Median() / previous->median) / std::log(1.0 * size / previous->size);
            growth = Judged(exponent, isLargest ? series.growth : 0.0, "growth", verdict);
        }
        std::printf("| %s | %d | %s | %s |", series.title.c_str(), size, Milliseconds(ours.Median()).c_str(),
                    growth.c_str());
        if (i > 0)
        {
            double const apart = std::abs(ours.value - rival.value);
            double const allowed = bench::AllowedDifference(workload, rival.arcs);
            std::string const ratio =
                Judged(ours.Median() / rival.Median(), isLargest ? rival.ratio : 0.0, "ratio", verdict);
            if (!(apart <= allowed)) verdict += " RESULTS DIFFER";
            std::printf(" %s | %s | %s | %.6g | %.6g | %.1e | %.1e |", rival.name.c_str(),
                        Milliseconds(rival.Median()).c_str(), ratio.c_str(), ours.value, rival.value, apart, allowed);
        }
        else
        {
            std::printf(" | | | %.6g | | | |", ours.value);
        }
        std::printf(" %s |\n", verdict.c_str());
        std::fflush(stdout);
    }
}

void MeasureSeries(bench::CSeries const & series, bool isQuick)
{
    std::optional<CPrevious> previous;
    for (int const size : series.sizes)
    {
        if (isQuick && size == series.sizes.back()) return;
        bench::CWorkload const workload = series.make(size);
        auto contestants = MakeContestants(series, workload);
        Compete(contestants);
        PrintRows(series, workload, size, contestants, previous);
        previous = {size, contestants.front().Median()};
    }
}

// --- memory ---

/// A line of /proc/self/status, in bytes.
double MemoryStatus(std::string const & name)
{
    std::ifstream status("/proc/self/status");
    std::string word;
    double kilobytes = 0.0;
    while (status >> word)
    {
        if (word == name + ":") status >> kilobytes;
    }
    return 1024.0 * kilobytes;
}

/// What the union of two outlines of `size` vertices each takes beyond its input, in bytes a vertex.
double MeasurePeak(bench::CSeries const & series, int size)
{
    bench::CWorkload const workload = series.make(size);
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5"; // the peak so far is forgotten
    double const before = MemoryStatus("VmRSS");
    bench::Run(workload);
    return (MemoryStatus("VmHWM") - before) / (2.0 * size);
}

void MeasureMemory(bench::CSeries const & series, bool isQuick)
{
    constexpr double Limit = 600.0;
    std::printf(
        "\n| peak memory beyond the input | n | bytes per input vertex | at most | verdict |\n|---|---|---|---|---|\n");
    for (std::size_t i = series.sizes.size() - 2; i < series.sizes.size() - (isQuick ? 1 : 0); ++i)
    {
        double const peak = RunApart<double>([&] { return MeasurePeak(series, series.sizes[i]); });
        bool const isLargest = i + 1 == series.sizes.size();
        std::printf("| %s | %d | %.0f | %s | %s |\n", series.title.c_str(), series.sizes[i], peak,
                    isLargest ? Formatted("%.0f", Limit).c_str() : "",
                    !isLargest      ? ""
                    : peak <= Limit ? "met"
                                    : "missed");
    }
}

void MeasureAll(COptions const & options)
{
    std::printf("| workload | n | ms | growth | peer | its ms | ratio | area | its area | apart | allowed | verdict |\n"
                "|---|---|---|---|---|---|---|---|---|---|---|---|\n");
    for (auto const & series : bench::GetSeries())
    {
        if (series.title.empty() || series.name.find(options.only) == std::string::npos) continue;
        RunApart<bool>( // what the others have left of the heap isn't for this one
            [&]
            {
                MeasureSeries(series, options.isQuick);
                return true;
            });
    }
    for (auto const & series : bench::GetSeries())
    {
        bool const isWanted = series.name.find(options.only) != std::string::npos;
        if (series.name == "CrossingTwice" && isWanted) MeasureMemory(series, options.isQuick);
    }
}

bool ReadOptions(int count, char** arguments, COptions & options)
{
    for (int i = 1; i < count; ++i)
    {
        if (std::strcmp(arguments[i], "--quick") == 0)
        {
            options.isQuick = true;
        }
        else if (std::strcmp(arguments[i], "--only") == 0 && i + 1 < count)
        {
            options.only = arguments[++i];
        }
        else
        {
            return false;
        }
    }
    return true;
}

} // namespace

/// Stands before that of the C library, which the standard library asks.
extern "C" __attribute__((visibility("default"))) int get_nprocs() noexcept
{
    return hasOneProcessor ? 1 : static_cast<int>(sysconf(_SC_NPROCESSORS_ONLN));
}

int main(int count, char** arguments)
{
    COptions options;
    if (!ReadOptions(count, arguments, options))
    {
        std::fprintf(stderr, "usage: %s [--quick] [--only TEXT]\n", arguments[0]);
        return 2;
    }
    try
    {
        MeasureAll(options);
    }
    catch (std::exception const & error)
    {
        std::fprintf(stderr, "truearc_table: %s\n", error.what());
        return 1;
    }
    return 0;
}
