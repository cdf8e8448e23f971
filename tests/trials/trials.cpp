// Counts, family by family, how often an operation is silently wrong and how often it says that it couldn't do what it was
// asked for. Every trial is made from its seed alone.
// usage: trials [--family NAME] [--seed FIRST] [--count N] [--size S] [--away D] [--jobs J] [--dump]
// Status 1 if anything is silently wrong, crashes or hangs.
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>

#include "families.h"
#if __has_include(<geometry/report/report.h>)
#include <geometry/report/report.h>
#endif

namespace trials
{

namespace
{

unsigned long long ReportCount()
{
    return geometry::CPolygonClipBase<double>::GetGaveUpCount();
}

struct TCounts
{
    unsigned long long tried, wrong, area, reported, crashed;
};

struct TOptions
{
    std::string family;
    unsigned long long seed = 1, count = 1000;
    double size = 0, away = -1;
    int jobs = 2;
    bool isDumping = false;
};

void Print(char const* title, CPolygon const & polygon)
{
    std::printf("%s area %.17g\n", title, polygon.GetArea());
    for (TEdge const & e : ReadFace(polygon).edges)
        if (e.radius > 0)
            std::printf("  arc ccw (%.17g,%.17g)->(%.17g,%.17g) about (%.17g,%.17g)\n", e.a.x, e.a.y, e.b.x, e.b.y, e.centre.x, e.centre.y);
        else
            std::printf("  (%.17g,%.17g)->(%.17g,%.17g)\n", e.a.x, e.a.y, e.b.x, e.b.y);
}

using Rule = bool (*)(int first, int second);
using Container = SelfDestructingContainer<Polygons>;

class CTrial
{
public:
    CTrial(TOptions const & options, std::string const & family, unsigned long long seed, TCounts & counts)
        : m_Options(options), m_Family(family), m_Seed(seed), m_Counts(counts), m_Random(seed)
    {
        double const sizes[] = {1e3, 1e6, 1e8};
        m_Size = options.size > 0 ? options.size : sizes[m_Random.Below(3)];
        m_Away = options.away >= 0 ? options.away : m_Random.Below(4) == 0 ? 1e9 : 0;
        m_Input = MakeInput(family, m_Random, m_Size, m_Away);
    }

    void Run()
    {
        if (m_Input.first.empty() || m_Input.second.empty()) return;
        ReadInput();
        if (m_Options.isDumping)
        {
            for (Owned const & p : m_Input.first) Print("first", *p);
            for (Owned const & p : m_Input.second) Print("second", *p);
        }
        m_Input.isMany ? RunMany() : RunPair();
    }

private:
    void RunPair()
    {
        CPolygon const & a = *m_Input.first[0];
        CPolygon const & b = *m_Input.second[0];
        double const areaA = a.GetArea(), areaB = b.GetArea();
        double areas[5];
        areas[0] = Try("and", [&](Container & r) { return a.IntersectPolygon(r, b); }, [](int i, int j) { return i > 0 && j > 0; });
        areas[1] = Try("or", [&](Container & r) { return a.MergePolygon(r, b); }, [](int i, int j) { return i + j > 0; });
        areas[2] = Try("sub", [&](Container & r) { return a.SubtractPolygon(r, b); }, [](int i, int j) { return i > 0 && j == 0; });
        areas[3] = Try("rsub", [&](Container & r) { return b.SubtractPolygon(r, a); }, [](int i, int j) { return j > 0 && i == 0; });
        areas[4] = Try("xor", [&](Container & r) { return a.XORPolygon(r, b); }, [](int i, int j) { return i != j; });
        double const law[] = {areas[0] + areas[1] - areaA - areaB, areas[2] + areas[0] - areaA, areas[3] + areas[0] - areaB,
                              areas[4] - areas[2] - areas[3]};
        for (int i = 0; i < 4; ++i)
            if (!m_AnyReported && std::fabs(law[i]) > m_AreaTolerance)
            {
                ++m_Counts.area;
                Say("AREA", "law", "off by %.6g of %.6g, tolerated %.3g", law[i], areaA + areaB, m_AreaTolerance);
                break;
            }
    }

