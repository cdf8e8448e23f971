// copper_pour_judge CLEARANCE_MM SHAPES FIRST_SEED LAST_SEED | copper_pour_judge CLEARANCE_MM BOARD.kicad_pcb LAYER
//
// Judges pours at random points by formulas that share nothing with the library: a point belongs to the pour if and
// only if it lies on the board and is farther than the clearance from every obstacle. Points whose distance is a matter
// of rounding are left out. Prints a line a board; exit status 1 if a region is wrong.

#include "copper_pour/arc_geometry.h"
#include "copper_pour/board_generator.h"
#include "copper_pour/board_reader.h"
#include "copper_pour/outline.h"
#include "copper_pour/pour.h"
#include "copper_pour/shapes.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <random>

namespace
{

using namespace copper_pour;

constexpr int SamplesPerBoard = 20000;
constexpr double Unclear = 30.0;  // nanometres: arcs end where coordinates were rounded
constexpr double TileSide = 24e6; // the squares in which large subtractions work, from the lower left corner on
constexpr double OnBorder = 2.0;  // nanometres

double DistanceToSegment(CPoint const & p, CPoint const & a, CPoint const & b)
{
    double const dx = b.x - a.x, dy = b.y - a.y;
    double const square = dx * dx + dy * dy;
    double const t = square > 0.0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / square : 0.0;
    double const clamped = std::clamp(t, 0.0, 1.0);
    return std::hypot(p.x - a.x - clamped * dx, p.y - a.y - clamped * dy);
}

/// The angle from `a` to `b` about `centre`, counter-clockwise, in [0, 2 pi).
double AngleBetween(CPoint const & centre, CPoint const & a, CPoint const & b)
{
    double const angle = std::atan2(b.y - centre.y, b.x - centre.x) - std::atan2(a.y - centre.y, a.x - centre.x);
    return angle < 0.0 ? angle + 2.0 * Pi : angle;
}

bool IsInSweep(CPoint const & p, CPoint const & start, CPoint const & end, CPoint const & centre,
               bool isCounterClockwise)
{
    CPoint const & from = isCounterClockwise ? start : end;
    CPoint const & to = isCounterClockwise ? end : start;
    return AngleBetween(centre, from, p) <= AngleBetween(centre, from, to);
}

double DistanceToArc(CPoint const & p, CObstacle const & o)
{
    if (!IsInSweep(p, o.start, o.end, o.centre, o.isCounterClockwise))
        return std::min(Distance(p, o.start), Distance(p, o.end));
    return std::fabs(Distance(p, o.centre) - Distance(o.start, o.centre));
}

/// Below 0 within.
double DistanceToRoundRect(CPoint const & p, CObstacle const & o)
{
    double const dx = p.x - o.centre.x, dy = p.y - o.centre.y;
    double const along = std::fabs(dx * std::cos(o.angle) + dy * std::sin(o.angle)) - (0.5 * o.width - o.radius);
    double const across = std::fabs(dy * std::cos(o.angle) - dx * std::sin(o.angle)) - (0.5 * o.height - o.radius);
    double const outside = std::hypot(std::max(along, 0.0), std::max(across, 0.0));
    return outside + std::min(std::max(along, across), 0.0) - o.radius;
}

double DistanceTo(CPoint const & p, CObstacle const & o)
{
    switch (o.kind)
    {
    case CObstacle::EKind::eArcTrack:
        return DistanceToArc(p, o) - o.radius;
    case CObstacle::EKind::eRoundRect:
        return DistanceToRoundRect(p, o);
    case CObstacle::EKind::eStadium:
        break;
    }
    return DistanceToSegment(p, o.start, o.end) - o.radius;
}

/// How often a ray from `p` to the right crosses the piece, and in `toEdge` the distance to it if that is smaller.
int Crossings(CPoint const & p, COutlinePiece const & piece, double & toEdge)
{
    CPoint const & a = piece.start;
    CPoint const & b = piece.end;
    if (piece.kind == COutlinePiece::EKind::eSegment)
    {
        toEdge = std::min(toEdge, DistanceToSegment(p, a, b));
        if ((a.y > p.y) == (b.y > p.y)) return 0;
        return a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x) > p.x ? 1 : 0;
    }
    double const radius = Distance(a, piece.centre);
    bool const isCircle = piece.kind == COutlinePiece::EKind::eCircle;
    auto const isOnPiece = [&](CPoint const & q)
    { return isCircle || IsInSweep(q, a, b, piece.centre, piece.isCounterClockwise); };
    if (isOnPiece(p)) toEdge = std::min(toEdge, std::fabs(Distance(p, piece.centre) - radius));
    toEdge = std::min({toEdge, Distance(p, a), Distance(p, b)});
    double const dy = p.y - piece.centre.y;
    if (std::fabs(dy) >= radius) return 0;
    double const dx = std::sqrt((radius - dy) * (radius + dy));
    int count = 0;
    for (double const x : {piece.centre.x - dx, piece.centre.x + dx})
    {
        if (x > p.x && isOnPiece(CPoint(x, p.y))) ++count;
    }
    return count;
}

