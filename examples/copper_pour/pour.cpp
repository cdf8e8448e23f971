// The pour is one subtraction of many polygons, which looks for requests to stop by itself; between the stages and
// while the result is checked the cancellation points here do.

#include "pour.h"

#include "outline.h"
#include "s_expression.h"
#include "shapes.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace copper_pour
{
namespace
{

using geometry::CPolygon;
using geometry::this_thread::cancellation_point;

svg::CPolygons SubtractAll(svg::CPolygons const & area, svg::CPolygons const & shapes, unsigned int workers)
{
    std::vector<CPolygon const*> others;
    for (auto const & shape : shapes)
    {
        others.push_back(shape.get());
    }
    svg::CPolygons result;
    for (auto const & board : area)
    {
        if (others.empty())
        {
            result.push_back(std::make_unique<CPolygon>(*board));
            continue;
        }
        SelfDestructingContainer<std::vector<CPolygon*>> pieces;
        bool const isDone = board->SubtractPolygons(pieces, others, workers);
        cancellation_point(); // what was stopped early is no result
        if (!isDone) throw std::runtime_error("the subtraction failed");
        svg::TakeOver(pieces, result);
    }
    return result;
}

/// Points within the obstacle, well away from its edge.
std::vector<CPoint> PointsIn(CObstacle const & obstacle)
{
    if (obstacle.kind == CObstacle::EKind::eRoundRect) return {obstacle.centre};
    CPoint const middle(0.5 * (obstacle.start.x + obstacle.end.x), 0.5 * (obstacle.start.y + obstacle.end.y));
    if (obstacle.kind == CObstacle::EKind::eArcTrack) return {obstacle.start, obstacle.end};
    return {obstacle.start, middle, obstacle.end};
}

/// As a picture shows it, even-odd over all outlines and holes: this finds holes that overlap, too.
bool IsInPour(CPoint const & point, svg::CPolygons const & pieces)
{
    bool isIn = false;
    for (auto const & piece : pieces)
    {
        isIn ^= piece->PointInOutline(point.x, point.y);
        for (CPolygon const* hole : piece->GetHoles())
        {
            isIn ^= hole->PointInOutline(point.x, point.y);
        }
    }
    return isIn;
}

std::size_t CountUncut(CBoard const & board, svg::CPolygons const & pieces)
{
    auto const isUncut = [&](CObstacle const & obstacle)
    {
        cancellation_point();
        std::vector<CPoint> const points = PointsIn(obstacle);
        return std::any_of(points.begin(), points.end(), [&](CPoint const & point) { return IsInPour(point, pieces); });
    };
    return static_cast<std::size_t>(std::count_if(board.obstacles.begin(), board.obstacles.end(), isUncut));
}

} // namespace

CPour MakePour(CBoard const & board, double clearance, unsigned int workers, std::atomic<EStage> & stage)
{
    CPour pour;
    stage = EStage::eOutline;
    try
    {
        pour.area = MakeBoardArea(board.outline);
    }
    catch (CBoardError const & error)
    {
        throw CBoardError(board.name + ": " + error.what());
    }
    cancellation_point();
    stage = EStage::eShapes;
    pour.copper = MakeShapes(board, 0.0);
    svg::CPolygons const grown = MakeShapes(board, clearance);
    cancellation_point();
    stage = EStage::eSubtract;
    auto const began = std::chrono::steady_clock::now();
    pour.pieces = SubtractAll(pour.area, grown, workers);
    pour.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
    stage = EStage::eCheck;
    pour.uncut = CountUncut(board, pour.pieces);
    stage = EStage::eDone;
    return pour;
}

} // namespace copper_pour
