// The operations of the library, one function each: run it, hand what came of it to the judge. A failing operation is
// told in one line that names the seed; with --dump its operands follow as shapes.
#include "trial.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "band.h"
#include "watch.h"

namespace trials
{

namespace
{

double TotalArea(std::vector<CPolygon*> const & polygons)
{
    double area = 0.0;
    for (CPolygon const* polygon : polygons)
    {
        area += polygon->GetArea();
    }
    return area;
}

bool InFirstOnly(bool a, bool b)
{
    return a && !b;
}
bool InBoth(bool a, bool b)
{
    return a && b;
}
bool InOne(bool a, bool b)
{
    return a != b;
}
bool InAny(bool a, bool b)
{
    return a || b;
}
bool InSecondOnly(bool a, bool b)
{
    return b && !a;
}

struct TBoolean
{
    char const* name;
    bool (CPolygon::*run)(std::vector<CPolygon*> &, CPolygon const &) const;
    Rule rule;
    bool isSwapped;
};

constexpr TBoolean Booleans[] = {{"SubtractPolygon", &CPolygon::SubtractPolygon, InFirstOnly, false},
                                 {"IntersectPolygon", &CPolygon::IntersectPolygon, InBoth, false},
                                 {"XORPolygon", &CPolygon::XORPolygon, InOne, false},
                                 {"MergePolygon", &CPolygon::MergePolygon, InAny, false},
                                 {"SubtractPolygon(swapped)", &CPolygon::SubtractPolygon, InSecondOnly, true}};

std::string Text(TFault const & fault)
{
    char text[200];
    std::snprintf(text, sizeof text, "at (%.17g,%.17g) covered %d times, should be %d; %.3g from the operands",
                  fault.at.x, fault.at.y, fault.count, fault.isMember ? 1 : 0, fault.distance);
    return text;
}

/// Three sizes, and a quarter of the trials far away.
double SizeOf(std::uint64_t seed, TOptions const & options)
{
    double const sizes[] = {1e3, 1e6, 1e8};
    return options.size > 0.0 ? options.size : sizes[seed % 3];
}

} // namespace

CTrial::CTrial(std::string family, std::uint64_t seed, TOptions const & options, unsigned long long* counts)
    : random(seed * 0x2545F4914F6CDD1DU + 0x1234567U), size(SizeOf(seed, options)), m_Family(std::move(family)),
      m_Seed(seed), m_Options(options), m_Counts(counts)
{
    double const away = options.away >= 0.0 ? options.away : (seed / 3) % 4 == 0 ? 1e9 : 0.0;
    int const corner = static_cast<int>((seed / 12) % 4);
    m_Place = {corner % 2 == 0 ? away : -away, corner / 2 == 0 ? away : -away};
}

Owned CTrial::Make(Shape const & shape) const
{
    return geometry::test::MakePolygon(geometry::test::Mapped(shape, 1.0, 0.0, m_Place.x, m_Place.y));
}

// --- judging ---

bool CTrial::Note(TFinding const & finding, CWatch const & watch, Polygons const & a, Polygons const & b)
{
    bool const isReported = !finding.isDone || !watch.IsComplete();
    bool const isRight = finding.text.empty();
    if (isRight && !isReported) return true;
    Count(isReported ? eReported : finding.kind);
    if (isReported && isRight) Count(eAlarm);
    char const* const kind = isReported ? isRight ? "ALARM" : "REPORTED" : finding.kind == eArea ? "AREA" : "WRONG";
    std::string const why = (finding.isDone ? "" : " false") + (watch.IsComplete() ? "" : watch.Describe());
    std::string line = std::string(kind) + ' ' + m_Family + " seed=" + std::to_string(m_Seed) +
                       " edges=" + std::to_string(finding.edgeCount);
    char text[200];
    std::snprintf(text, sizeof text, " size=%g at=(%g,%g) ", size, m_Place.x, m_Place.y);
    line += text + std::string(finding.name) + ": " + finding.text + why + finding.input + '\n';
    if (m_Options.isDumping)
    {
        for (CPolygon const* polygon : a)
        {
            line += "  A " + PrintShape(geometry::test::ShapeOf(*polygon)) + '\n';
        }
        for (CPolygon const* polygon : b)
        {
            line += "  B " + PrintShape(geometry::test::ShapeOf(*polygon)) + '\n';
        }
        for (CPolygon const* polygon : finding.result)
        {
            line += "  = " + PrintShape(geometry::test::ShapeOf(*polygon)) + '\n';
        }
    }
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fflush(stdout);
    return false;
}

bool CTrial::Judge(char const* name, CScene const & scene, Rule rule, Operation const & operation, Polygons const & a,
                   Polygons const & b, Results & result)
{
    Count(eTried);
    CWatch const watch;
    TFinding finding;
    finding.name = name;
    finding.isDone = operation(result);
    finding.edgeCount = scene.GetFirst().edgeCount + scene.GetSecond().edgeCount;
    finding.result = Listed(result);
    TFault const fault = scene.Check(finding.result, rule);
    if (fault.isFound) finding.text = Text(fault);
    for (CPolygon const* polygon : result)
    {
        if (!finding.text.empty() || polygon->GetArea() >= -scene.GetAreaTolerance()) continue;
        finding.kind = eArea;
        finding.text = "area " + std::to_string(polygon->GetArea());
    }
    return Note(finding, watch, a, b);
}

// --- booleans ---

bool CTrial::Boolean(int kind, CPolygon const & a, CPolygon const & b, Results & result)
{
    CScene const scene({&a}, {&b}, Fork());
    return RunBoolean(scene, kind, a, b, result);
}

bool CTrial::RunBoolean(CScene const & scene, int kind, CPolygon const & a, CPolygon const & b, Results & result)
{
    TBoolean const & boolean = trials::Booleans[kind];
    CPolygon const & first = boolean.isSwapped ? b : a;
    CPolygon const & second = boolean.isSwapped ? a : b;
    return Judge(
        boolean.name, scene, boolean.rule, [&](Results & pieces) { return (first.*boolean.run)(pieces, second); }, {&a},
        {&b}, result);
}

bool CTrial::Booleans(CPolygon const & a, CPolygon const & b)
{
    CScene const scene({&a}, {&b}, Fork());
    bool isRight = true;
    double areas[5] = {};
    for (int kind = 0; kind < 5; ++kind)
    {
        Results result;
        isRight = RunBoolean(scene, kind, a, b, result) && isRight;
        areas[kind] = TotalArea(result);
    }
    return isRight && CheckAreas(scene, a, b, areas);
}

bool CTrial::CheckAreas(CScene const & scene, CPolygon const & a, CPolygon const & b, double const (&areas)[5])
{
    double const first = a.GetArea();
    double const second = b.GetArea();
    double const offs[] = {first - areas[1] - areas[0], first + second - 2.0 * areas[1] - areas[2],
                           first + second - areas[1] - areas[3], second - areas[1] - areas[4]};
    char const* const laws[] = {"a - b", "a xor b", "a or b", "b - a"};
    for (int law = 0; law < 4; ++law)
    {
        if (std::abs(offs[law]) <= scene.GetAreaTolerance()) continue;
        char text[200];
        std::snprintf(text, sizeof text, "%s is off by %.6g; areas %.17g, %.17g, and %.17g", laws[law], offs[law],
                      first, second, areas[1]);
        TFinding finding;
        finding.name = "areas";
        finding.text = text;
        finding.kind = eArea;
        finding.edgeCount = scene.GetFirst().edgeCount + scene.GetSecond().edgeCount;
        return Note(finding, CWatch(), {&a}, {&b});
    }
    return true;
}

bool CTrial::Area(CPolygon const & polygon)
{
    CScene const scene({&polygon}, {}, Fork());
    Count(eTried);
    CWatch const watch;
    double const area = polygon.GetArea();
    double const right = SimpleArea(scene.GetFirst().faces.front());
    TFinding finding;
    finding.name = "GetArea";
    finding.kind = eArea;
    finding.edgeCount = scene.GetFirst().edgeCount;
    if (!(std::abs(area - right) <= scene.GetAreaTolerance()))
        finding.text = std::to_string(area) + " for " + std::to_string(right);
    return Note(finding, watch, {&polygon}, {});
}

// --- many ---

bool CTrial::MergeMany(Polygons const & polygons, Results & result)
{
    CScene const scene(polygons, {}, Fork());
    return Judge(
        "MergePolygons", scene, InAny, [&](Results & pieces) { return CPolygon::MergePolygons(pieces, polygons); },
        polygons, {}, result);
}

bool CTrial::SubtractMany(CPolygon const & board, Polygons const & polygons, unsigned grouping, unsigned workers,
                          Results & result)
{
    CScene const scene({&board}, polygons, Fork());
    unsigned const before = CPolygon::m_GroupingAmount;
    CPolygon::m_GroupingAmount = grouping;
    char const* const name = grouping > polygons.size() ? "SubtractPolygons(untiled)"
                             : workers == 1             ? "SubtractPolygons(tiled)"
                                                        : "SubtractPolygons(tiled,workers)";
    bool const isRight = Judge(
        name, scene, InFirstOnly, [&](Results & pieces) { return board.SubtractPolygons(pieces, polygons, workers); },
        {&board}, polygons, result);
    CPolygon::m_GroupingAmount = before;
    return isRight;
}

bool CTrial::Tile(CPolygon const & polygon)
{
    CScene const scene({&polygon}, {}, Fork());
    auto const & rect = polygon.GetBoundingRect();
    double const side = std::max(rect.maxX - rect.minX, rect.maxY - rect.minY);
    auto const count = static_cast<unsigned>(std::max(1.0, side / random.Real(2.0, 6.0) / 2e6));
    auto const operation = [&](Results & pieces)
    {
        polygon.TilePolygon(count, pieces);
        return true;
    };
    Results result;
    return Judge("TilePolygon", scene, InAny, operation, {&polygon}, {}, result);
}

bool CTrial::AddHoles(CPolygon const & polygon, Polygons const & holes)
{
    Owned present = std::make_unique<CPolygon>(polygon);
    for (CPolygon const* hole : holes)
    {
        CScene const scene({present.get()}, {hole}, Fork());
        auto const operation = [&](Results & pieces)
        {
            auto next = std::make_unique<CPolygon>(*present);
            next->AddHole(hole, nullptr, nullptr, pieces);
            pieces.push_back(next.release());
            return true;
        };
        Results result;
        if (!Judge("AddHole", scene, InFirstOnly, operation, {present.get()}, {hole}, result)) return false;
        present.reset(result.back());
        result.pop_back();
    }
    return true;
}

// --- bands and distances ---

bool CTrial::Grow(CPolygon const & polygon, double amount, Results & result)
{
    Count(eTried);
    CWatch const watch;
    polygon.GetInflatedPolygon(result, amount);
    CBand const band(polygon, amount, Fork());
    TFinding finding;
    finding.name = amount > 0.0 ? "GetInflatedPolygon(grown)" : "GetInflatedPolygon(shrunk)";
    finding.edgeCount = band.GetSource().edgeCount;
    finding.result = Listed(result);
    finding.text = band.Check(finding.result);
    if (!finding.text.empty()) finding.text += " amount " + std::to_string(amount);
    return Note(finding, watch, {&polygon}, {});
}

bool CTrial::InflatePath(geometry::CPathObjectBase const & path, double distance)
{
    Count(eTried);
    CWatch const watch;
    Owned const polygon(path.GetInflatePolygon(distance));
    CBand const band(path, distance, Fork());
    TFinding finding;
    finding.name = "GetInflatePolygon";
    finding.edgeCount = band.GetSource().edgeCount;
    finding.isDone = polygon != nullptr;
    if (polygon != nullptr) finding.result = {polygon.get()};
    finding.text = band.Check(finding.result);
    finding.input = DescribePath(path, distance);
    return Note(finding, watch, {}, {});
}

bool CTrial::Distances(CPolygon const & a, CPolygon const & b)
{
    CScene const scene({&a}, {&b}, Fork());
    Count(eTried);
    CWatch const watch;
    TFinding finding;
    finding.name = "distances";
    finding.edgeCount = scene.GetFirst().edgeCount + scene.GetSecond().edgeCount;
    finding.text = CheckDistances(a, b, scene, random);
    return Note(finding, watch, {&a}, {&b});
}

Polygons Listed(std::vector<Owned> const & polygons)
{
    Polygons list;
    for (Owned const & polygon : polygons)
    {
        list.push_back(polygon.get());
    }
    return list;
}

Polygons Listed(std::vector<CPolygon*> const & polygons)
{
    return {polygons.begin(), polygons.end()};
}

} // namespace trials