/// Whether the point has to be in the pour; nothing where it is too close to say.
std::optional<bool> IsExpected(CPoint const & p, CBoard const & board, double clearance)
{
    double toEdge = 1e300;
    int crossings = 0;
    for (COutlinePiece const & piece : board.outline)
    {
        crossings += Crossings(p, piece, toEdge);
    }
    double toCopper = 1e300;
    for (CObstacle const & obstacle : board.obstacles)
    {
        toCopper = std::min(toCopper, DistanceTo(p, obstacle) - clearance);
    }
    if (toEdge < SnapDistance || std::fabs(toCopper) < Unclear) return std::nullopt;
    return crossings % 2 == 1 && toCopper > 0.0;
}

double Uniform(std::mt19937_64 & random, double low, double high)
{
    return low + (high - low) * static_cast<double>(random() >> 11) * 0x1p-53;
}

/// Anywhere, around an obstacle, or next to the border of a tile.
CPoint Sample(std::mt19937_64 & random, CBoard const & board, geometry::CBoundingRect<double> const & box,
              double clearance)
{
    CPoint p(Uniform(random, box.minX, box.maxX), Uniform(random, box.minY, box.maxY));
    switch (random() % 3)
    {
    case 0:
        if (!board.obstacles.empty())
        {
            auto const shape = MakeShape(board.obstacles[random() % board.obstacles.size()], 1.1 * clearance);
            auto const & around = shape->GetBoundingRect();
            p = CPoint(Uniform(random, around.minX, around.maxX), Uniform(random, around.minY, around.maxY));
        }
        break;
    case 1:
        if (random() % 2 == 0)
        {
            p.x = box.minX + std::round((p.x - box.minX) / TileSide) * TileSide + Uniform(random, -100.0, 100.0);
        }
        else
        {
            p.y = box.minY + std::round((p.y - box.minY) / TileSide) * TileSide + Uniform(random, -100.0, 100.0);
        }
        break;
    default:
        break;
    }
    return p;
}

std::size_t CountWrong(CBoard const & board, CPour const & pour, double clearance,
                       geometry::CBoundingRect<double> const & box)
{
    std::mt19937_64 random(5);
    std::size_t wrong = 0;
    for (int i = 0; i < SamplesPerBoard; ++i)
    {
        CPoint const p = Sample(random, board, box, clearance);
        std::optional<bool> const expected = IsExpected(p, board, clearance);
        if (!expected) continue;
        auto const isIn = [&](auto const & piece) { return piece->PointInPolygon(p.x, p.y); };
        auto const found = std::count_if(pour.pieces.begin(), pour.pieces.end(), isIn);
        if (found == (*expected ? 1 : 0)) continue;
        if (++wrong <= 3)
            std::printf("  (%.3f, %.3f) is in %d pieces, wanted %d\n", p.x, p.y, int(found), int(*expected));
    }
    return wrong;
}

