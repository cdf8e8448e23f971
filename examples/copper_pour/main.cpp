// copper_pour [BOARD.kicad_pcb] --layer F.Cu --clearance 0.2 -o OUT.svg [--workers N] [--shapes N --seed S]
//
// Pours copper over one layer of a circuit board: the board less everything on the layer, which is grown by a clearance
// (mm). Reads board files of version 4 and later; without a file it makes a board of its own with N shapes. Writes a
// picture, in which arcs are arcs, and prints what it is made of. Ctrl-C stops the work where it is.
// Exit status: 0 done, 1 the work or the writing failed, 2 the input or the command line isn't taken, 130 stopped.

#include "support/program.h"
#include "support/svg_writer.h"

#include "board_generator.h"
#include "board_reader.h"
#include "pour.h"
#include "s_expression.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <exception>
#include <optional>

#include <unistd.h>

namespace
{

using namespace copper_pour;

std::atomic<bool> stopRequested{false}; // all that the signal handler touches
static_assert(std::atomic<bool>::is_always_lock_free);

extern "C" void HandleInterrupt(int)
{
    stopRequested = true;
}

template <typename T>
T ReadNumber(svg::CArguments const & arguments, char const* name, T standard)
{
    std::string const text = arguments.Get(name);
    if (text.empty()) return standard;
    T value{};
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc() && end == text.data() + text.size()) return value;
    throw svg::CSvgError(std::string(name) + ": '" + text + "' isn't taken");
}

/// Says what the work is at and for how long: five times a second, in one line, if a terminal shows it, else with a
/// line a second. Short work says nothing.
class CProgress
{
public:
    void Show(EStage stage)
    {
        auto const now = std::chrono::steady_clock::now();
        if (now < m_Next) return;
        m_Next = now + std::chrono::milliseconds(m_IsTerminal ? 200 : 1000);
        static char const* const names[] = {"sorting the outline", "growing the obstacles", "subtracting", "checking",
                                            "done"};
        std::fprintf(stderr, m_IsTerminal ? "\r%6.1f s  %-24s" : "%6.1f s  %s\n",
                     std::chrono::duration<double>(now - m_Began).count(), names[static_cast<int>(stage)]);
        std::fflush(stderr);
    }

    void Clear() const
    {
        if (m_IsTerminal) std::fprintf(stderr, "\r%40s\r", "");
    }

private:
    bool const m_IsTerminal = isatty(STDERR_FILENO) == 1;
    std::chrono::steady_clock::time_point const m_Began = std::chrono::steady_clock::now();
    std::chrono::steady_clock::time_point m_Next = m_Began + std::chrono::milliseconds(m_IsTerminal ? 200 : 1000);
};

/// The work on its thread. An exception is kept for the thread that waits.
class CJob
{
public:
    CJob(CBoard const & board, double clearance, unsigned int workers)
        : m_Board(board), m_Clearance(clearance), m_Workers(workers)
    {
    }

    /// Nothing if it was stopped, even if that came too late to keep it from its end.
    std::optional<CPour> Run()
    {
        geometry::thread worker([this] { Work(); });
        CProgress progress;
        while (worker.joinable())
        {
            if (stopRequested) worker.cancel();
            progress.Show(m_Stage);
            geometry::this_thread::sleep(10);
        }
        worker.join();
        progress.Clear();
        if (stopRequested) return std::nullopt;
        if (m_Error) std::rethrow_exception(m_Error);
        return std::move(m_Pour);
    }

private:
    void Work()
    {
        try
        {
            m_Pour = MakePour(m_Board, m_Clearance, m_Workers, m_Stage);
        }
        catch (geometry::thread_canceled const &)
        {
            throw; // ends the thread
        }
        catch (...)
        {
            m_Error = std::current_exception();
        }
    }

    CBoard const & m_Board;
    double m_Clearance;
    unsigned int m_Workers;
    std::atomic<EStage> m_Stage{EStage::eOutline};
    std::optional<CPour> m_Pour;
    std::exception_ptr m_Error;
};

