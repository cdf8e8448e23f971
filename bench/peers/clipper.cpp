// Clipper 6, on coordinates rounded to whole units. Arcs become chords.

#include "peers.h"
#include "pieces.h"

#include <polyclipping/clipper.hpp>

#include <cmath>
#include <stdexcept>

namespace bench
{
namespace
{

using ClipperLib::Path;
using ClipperLib::Paths;

Paths MakePaths(CPolygons const & polygons, EArcs arcs)
{
    Paths paths;
    for (auto const & polygon : polygons)
    {
        Path path;
        auto ring = ReadRing(*polygon, arcs);
        ring.pop_back();
        for (auto const & point : ring)
        {
            path.emplace_back(std::llround(point.x), std::llround(point.y));
        }
        paths.push_back(std::move(path));
    }
    return paths;
}

ClipperLib::ClipType TypeOf(EOperation operation)
{
    switch (operation)
    {
    case EOperation::eDifference:
        return ClipperLib::ctDifference;
    case EOperation::eIntersection:
        return ClipperLib::ctIntersection;
    case EOperation::eUnion:
        return ClipperLib::ctUnion;
    default:
        throw std::logic_error("Clipper isn't asked to do this");
    }
}

} // namespace

CRun PrepareClipper(CWorkload const & workload, EArcs arcs)
{
    auto const type = TypeOf(workload.operation);
    return [&workload, type, first = MakePaths(workload.first, arcs), second = MakePaths(workload.second, arcs)]
    {
        Paths result;
        CStopwatch const watch(workload);
        ClipperLib::Clipper clipper;
        clipper.AddPaths(first, ClipperLib::ptSubject, true);
        clipper.AddPaths(second, ClipperLib::ptClip, true);
        bool const isDone = clipper.Execute(type, result, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
        COutcome outcome{.milliseconds = watch.Milliseconds(), .pieces = result.size()};
        if (!isDone) throw std::runtime_error("Clipper: the operation failed");
        for (Path const & path : result)
        {
            outcome.value += ClipperLib::Area(path); // holes are negative
        }
        return outcome;
    };
}

} // namespace bench