/// Calls `function` with each vertex of the outlines and holes.
template <typename F>
void ForEachVertex(svg::CPolygons const & polygons, F function)
{
    auto const walk = [&](geometry::CPolygon const & ring)
    {
        for (geometry::CPathObjectBase const* object : ring.GetOutline())
        {
            if (dynamic_cast<geometry::CPathObjectArc const*>(object) != nullptr)
            {
                function(object->GetStartPoint());
                continue;
            }
            std::for_each(object->GetPointsBegin(), object->GetPointsEnd(), function);
        }
    };
    for (auto const & polygon : polygons)
    {
        walk(*polygon);
        for (geometry::CPolygon const* hole : polygon->GetHoles())
        {
            walk(*hole);
        }
    }
}

bool IsOnBorder(CPoint const & p, geometry::CBoundingRect<double> const & box)
{
    double const x = p.x - box.minX, y = p.y - box.minY;
    double const toX = std::fabs(std::remainder(x, TileSide)), toY = std::fabs(std::remainder(y, TileSide));
    return (x > TileSide / 2 && toX < OnBorder) || (y > TileSide / 2 && toY < OnBorder);
}

/// Vertices of the pour on borders of tiles where no shape has a vertex and no two edges meet: seams that stayed.
std::size_t CountSeams(CBoard const & board, CPour const & pour, double clearance,
                       geometry::CBoundingRect<double> const & box)
{
    std::vector<CPoint> onBorder;
    ForEachVertex(pour.pieces,
                  [&](CPoint const & p)
                  {
                      if (IsOnBorder(p, box)) onBorder.push_back(p);
                  });
    std::vector<CPoint> explained;
    auto const explain = [&](CPoint const & p)
    {
        if (IsOnBorder(p, box)) explained.push_back(p);
    };
    ForEachVertex(MakeShapes(board, clearance), explain);
    ForEachVertex(pour.area, explain);
    std::size_t seams = 0;
    for (CPoint const & p : onBorder)
    {
        double toEdge = 1e300;
        for (COutlinePiece const & piece : board.outline)
        {
            Crossings(p, piece, toEdge);
        }
        int edges = toEdge < OnBorder ? 1 : 0;
        for (CObstacle const & obstacle : board.obstacles)
        {
            if (std::fabs(DistanceTo(p, obstacle) - clearance) < OnBorder) ++edges;
        }
        bool const isVertex = std::any_of(explained.begin(), explained.end(),
                                          [&](CPoint const & q) { return Distance(p, q) < 2 * OnBorder; });
        if (edges > 1 || isVertex) continue;
        if (++seams <= 3) std::printf("  a seam at (%.6f, %.6f), on %d edges\n", p.x, p.y, edges);
    }
    return seams;
}

bool IsRight(CBoard const & board, double clearance)
{
    std::atomic<EStage> stage;
    CPour const pour = MakePour(board, clearance, 0, stage);
    geometry::CBoundingRect<double> box;
    double area = 0.0;
    for (auto const & polygon : pour.area)
    {
        box.Include(polygon->GetBoundingRect());
    }
    for (auto const & piece : pour.pieces)
    {
        area += piece->GetArea();
    }
    std::size_t const wrong = CountWrong(board, pour, clearance, box);
    std::size_t const seams = CountSeams(board, pour, clearance, box);
    std::printf("%s: %zu obstacles, %zu pieces, %.6f mm2, %.3f s, wrong %zu, seams %zu, uncut %zu\n",
                board.name.c_str(), board.obstacles.size(), pour.pieces.size(), area * 1e-12, pour.seconds, wrong,
                seams, pour.uncut);
    return wrong == 0 && seams == 0 && pour.uncut == 0;
}

} // namespace

int main(int count, char** values)
{
    if (count != 4 && count != 5) return 2;
    double const clearance = std::atof(values[1]) * NanometresPerMillimetre;
    if (count == 4) return IsRight(ReadBoard(values[2], values[3]), clearance) ? 0 : 1;
    bool areRight = true;
    for (unsigned long seed = std::strtoul(values[3], nullptr, 10); seed <= std::strtoul(values[4], nullptr, 10);
         ++seed)
    {
        areRight &= IsRight(GenerateBoard(std::strtoul(values[2], nullptr, 10), seed), clearance);
    }
    return areRight ? 0 : 1;
}
