// GEOS, by its C interface. Arcs become chords.

#include "peers.h"
#include "pieces.h"

#include <geos_c.h>

#include <memory>
#include <stdexcept>

namespace bench
{
namespace
{

/// The state of the library: one for all, never given back.
GEOSContextHandle_t Context()
{
    static GEOSContextHandle_t const context = GEOS_init_r();
    return context;
}

struct CDeleter
{
    void operator()(GEOSGeometry* geometry) const { GEOSGeom_destroy_r(Context(), geometry); }
    void operator()(GEOSPreparedGeometry const* prepared) const { GEOSPreparedGeom_destroy_r(Context(), prepared); }
    void operator()(GEOSBufferParams* params) const { GEOSBufferParams_destroy_r(Context(), params); }
};

using CGeometry = std::unique_ptr<GEOSGeometry, CDeleter>;
using CGeometries = std::vector<CGeometry>;

GEOSGeometry* MakeLinearRing(geometry::CPolygon const & polygon, EArcs arcs)
{
    auto const ring = ReadRing(polygon, arcs);
    std::vector<double> coordinates;
    for (auto const & point : ring)
    {
        coordinates.insert(coordinates.end(), {point.x, point.y});
    }
    return GEOSGeom_createLinearRing_r(
        Context(),
        GEOSCoordSeq_copyFromBuffer_r(Context(), coordinates.data(), static_cast<unsigned>(ring.size()), 0, 0));
}

CGeometry MakePolygon(geometry::CPolygon const & polygon, EArcs arcs)
{
    std::vector<GEOSGeometry*> holes;
    for (auto const* hole : polygon.GetHoles())
    {
        holes.push_back(MakeLinearRing(*hole, arcs));
    }
    return CGeometry(GEOSGeom_createPolygon_r(Context(), MakeLinearRing(polygon, arcs), holes.data(),
                                              static_cast<unsigned>(holes.size())));
}

CGeometry MakeCollection(CPolygons const & polygons, EArcs arcs)
{
    std::vector<GEOSGeometry*> parts;
    for (auto const & polygon : polygons)
    {
        parts.push_back(MakePolygon(*polygon, arcs).release());
    }
    return CGeometry(
        GEOSGeom_createCollection_r(Context(), GEOS_MULTIPOLYGON, parts.data(), static_cast<unsigned>(parts.size())));
}

CGeometry MakeOperand(CPolygons const & polygons, EArcs arcs)
{
    if (polygons.empty()) return nullptr;
    return polygons.size() == 1 ? MakePolygon(*polygons.front(), arcs) : MakeCollection(polygons, arcs);
}

CGeometry Inflate(GEOSGeometry const* geometry, double amount)
{
    std::unique_ptr<GEOSBufferParams, CDeleter> const params(GEOSBufferParams_create_r(Context()));
    return CGeometry(GEOSBufferWithParams_r(Context(), geometry, params.get(), amount));
}

CGeometry RunOperation(CWorkload const & workload, GEOSGeometry const* first, GEOSGeometry const* second)
{
    switch (workload.operation)
    {
    case EOperation::eDifference:
        return CGeometry(GEOSDifference_r(Context(), first, second));
    case EOperation::eIntersection:
        return CGeometry(GEOSIntersection_r(Context(), first, second));
    case EOperation::eUnion:
        return CGeometry(GEOSUnion_r(Context(), first, second));
    case EOperation::eMergeAll:
        return CGeometry(GEOSUnaryUnion_r(Context(), first));
    case EOperation::eSubtractAll:
    {
        CGeometry const merged(GEOSUnaryUnion_r(Context(), second));
        return CGeometry(GEOSDifference_r(Context(), first, merged.get()));
    }
    default:
        return Inflate(first, workload.amount);
    }
}

COutcome RunArea(CWorkload const & workload, GEOSGeometry const* first, GEOSGeometry const* second)
{
    CStopwatch const watch(workload);
    CGeometry const result = RunOperation(workload, first, second);
    COutcome outcome{.milliseconds = watch.Milliseconds()};
    if (result == nullptr) throw std::runtime_error("GEOS: the operation failed");
    GEOSArea_r(Context(), result.get(), &outcome.value);
    outcome.pieces = static_cast<std::size_t>(GEOSGetNumGeometries_r(Context(), result.get()));
    return outcome;
}

COutcome RunDistance(CWorkload const & workload, GEOSGeometry const* first, GEOSGeometry const* second)
{
    COutcome outcome;
    CStopwatch const watch(workload);
    GEOSDistanceIndexed_r(Context(), first, second, &outcome.value);
    outcome.milliseconds = watch.Milliseconds();
    return outcome;
}

COutcome RunPoints(CWorkload const & workload, GEOSGeometry const* polygon, CGeometries const & points)
{
    COutcome outcome;
    CStopwatch const watch(workload);
    std::unique_ptr<GEOSPreparedGeometry const, CDeleter> const prepared(GEOSPrepare_r(Context(), polygon));
    for (auto const & point : points)
    {
        outcome.value += GEOSPreparedContains_r(Context(), prepared.get(), point.get()) == 1 ? 1.0 : 0.0;
    }
    outcome.milliseconds = watch.Milliseconds();
    return outcome;
}

} // namespace

CRun PrepareGeos(CWorkload const & workload, EArcs arcs)
{
    std::shared_ptr<GEOSGeometry> const first = MakeOperand(workload.first, arcs);
    std::shared_ptr<GEOSGeometry> const second = MakeOperand(workload.second, arcs);
    auto const points = std::make_shared<CGeometries>();
    for (auto const & point : workload.points)
    {
        points->emplace_back(GEOSGeom_createPointFromXY_r(Context(), point.x, point.y));
    }
    return [&workload, first, second, points]
    {
        switch (workload.operation)
        {
        case EOperation::ePoints:
            return RunPoints(workload, first.get(), *points);
        case EOperation::eDistance:
            return RunDistance(workload, first.get(), second.get());
        default:
            return RunArea(workload, first.get(), second.get());
        }
    };
}

} // namespace bench