void PrintTable(CBoard const & board, CPour const & pour)
{
    svg::CSummary const summary = svg::Summarize(pour.pieces);
    std::printf("%s\n", board.name.c_str());
    std::printf("%10s %10s %8s %8s %9s %8s %14s\n", "time", "obstacles", "pieces", "holes", "segments", "arcs", "area");
    std::printf("%8.3f s %10zu %8zu %8zu %9zu %8zu %10.4f mm2\n", pour.seconds, board.obstacles.size(), summary.rings,
                summary.holes, summary.segments, summary.arcs,
                summary.area / (NanometresPerMillimetre * NanometresPerMillimetre));
    for (auto const & [what, count] : board.skipped)
    {
        std::printf("not taken: %zu x %s\n", count, what.c_str());
    }
}

/// A dark board, the pour on it, and the copper that it keeps away from: shapes of their own, since they overlap.
void WritePicture(std::string const & file, CBoard const & board, CPour & pour)
{
    std::vector<svg::CPolygons> shapes(pour.copper.size());
    std::vector<svg::CLayer> layers = {{pour.area, "fill=\"#16302b\""},
                                       {pour.pieces, "id=\"result\" fill=\"#b8733a\""}};
    for (std::size_t i = 0; i < shapes.size(); ++i)
    {
        if (board.obstacles[i].isHole) continue;
        shapes[i].push_back(std::move(pour.copper[i]));
        layers.push_back({shapes[i], "fill=\"#f0c48a\""});
    }
    svg::WriteSvg(file, layers);
}

CBoard GetBoard(svg::CArguments const & arguments)
{
    if (arguments.inputs.empty())
    {
        return GenerateBoard(ReadNumber<std::size_t>(arguments, "--shapes", 300),
                             ReadNumber<std::uint64_t>(arguments, "--seed", 1));
    }
    std::string const layer = arguments.Get("--layer");
    return ReadBoard(arguments.inputs.front(), layer.empty() ? "F.Cu" : layer);
}

svg::EExitStatus Main(int count, char** values)
{
    svg::CArguments const arguments =
        svg::ReadArguments(count, values, {"--layer", "--clearance", "-o", "--workers", "--shapes", "--seed"});
    std::string const output = arguments.Get("-o");
    if (arguments.inputs.size() > 1 || output.empty())
    {
        std::fputs("usage: copper_pour [BOARD.kicad_pcb] [--layer F.Cu] [--clearance MM] [--workers N]\n"
                   "                   [--shapes N] [--seed S] -o OUT.svg\n",
                   stderr);
        return svg::eNotTaken;
    }
    double const clearance = ReadNumber(arguments, "--clearance", 0.2);
    if (!(clearance >= 0.0 && clearance <= 100.0)) throw svg::CSvgError("--clearance: between 0 and 100 mm");
    unsigned int const workers = ReadNumber(arguments, "--workers", 0U);
    CBoard const board = GetBoard(arguments);

    std::signal(SIGINT, HandleInterrupt);
    std::optional<CPour> pour = CJob(board, std::round(clearance * NanometresPerMillimetre), workers).Run();
    if (!pour)
    {
        std::fputs("stopped\n", stderr);
        return svg::eStopped;
    }
    WritePicture(output, board, *pour);
    PrintTable(board, *pour);
    if (pour->uncut == 0) return svg::eDone;
    std::fprintf(stderr, "%zu obstacles lie in the pour: they couldn't be cut out\n", pour->uncut);
    return svg::eFailed;
}

} // namespace

int main(int count, char** values)
{
    return svg::Guarded(
        "copper_pour",
        [](int n, char** v)
        {
            try
            {
                return Main(n, v);
            }
            catch (CBoardError const & error)
            {
                throw svg::CSvgError(error.what()); // an input that isn't taken
            }
        },
        count, values);
}
