// The shapes that are worked on, and the list of all workloads with their sizes and targets.

#include "workloads.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <random>
#include <stdexcept>

namespace bench
{
namespace
{

using geometry::CPathObjectArc;
using geometry::CPathObjectBase;
using geometry::CPathObjectPolyline;
using geometry::CPolygon;
using CObjects = std::vector<CPathObjectBase*>;
using CPoints = std::vector<CPoint>;
using CResult = SelfDestructingContainer<std::vector<CPolygon*>>;

constexpr double Pi = 3.14159265358979323846;
constexpr double Large = 1e8; // the radius of large outlines

CPoint At(CPoint const & centre, double radius, double angle)
{
    return {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
}

std::unique_ptr<CPolygon> FromObjects(CObjects const & objects)
{
    return std::make_unique<CPolygon>(objects.begin(), objects.end());
}

template <typename... T>
CPolygons List(T... polygons)
{
    CPolygons list;
    (list.push_back(std::move(polygons)), ...);
    return list;
}

// --- stars: points around a circle, at distances that wobble ---

CPoints MakeStar(int count, unsigned int seed, double wobble, double phase, double shift)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    CPoints points;
    for (int i = 0; i < count; ++i)
    {
        double const radius = Large * (1.0 + wobble * unit(random));
        points.push_back(At({shift, 0.0}, radius, 2.0 * Pi * (i + phase) / count));
    }
    points.push_back(points.front());
    return points;
}

std::unique_ptr<CPolygon> OnePolyline(CPoints const & points)
{
    return std::make_unique<CPolygon>(new CPathObjectPolyline(points.begin(), points.end()));
}

std::unique_ptr<CPolygon> SingleSegments(CPoints const & points)
{
    CObjects objects;
    for (std::size_t i = 0; i + 1 < points.size(); ++i)
    {
        objects.push_back(new CPathObjectPolyline(points[i], points[i + 1]));
    }
    return FromObjects(objects);
}

/// In and out by 0.4 of the way to the next point: outlines look alike from near, whatever their size.
double Wobble(int count)
{
    return 0.4 * 2.0 * Pi / count;
}

/// Two stars that cross about 0.55 times a vertex, whatever the wobble.
CWorkload Stars(int count, double wobble, std::unique_ptr<CPolygon> (*make)(CPoints const &))
{
    return {.first = List(make(MakeStar(count, 1, wobble, 0.0, 0.0))),
            .second = List(make(MakeStar(count, 2, wobble, 0.37, 0.0)))};
}

/// Twice up to `Wobble`: the circles meet at 81 degrees, and edges lean by at most 39 from their circle.
CWorkload CrossingTwice(int count, double wobble)
{
    return {.operation = EOperation::eUnion,
            .first = List(OnePolyline(MakeStar(count, 1, wobble, 0.0, 0.0))),
            .second = List(OnePolyline(MakeStar(count, 2, wobble, 0.37, 1.3 * Large)))};
}

/// 100,000 questions to one star.
CWorkload PointsInStar(int count)
{
    CWorkload workload{.operation = EOperation::ePoints,
                       .first = List(OnePolyline(MakeStar(count, 1, Wobble(count), 0.0, 0.0)))};
    std::mt19937 random(3);
    std::uniform_real_distribution<double> coordinate(-1.3 * Large, 1.3 * Large);
    for (int i = 0; i < 100000; ++i)
    {
        double const x = coordinate(random);
        workload.points.emplace_back(x, coordinate(random));
    }
    return workload;
}

CWorkload StarsApart(int count)
{
    return {.operation = EOperation::eDistance,
            .first = List(OnePolyline(MakeStar(count, 1, Wobble(count), 0.0, 0.0))),
            .second = List(OnePolyline(MakeStar(count, 2, Wobble(count), 0.37, 2.1 * Large)))};
}

// --- rings of many path objects ---

/// Flowers: corners around a circle, joined by turns with a segment and with a half circle outward.
std::unique_ptr<CPolygon> MakeFlower(CPoint const & centre, double radius, int count, double phase)
{
    CObjects objects;
    CPoint from = At(centre, radius, 2.0 * Pi * phase / count);
    for (int i = 1; i <= count; ++i)
    {
        CPoint const to = At(centre, radius, 2.0 * Pi * (i % count + phase) / count);
        CPoint const middle(0.5 * (from.x + to.x), 0.5 * (from.y + to.y));
        objects.push_back(i % 2 == 0 ? static_cast<CPathObjectBase*>(new CPathObjectArc(from, to, middle, true))
                                     : new CPathObjectPolyline(from, to));
        from = to;
    }
    return FromObjects(objects);
}

/// Two flowers, turned and shifted by parts of a petal against each other, so that they cross all around.
CWorkload Flowers(int count, EOperation operation)
{
    double const petal = 2.0 * Pi * Large / count;
    return {.operation = operation,
            .first = List(MakeFlower({0.0, 0.0}, Large, count, 0.0)),
            .second = List(MakeFlower({0.37 * petal, 0.23 * petal}, Large, count, 0.7))};
}

/// Root and tip arcs about one centre, joined by flanks: 4 path objects a tooth.
std::unique_ptr<CPolygon> MakeGear(CPoint const & centre, int teeth, double phase)
{
    double const root = 900000.0;
    double const tip = 1000000.0;
    double const pitch = 2.0 * Pi / teeth;
    CObjects objects;
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
    return FromObjects(objects);
}

CWorkload Gears(int teeth)
{
    return {.first = List(MakeGear({0.0, 0.0}, teeth, 0.0)),
            .second = List(MakeGear({31000.0, 17000.0}, teeth, 0.3 / teeth))};
}

// --- growing and shrinking, by 0.3 of the mean length of a path object ---

/// Corners that lie by turns far from the middle and near it, each edge an object of its own.
CWorkload InflatedZigzag(int count, double sign)
{
    CPoints points;
    for (int i = 0; i <= count; ++i)
    {
        points.push_back(At({0.0, 0.0}, i % 2 == 0 ? Large : 0.9 * Large, 2.0 * Pi * (i % count) / count));
    }
    return {.operation = EOperation::eInflate,
            .first = List(SingleSegments(points)),
            .amount = sign * 0.3 * 2.0 * Pi * Large / count};
}

CWorkload InflatedFlower(int count, double sign)
{
    return {.operation = EOperation::eInflate,
            .first = List(MakeFlower({0.0, 0.0}, Large, count, 0.0)),
            .amount = sign * 0.3 * 2.0 * Pi * Large / count};
}

/// Half of the `count` path objects make a large flower, the others flowers of 20 each, which are holes in it.
CWorkload ShrunkWithHoles(int count)
{
    int const perHole = 20;
    int const holes = count / 2 / perHole;
    int const columns = static_cast<int>(std::ceil(std::sqrt(holes)));
    double const pitch = 1.2 * Large / columns;
    CWorkload workload = InflatedFlower(count - holes * perHole, -1.0);
    for (int i = 0; i < holes; ++i)
    {
        CPoint const middle(-0.6 * Large + (i % columns + 0.5) * pitch, -0.6 * Large + (i / columns + 0.5) * pitch);
        auto const hole = MakeFlower(middle, 0.3 * pitch, perHole, 0.0);
        std::vector<CPolygon*> extra;
        workload.first.front()->AddHole(hole.get(), nullptr, nullptr, extra);
    }
    return workload;
}

// --- many small shapes ---

/// The points within `radius` of a segment.
std::unique_ptr<CPolygon> MakeStadium(CPoint const & from, CPoint const & to, double radius)
{
    double const length = std::hypot(to.x - from.x, to.y - from.y);
    double const nx = -radius * (to.y - from.y) / length;
    double const ny = radius * (to.x - from.x) / length;
    CPoint const a(from.x - nx, from.y - ny);
    CPoint const b(to.x - nx, to.y - ny);
    CPoint const c(to.x + nx, to.y + ny);
    CPoint const d(from.x + nx, from.y + ny);
    return FromObjects({new CPathObjectPolyline(a, b), new CPathObjectArc(b, c, to, true),
                        new CPathObjectPolyline(c, d), new CPathObjectArc(d, a, from, true)});
}

std::unique_ptr<CPolygon> MakeDisc(CPoint const & centre, double radius)
{
    return std::make_unique<CPolygon>(new CPathObjectArc(centre, radius));
}

std::unique_ptr<CPolygon> MakeRoundRect(CPoint const & centre, double width, double height)
{
    geometry::CBoundingRect<double> const rect(centre.x - 0.5 * width, centre.y - 0.5 * height, centre.x + 0.5 * width,
                                               centre.y + 0.5 * height);
    return std::unique_ptr<CPolygon>(
        CPathObjectPolyline::RoundRectAsPolygon(rect, 0.25 * std::min(width, height), 0.0));
}

/// Discs and stadiums of radius 10,000 in a square so large that they would cover `cover` of it if they lay side by
/// side: little of it for clusters of a few, twice of it for one that holds nearly all.
CWorkload Scattered(int count, double cover)
{
    double const radius = 10000.0;
    double const side = std::sqrt(count * 8.0 / cover) * radius;
    std::mt19937_64 random(4711);
    std::uniform_real_distribution<double> place(0.0, side);
    std::uniform_real_distribution<double> offset(-5.0 * radius, 5.0 * radius);
    CWorkload workload{.operation = EOperation::eMergeAll};
    for (int i = 0; i < count; ++i)
    {
        CPoint const at(place(random), place(random));
        workload.first.push_back(i % 2 == 0 ? MakeDisc(at, radius)
                                            : MakeStadium(at, {at.x + offset(random), at.y + offset(random)}, radius));
    }
    return workload;
}

/// A rectangular board less stadiums, discs and rounded rectangles, 1e5 to 3e6 long and most of them short. The side is
/// 1e8 for 10,000 shapes and grows with their root, so that a fifteenth of the board is covered: most shapes lie alone.
CWorkload Board(int count, unsigned int workers)
{
    double const side = 1e8 * std::sqrt(count / 10000.0);
    std::mt19937_64 random(815);
    std::uniform_real_distribution<double> place(0.0, side);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    CPoints const corners{{0.0, 0.0}, {side, 0.0}, {side, side}, {0.0, side}, {0.0, 0.0}};
    CWorkload workload{.operation = EOperation::eSubtractAll, .first = List(OnePolyline(corners)), .workers = workers};
    for (int i = 0; i < count; ++i)
    {
        double const size = 1e5 * std::pow(1.0 - unit(random) * (1.0 - std::pow(30.0, -1.5)), -1.0 / 1.5);
        double const width = size * (0.2 + 0.5 * unit(random));
        double const angle = 2.0 * Pi * unit(random);
        CPoint const at(place(random), place(random));
        workload.second.push_back(i % 3 == 0   ? MakeStadium(at, At(at, size - width, angle), 0.5 * width)
                                  : i % 3 == 1 ? MakeDisc(at, 0.5 * size)
                                               : MakeRoundRect(at, size, width));
    }
    return workload;
}

// --- running ---

std::vector<CPolygon const*> Addresses(CPolygons const & polygons)
{
    std::vector<CPolygon const*> addresses;
    for (auto const & polygon : polygons)
    {
        addresses.push_back(polygon.get());
    }
    return addresses;
}

bool RunOperation(CWorkload const & workload, std::vector<CPolygon const*> const & many, CResult & result)
{
    CPolygon const & first = *workload.first.front();
    switch (workload.operation)
    {
    case EOperation::eDifference:
        return first.SubtractPolygon(result, *workload.second.front());
    case EOperation::eIntersection:
        return first.IntersectPolygon(result, *workload.second.front());
    case EOperation::eUnion:
        return first.MergePolygon(result, *workload.second.front());
    case EOperation::eMergeAll:
        return CPolygon::MergePolygons(result, many);
    case EOperation::eSubtractAll:
        return first.SubtractPolygons(result, many, workload.workers);
    default:
        first.GetInflatedPolygon(result, workload.amount);
        return !result.empty();
    }
}

COutcome RunPoints(CWorkload const & workload)
{
    CPolygon const polygon(*workload.first.front());
    COutcome outcome;
    CStopwatch const watch(workload);
    for (auto const & point : workload.points)
    {
        outcome.value += polygon.PointInPolygon(point.x, point.y) ? 1.0 : 0.0;
    }
    outcome.milliseconds = watch.Milliseconds();
    return outcome;
}

COutcome RunDistance(CWorkload const & workload)
{
    CPolygon const first(*workload.first.front());
    CPolygon const second(*workload.second.front());
    CPoint onFirst;
    CPoint onSecond;
    CStopwatch const watch(workload);
    double const square = first.SquareDistanceToPolygon(second, false, false, onFirst, onSecond);
    return {.milliseconds = watch.Milliseconds(), .value = std::sqrt(square)};
}

std::vector<CSeries> MakeSeries()
{
    constexpr double Spiky = 0.003; // 50 times the way to the next point at n = 100,000
    constexpr double Sparse = 0.15;
    constexpr double Dense = 2.0;
    auto const stars = [](int n) { return Stars(n, Wobble(n), OnePolyline); };
    auto const loose = [](int n) { return Stars(n, Wobble(n), SingleSegments); };
    auto const spiky = [](int n) { return Stars(n, Spiky, OnePolyline); };
    auto const twice = [](int n) { return CrossingTwice(n, Wobble(n)); };
    auto const smooth = [](int n) { return CrossingTwice(n, 0.0); };
    auto const shared = [](int n) { return Flowers(n, EOperation::eIntersection); };
    auto const less = [](int n) { return Flowers(n, EOperation::eDifference); };
    auto const board = [](int n) { return Board(n, 1); };
    auto const boardByTwo = [](int n) { return Board(n, 2); };
    auto const sparse = [](int n) { return Scattered(n, Sparse); };
    auto const dense = [](int n) { return Scattered(n, Dense); };
    std::vector<int> const small{10, 100, 1000};
    std::vector<int> const medium{100, 1000, 10000};
    std::vector<int> const large{1000, 10000, 100000};
    std::vector<int> const wide{100, 1000, 10000, 100000};
    std::vector<int> const huge{1000, 10000, 100000, 1000000};
    std::vector<CRival> const starRivals{{"Clipper", 1.5}, {"Boost"}};
    std::vector<CRival> const flowerRivals{{"GEOS", 0.25}, {"GEOS, finer"}, {"CGAL", 0.08}, {"Boost"}};
    std::vector<CRival> const anyRatio{{"GEOS"}, {"CGAL"}};
    // clang-format off
    return {
        {"StarsOnePolyline", "difference of two stars, one polyline each", stars, wide, starRivals, 1.15},
        {"StarsSingleSegments", "difference of two stars, n segments each", loose, wide, {{"Clipper"}}},
        {"StarsSpiky", "difference of two spiky stars, one polyline each", spiky, large, {{"Clipper"}}},
        {"CrossingTwice", "union of two stars that cross twice", twice, huge, {{"GEOS", 0.6}, {"Boost"}}, 1.15},
        {"CrossingSmooth", "union of two circles of chords", smooth, huge, {{"GEOS"}}},
        {"FlowersIntersect", "intersection of two flowers", shared, medium, flowerRivals, 1.2},
        {"FlowersSubtract", "difference of two flowers", less, medium, flowerRivals, 1.2},
        {"BoardOneWorker", "board less n shapes, 1 worker", board, medium, anyRatio},
        {"BoardTwoWorkers", "board less n shapes, 2 workers", boardByTwo, medium, {{"GEOS", 0.25}, {"CGAL", 0.25}}, 1.2},
        {"MergeSparse", "merge of n shapes in clusters", sparse, medium, {{"CGAL", 0.5}}, 1.3},
        {"MergeDense", "merge of n shapes, nearly all in one", dense, medium, {{"GEOS", 1.0}}, 1.4},
        {"ShrinkWithHoles", "shrinking a flower with holes", ShrunkWithHoles, medium, {{"GEOS", 0.5}}, 1.3},
        {"PointsInStar", "100,000 point questions to a star", PointsInStar, large, {{"GEOS", 3.0}}},
        {"StarsApart", "distance of two stars", StarsApart, large, {{"GEOS", 3.0}}},
        {"Gears", "", Gears, {100, 1000}, {}},
        {"GrowZigzag", "", [](int n) { return InflatedZigzag(n, 1.0); }, small, {}},
        {"ShrinkZigzag", "", [](int n) { return InflatedZigzag(n, -1.0); }, small, {}},
        {"GrowFlower", "", [](int n) { return InflatedFlower(n, 1.0); }, small, {}},
        {"ShrinkFlower", "", [](int n) { return InflatedFlower(n, -1.0); }, small, {}},
    };
    // clang-format on
}

} // namespace

CStopwatch::CStopwatch(CWorkload const & workload) : m_IsOnTheClock(workload.workers > 1), m_Began(0.0)
{
    m_Began = Milliseconds();
}

double CStopwatch::Milliseconds() const
{
    std::chrono::duration<double, std::milli> const now = std::chrono::steady_clock::now().time_since_epoch();
    return (m_IsOnTheClock ? now.count() : 1e3 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC) - m_Began;
}

COutcome Run(CWorkload const & workload)
{
    if (workload.operation == EOperation::ePoints) return RunPoints(workload);
    if (workload.operation == EOperation::eDistance) return RunDistance(workload);
    auto const many = Addresses(workload.second.empty() ? workload.first : workload.second);
    CResult result;
    CStopwatch const watch(workload);
    bool const isDone = RunOperation(workload, many, result);
    COutcome outcome{.milliseconds = watch.Milliseconds(), .pieces = result.size()};
    if (!isDone) throw std::runtime_error("the operation failed");
    for (CPolygon const* polygon : result)
    {
        outcome.value += polygon->GetArea();
    }
    return outcome;
}

std::vector<CSeries> const & GetSeries()
{
    static std::vector<CSeries> const series = MakeSeries();
    return series;
}

} // namespace bench