    void RunMany()
    {
        ConstPolygons all, second;
        for (Owned const & p : m_Input.second) second.push_back(p.get());
        all = second;
        for (Owned const & p : m_Input.first) all.push_back(p.get());
        CPolygon const & first = *m_Input.first[0];
        Rule const isLeft = [](int i, int j) { return i > 0 && j == 0; };
        double areas[4];
        CPolygon::m_GroupingAmount = 50;
        areas[0] = Try("merge", [&](Container & r) { return CPolygon::MergePolygons(r, second); }, [](int, int j) { return j > 0; });
        areas[1] = Try("merge all", [&](Container & r) { return CPolygon::MergePolygons(r, all); }, [](int i, int j) { return i + j > 0; });
        CPolygon::m_GroupingAmount = 1000000;
        areas[2] = Try("many", [&](Container & r) { return first.SubtractPolygons(r, second, 1); }, isLeft);
        CPolygon::m_GroupingAmount = 1;
        areas[3] = Try("tiles", [&](Container & r) { return first.SubtractPolygons(r, second, 1); }, isLeft);
        CPolygon::m_GroupingAmount = 50;
        if (!m_AnyReported && (std::fabs(areas[1] - areas[0] - areas[2]) > m_AreaTolerance ||
                               std::fabs(areas[2] - areas[3]) > m_AreaTolerance))
        {
            ++m_Counts.area;
            Say("AREA", "law", "merged %.17g, with the first %.17g, left %.17g", areas[0], areas[1], areas[2]);
        }
    }

    void ReadInput()
    {
        double side = 1e300, reach = 0, perimeter = 0;
        bool hasArc = false;
        for (auto* group : {&m_Input.first, &m_Input.second})
            for (Owned const & p : *group)
            {
                (group == &m_Input.first ? m_First : m_Second).push_back(ReadFace(*p));
                auto const & r = p->GetBoundingRect();
                side = std::min({side, r.maxX - r.minX, r.maxY - r.minY});
                reach = std::max({reach, std::fabs(r.minX), std::fabs(r.maxX), std::fabs(r.minY), std::fabs(r.maxY)});
                m_Rect.Include(r);
            }
        for (auto* faces : {&m_First, &m_Second})
            for (TFace const & face : *faces)
                for (TEdge const & e : face.edges)
                {
                    hasArc = hasArc || e.radius > 0;
                    perimeter += e.radius > 0 ? 6.3 * e.radius : std::hypot(e.b.x - e.a.x, e.b.y - e.a.y);
                }
        m_Tolerance = 1e-6 * side + (hasArc ? 0.07 : 0) + 400 * 2.3e-16 * reach;
        m_AreaTolerance = 4 * perimeter * m_Tolerance;
        for (auto* faces : {&m_First, &m_Second})
            for (TFace const & face : *faces) AddSpots(face, 24);
        for (int i = 0; i < 24; ++i)
            AddSpot({m_Random.Between(m_Rect.minX, m_Rect.maxX), m_Random.Between(m_Rect.minY, m_Rect.maxY)}, m_Spots);
    }

    void AddSpots(TFace const & face, int limit) { AddSpots(face, limit, m_Spots); }
    struct TJudged
    {
        TSpot at;
        int first, second;
    };
    void AddSpots(TFace const & face, int limit, std::vector<TJudged> & spots)
    {
        std::size_t const step = face.edges.size() / static_cast<std::size_t>(limit) + 1;
        for (std::size_t i = step > 1 ? m_Random.Next() % step : 0; i < face.edges.size(); i += step)
        {
            TSpot const m = MiddleOf(face.edges[i]), n = NormalOf(face.edges[i]);
            double const off = m_Tolerance * (m_Random.Below(2) ? 2 : std::pow(10, m_Random.Between(0.3, 5)));
            AddSpot({m.x + off * n.x, m.y + off * n.y}, spots);
            AddSpot({m.x - off * n.x, m.y - off * n.y}, spots);
        }
    }
    void AddSpot(TSpot const & p, std::vector<TJudged> & spots)
    {
        TJudged spot{p, 0, 0};
        for (auto* faces : {&m_First, &m_Second})
            for (TFace const & face : *faces)
            {
                if (p.x < face.minX - m_Tolerance || p.x > face.maxX + m_Tolerance || p.y < face.minY - m_Tolerance || p.y > face.maxY + m_Tolerance)
                    continue;
                if (DistanceTo(face, p) <= m_Tolerance) return;
                (faces == &m_First ? spot.first : spot.second) += IsInside(face, p) ? 1 : 0;
            }
        spots.push_back(spot);
    }

    double Try(char const* name, std::function<bool(Container &)> const & run, Rule rule)
    {
        ++m_Counts.tried;
        unsigned long long const before = ReportCount();
        Container result;
        run(result);
        double area = 0;
        for (CPolygon const* p : result) area += p->GetArea();
        if (ReportCount() != before)
        {
            ++m_Counts.reported;
            m_AnyReported = true;
            Say("REPORTED", name, "%.0f entries", double(ReportCount() - before), 0.0, 0.0);
            return area;
        }
        std::vector<TFace> faces;
        std::vector<TJudged> more;
        for (CPolygon const* p : result)
        {
            faces.push_back(ReadFace(*p));
            AddSpots(faces.back(), 16, more);
        }
        for (auto const* spots : {&m_Spots, &more})
            for (TJudged const & spot : *spots)
            {
                int count = 0;
                for (TFace const & face : faces) count += IsInside(face, spot.at) ? 1 : 0;
                if (count != (rule(spot.first, spot.second) ? 1 : 0))
                {
                    ++m_Counts.wrong;
                    Say("WRONG", name, "covered %.0f times at (%.17g, %.17g)", double(count), spot.at.x, spot.at.y);
                    if (m_Options.isDumping)
                        for (CPolygon const* p : result) Print("result", *p);
                    return area;
                }
            }
        return area;
    }

