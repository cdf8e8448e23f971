// A grown disc is a larger disc, a grown stadium a wider one, and the corners of a grown rectangle are arcs about its
// corners: only the band around an arc is left to the library.

#include "shapes.h"

#include "arc_geometry.h"

#include <algorithm>
#include <stdexcept>

namespace copper_pour
{
namespace
{

using geometry::CPathObjectArc;
using geometry::CPathObjectBase;
using geometry::CPathObjectPolyline;
using geometry::CPolygon;

/// A polygon of pieces that meet; clones them, so that nothing is lost if there is no memory.
std::unique_ptr<CPolygon> FromPieces(std::vector<CPathObjectBase const*> const & pieces)
{
    return std::make_unique<CPolygon>(pieces.begin(), pieces.end(), CPolygon::TCloneObjects());
}

//     d .-------. c     n is `radius` long and at right angles to the way from a to b; the corners are a - n, b - n,
//  a +  |       |  + b  b + n, a + n
//       '-------'
std::unique_ptr<CPolygon> MakeStadium(CPoint const & a, CPoint const & b, double radius)
{
    double const length = Distance(a, b);
    if (length < 1.0)
    {
        CPathObjectArc const circle(a, radius);
        return FromPieces({&circle});
    }
    double const nx = (a.y - b.y) / length * radius;
    double const ny = (b.x - a.x) / length * radius;
    CPoint const corners[] = {{a.x - nx, a.y - ny}, {b.x - nx, b.y - ny}, {b.x + nx, b.y + ny}, {a.x + nx, a.y + ny}};
    CPathObjectPolyline const there(corners[0], corners[1]);
    CPathObjectArc const aroundEnd(corners[1], corners[2], b, true);
    CPathObjectPolyline const back(corners[2], corners[3]);
    CPathObjectArc const aroundStart(corners[3], corners[0], a, true);
    return FromPieces({&there, &aroundEnd, &back, &aroundStart});
}

std::unique_ptr<CPolygon> MakeArcBand(CObstacle const & track, double radius)
{
    CPoint const centre = EquidistantNear(track.centre, track.start, track.end);
    CPathObjectArc const arc(track.start, track.end, centre, track.isCounterClockwise);
    std::unique_ptr<CPolygon> band(arc.GetInflatePolygon(radius));
    if (band == nullptr) throw std::runtime_error("the track along an arc can't be built");
    return band;
}

std::unique_ptr<CPolygon> MakeRoundRect(CObstacle const & rect, double growth)
{
    double const halfWidth = 0.5 * rect.width + growth;
    double const halfHeight = 0.5 * rect.height + growth;
    double const radius = std::min({rect.radius + growth, halfWidth, halfHeight});
    CPoint const & c = rect.centre;
    geometry::CBoundingRect<double> const box(c.x - halfWidth, c.y - halfHeight, c.x + halfWidth, c.y + halfHeight);
    return std::unique_ptr<CPolygon>(CPathObjectPolyline::RoundRectAsPolygon(box, radius, rect.angle));
}

} // namespace

std::unique_ptr<CPolygon> MakeShape(CObstacle const & obstacle, double growth)
{
    switch (obstacle.kind)
    {
    case CObstacle::EKind::eArcTrack:
        return MakeArcBand(obstacle, obstacle.radius + growth);
    case CObstacle::EKind::eRoundRect:
        return MakeRoundRect(obstacle, growth);
    case CObstacle::EKind::eStadium:
        break;
    }
    return MakeStadium(obstacle.start, obstacle.end, obstacle.radius + growth);
}

svg::CPolygons MakeShapes(CBoard const & board, double growth)
{
    svg::CPolygons shapes;
    shapes.reserve(board.obstacles.size());
    for (CObstacle const & obstacle : board.obstacles)
    {
        shapes.push_back(MakeShape(obstacle, growth));
    }
    return shapes;
}

} // namespace copper_pour
