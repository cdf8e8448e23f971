// Boost.Geometry. Arcs become chords.

#include "peers.h"
#include "pieces.h"

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/multi_polygon.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>

#include <stdexcept>

namespace bench
{
namespace
{

namespace bg = boost::geometry;

using CBoostPoint = bg::model::d2::point_xy<double>;
using CBoostPolygon = bg::model::polygon<CBoostPoint>;
using CBoostPolygons = bg::model::multi_polygon<CBoostPolygon>;

CBoostPolygons MakePolygons(CPolygons const & sources, EArcs arcs)
{
    CBoostPolygons polygons;
    for (auto const & source : sources)
    {
        if (!source->GetHoles().empty()) throw std::logic_error("Boost gets no holes");
        CBoostPolygon polygon;
        for (auto const & point : ReadRing(*source, arcs))
        {
            bg::append(polygon.outer(), CBoostPoint(point.x, point.y));
        }
        bg::correct(polygon); // the way in which it winds
        polygons.push_back(std::move(polygon));
    }
    return polygons;
}

CBoostPolygons RunOperation(EOperation operation, CBoostPolygons const & first, CBoostPolygons const & second)
{
    CBoostPolygons result;
    switch (operation)
    {
    case EOperation::eDifference:
        bg::difference(first, second, result);
        break;
    case EOperation::eIntersection:
        bg::intersection(first, second, result);
        break;
    case EOperation::eUnion:
        bg::union_(first, second, result);
        break;
    default:
        throw std::logic_error("Boost isn't asked to do this");
    }
    return result;
}

} // namespace

CRun PrepareBoost(CWorkload const & workload, EArcs arcs)
{
    return [&workload, first = MakePolygons(workload.first, arcs), second = MakePolygons(workload.second, arcs)]
    {
        CStopwatch const watch(workload);
        CBoostPolygons const result = RunOperation(workload.operation, first, second);
        return COutcome{
            .milliseconds = watch.Milliseconds(), .value = bg::area(result), .pieces = bg::num_geometries(result)};
    };
}

} // namespace bench
