// Many trials on all processors. Each worker is a process of its own, so that a crash or a hang costs one trial: the
// parent sees which, counts it and lets another worker go on behind it. Workers draw blocks of seeds from shared memory,
// family by family, so that a run gives the same trials whatever their number.
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include "families/families.h"

namespace
{

using namespace trials;

constexpr unsigned long long BlockSize = 20;
constexpr int MaxFamilies = 16;
constexpr int MaxWorkers = 64;

struct TSettings
{
    std::vector<TFamily> families;
    TOptions options;
    unsigned long long firstSeed = 1;
    unsigned long long count = 1000;   ///< trials of each family
    unsigned long long operations = 0; ///< 0: `count` decides
    long only = -1;
    int workers = 1;
    unsigned secondsPerTrial = 60;
};

/// What a worker is at; behind a crash, the next worker goes on at `seed`.
struct TSlot
{
    int family;
    unsigned long long seed;
    unsigned long long blockEnd;
    unsigned long long counts[MaxFamilies][eOutcomeCount];
};

struct TShared
{
    std::atomic<unsigned long long> nextBlock;
    TSlot slots[MaxWorkers];
};

unsigned long long CountOf(TShared const & shared, int family, EOutcome outcome)
{
    unsigned long long sum = 0;
    for (TSlot const & slot : shared.slots)
    {
        sum += slot.counts[family][outcome];
    }
    return sum;
}

bool DrawBlock(TSettings const & settings, TShared & shared, TSlot & slot)
{
    auto const families = settings.families.size();
    unsigned long long tried = 0;
    for (std::size_t family = 0; settings.operations != 0 && family < families; ++family)
    {
        tried += CountOf(shared, static_cast<int>(family), eTried);
    }
    unsigned long long const block = shared.nextBlock++;
    unsigned long long const first = block / families * BlockSize;
    if (settings.operations != 0 ? tried >= settings.operations : first >= settings.count) return false;
    slot.family = static_cast<int>(block % families);
    slot.seed = settings.firstSeed + first;
    slot.blockEnd = slot.seed + BlockSize;
    if (settings.operations == 0) slot.blockEnd = std::min(slot.blockEnd, settings.firstSeed + settings.count);
    return true;
}

void Limit(unsigned seconds)
{
    alarm(5 * seconds); // stands still
    itimerval timer = {};
    timer.it_value.tv_sec = seconds; // works without end
    setitimer(ITIMER_PROF, &timer, nullptr);
}

void RunWorker(TSettings const & settings, TShared & shared, TSlot & slot)
{
    while (slot.seed < slot.blockEnd || DrawBlock(settings, shared, slot))
    {
        for (; slot.seed < slot.blockEnd; ++slot.seed)
        {
            Limit(settings.secondsPerTrial);
            TFamily const & family = settings.families[slot.family];
            CTrial trial(family.name, slot.seed, settings.options, slot.counts[slot.family]);
            family.run(trial);
        }
    }
}

pid_t StartWorker(TSettings const & settings, TShared & shared, TSlot & slot)
{
    std::fflush(stdout);
    pid_t const child = fork();
    if (child == 0)
    {
        RunWorker(settings, shared, slot);
        std::fflush(stdout);
        _exit(0);
    }
    return child;
}

void NoteCrash(TSettings const & settings, TSlot & slot, int status)
{
    bool const isHang = WIFSIGNALED(status) && (WTERMSIG(status) == SIGALRM || WTERMSIG(status) == SIGPROF);
    std::string const how = WIFSIGNALED(status) ? strsignal(WTERMSIG(status)) : "exit";
    std::printf("CRASH %s seed=%llu %s (%s)\n", settings.families[slot.family].name, slot.seed,
                isHang ? "hung" : "crashed", how.c_str());
    ++slot.counts[slot.family][eCrashed];
    ++slot.seed;
}

void RunAll(TSettings const & settings, TShared & shared)
{
    std::vector<pid_t> children;
    for (int i = 0; i < settings.workers; ++i)
    {
        children.push_back(StartWorker(settings, shared, shared.slots[i]));
    }
    for (int running = settings.workers; running > 0;)
    {
        int status = 0;
        pid_t const ended = wait(&status);
        auto const child = std::find(children.begin(), children.end(), ended);
        if (child == children.end()) continue;
        if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
        {
            --running;
            continue;
        }
        TSlot & slot = shared.slots[child - children.begin()];
        NoteCrash(settings, slot, status);
        *child = StartWorker(settings, shared, slot);
    }
}

/// The table, and whether nothing is silently wrong.
bool PrintTable(TSettings const & settings, TShared const & shared)
{
    std::printf("\n| family | operations | silently wrong | wrong area | reported | of them right | crashed or hung |\n"
                "|---|---:|---:|---:|---:|---:|---:|\n");
    unsigned long long sums[eOutcomeCount] = {};
    auto const print = [](char const* name, unsigned long long const* n)
    {
        std::printf("| %s | %llu | %llu | %llu | %llu | %llu | %llu |\n", name, n[eTried], n[eWrong], n[eArea],
                    n[eReported], n[eAlarm], n[eCrashed]);
    };
    for (std::size_t family = 0; family < settings.families.size(); ++family)
    {
        unsigned long long row[eOutcomeCount];
        for (int outcome = 0; outcome < eOutcomeCount; ++outcome)
        {
            row[outcome] = CountOf(shared, static_cast<int>(family), static_cast<EOutcome>(outcome));
            sums[outcome] += row[outcome];
        }
        print(settings.families[family].name, row);
    }
    print("all", sums);
    return sums[eWrong] + sums[eArea] + sums[eCrashed] == 0;
}

int Usage()
{
    std::fprintf(
        stderr,
        "truearc_trials [--family NAME,NAME...|all] [--seed S] [--count TRIALS | --operations N] [--only SEED]\n"
        "               [--size SIZE] [--away DISTANCE] [--dump] [--workers N] [--seconds N]\n"
        "families:");
    for (TFamily const & family : AllFamilies())
    {
        std::fprintf(stderr, " %s", family.name);
    }
    std::fprintf(stderr, "\n");
    return 2;
}

/// `list`: names between commas.
bool IsListed(std::string const & list, std::string const & name)
{
    return (',' + list + ',').find(',' + name + ',') != std::string::npos;
}

bool Read(int argc, char** argv, TSettings & settings)
{
    settings.families = AllFamilies();
    settings.workers = static_cast<int>(std::clamp(sysconf(_SC_NPROCESSORS_ONLN), 1L, long{MaxWorkers}));
    for (int i = 1; i < argc; ++i)
    {
        std::string const word = argv[i];
        if (word == "--dump")
        {
            settings.options.isDumping = true;
            continue;
        }
        if (i + 1 == argc) return false;
        std::string const value = argv[++i];
        if (word == "--family" && value != "all")
            std::erase_if(settings.families, [&](TFamily const & family) { return !IsListed(value, family.name); });
        else if (word == "--seed")
            settings.firstSeed = std::strtoull(value.c_str(), nullptr, 10);
        else if (word == "--count")
            settings.count = std::strtoull(value.c_str(), nullptr, 10);
        else if (word == "--operations")
            settings.operations = std::strtoull(value.c_str(), nullptr, 10);
        else if (word == "--only")
            settings.only = std::strtol(value.c_str(), nullptr, 10);
        else if (word == "--size")
            settings.options.size = std::strtod(value.c_str(), nullptr);
        else if (word == "--away")
            settings.options.away = std::strtod(value.c_str(), nullptr);
        else if (word == "--workers")
            settings.workers = std::clamp(std::atoi(value.c_str()), 1, MaxWorkers);
        else if (word == "--seconds")
            settings.secondsPerTrial = static_cast<unsigned>(std::max(1, std::atoi(value.c_str())));
        else if (word != "--family")
            return false;
    }
    return !settings.families.empty();
}

} // namespace

int main(int argc, char** argv)
{
    TSettings settings;
    if (!Read(argc, argv, settings)) return Usage();
    if (settings.only >= 0)
    {
        settings.firstSeed = static_cast<unsigned long long>(settings.only);
        settings.count = 1;
        settings.operations = 0;
    }
    void* const memory = mmap(nullptr, sizeof(TShared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) return 2;
    auto & shared = *new (memory) TShared();
    RunAll(settings, shared);
    return PrintTable(settings, shared) ? 0 : 1;
}