    void Say(char const* kind, char const* name, char const* format, double a, double b, double c)
    {
        char text[200];
        std::snprintf(text, sizeof text, format, a, b, c);
        std::printf("%s %s seed %llu size %g away %g %s: %s\n", kind, m_Family.c_str(), m_Seed, m_Size, m_Away, name, text);
        std::fflush(stdout);
    }

    TOptions const & m_Options;
    std::string m_Family;
    unsigned long long m_Seed;
    TCounts & m_Counts;
    CRandom m_Random;
    double m_Size, m_Away;
    TInput m_Input;
    std::vector<TFace> m_First, m_Second;
    geometry::CBoundingRect<double> m_Rect;
    double m_Tolerance = 0, m_AreaTolerance = 0;
    std::vector<TJudged> m_Spots;
    bool m_AnyReported = false;
};

/// What processes share.
struct TBoard
{
    TCounts counts[8][32];
    unsigned long long seed[8];
};

/// One process's share of a family: a child does the work, and where it dies, another goes on behind that seed.
void RunShare(TOptions const & options, std::size_t family, int job, TBoard & board)
{
    std::string const & name = FamilyNames()[family];
    unsigned long long const end = options.seed + options.count;
    board.seed[job] = options.seed + static_cast<unsigned long long>(job);
    while (board.seed[job] < end)
    {
        pid_t const child = fork();
        if (child == 0)
        {
            for (; board.seed[job] < end; board.seed[job] += static_cast<unsigned long long>(options.jobs))
            {
                alarm(60);
                CTrial(options, name, board.seed[job], board.counts[job][family]).Run();
            }
            std::fflush(stdout);
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        if (status != 0)
        {
            ++board.counts[job][family].crashed;
            std::printf("CRASH %s seed %llu: status %d\n", name.c_str(), board.seed[job], status);
            std::fflush(stdout);
            board.seed[job] += static_cast<unsigned long long>(options.jobs);
        }
    }
}

} // namespace

} // namespace trials

int main(int argc, char** argv)
{
    using namespace trials;
    TOptions options;
    for (int i = 1; i < argc; ++i)
    {
        std::string const key = argv[i];
        if (key == "--dump")
        {
            options.isDumping = true;
            continue;
        }
        if (++i == argc) return 2;
        if (key == "--family") options.family = argv[i];
        else if (key == "--seed") options.seed = std::strtoull(argv[i], nullptr, 10);
        else if (key == "--count") options.count = std::strtoull(argv[i], nullptr, 10);
        else if (key == "--size") options.size = std::atof(argv[i]);
        else if (key == "--away") options.away = std::atof(argv[i]);
        else if (key == "--jobs") options.jobs = std::clamp(std::atoi(argv[i]), 1, 8);
        else return 2;
    }
    auto& board = *static_cast<TBoard*>(mmap(nullptr, sizeof(TBoard), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    std::vector<std::size_t> chosen;
    for (std::size_t f = 0; f < FamilyNames().size(); ++f)
        if (options.family.empty() || FamilyNames()[f] == options.family) chosen.push_back(f);
    std::fflush(stdout);
    std::vector<pid_t> jobs;
    for (int job = 0; job < options.jobs; ++job)
    {
        pid_t const child = fork();
        if (child == 0)
        {
            for (std::size_t const f : chosen) RunShare(options, f, job, board);
            _exit(0);
        }
        jobs.push_back(child);
    }
    bool isRight = true;
    for (pid_t const job : jobs)
    {
        int status = 0;
        waitpid(job, &status, 0);
        isRight = isRight && status == 0;
    }
    std::printf("%-10s %10s %8s %8s %10s %8s\n", "family", "tried", "wrong", "area", "reported", "crashed");
    TCounts sum{};
    auto const print = [](char const* name, TCounts const & c)
    { std::printf("%-10s %10llu %8llu %8llu %10llu %8llu\n", name, c.tried, c.wrong, c.area, c.reported, c.crashed); };
    for (std::size_t const f : chosen)
    {
        TCounts c{};
        for (int job = 0; job < options.jobs; ++job)
            for (auto member : {&TCounts::tried, &TCounts::wrong, &TCounts::area, &TCounts::reported, &TCounts::crashed})
            {
                c.*member += board.counts[job][f].*member;
                sum.*member += board.counts[job][f].*member;
            }
        print(FamilyNames()[f].c_str(), c);
    }
    print("all", sum);
    return isRight && sum.wrong == 0 && sum.area == 0 && sum.crashed == 0 ? 0 : 1;
}
