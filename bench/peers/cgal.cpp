// CGAL: general polygons of segments and arcs, with exact numbers. Arcs stay arcs: a bulge (the tangent of a quarter of
// the sweep) gives each a rational circle that holds both ends exactly.

#include "peers.h"
#include "pieces.h"

#include <CGAL/Exact_predicates_exact_constructions_kernel.h>
#include <CGAL/General_polygon_set_2.h>
#include <CGAL/Gps_circle_segment_traits_2.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <stdexcept>

namespace bench
{
namespace
{

using CKernel = CGAL::Exact_predicates_exact_constructions_kernel;
using CNumber = CKernel::FT;
using CTraits = CGAL::Gps_circle_segment_traits_2<CKernel>;
using CExactPolygon = CTraits::General_polygon_2;
using CExactPolygonWithHoles = CTraits::General_polygon_with_holes_2;
using CExactCurve = CTraits::X_monotone_curve_2;
using CPolygonSet = CGAL::General_polygon_set_2<CTraits>;
using CExactPolygons = std::vector<CExactPolygon>;

CKernel::Point_2 Exact(CPoint const & point)
{
    return {point.x, point.y};
}

void AppendArc(CExactPolygon & polygon, CPoint const & start, CPoint const & end, double sweep)
{
    double const tangent = std::tan(0.25 * sweep); // half circles get 1 itself: the numbers stay short
    CNumber const bulge = std::abs(std::abs(tangent) - 1.0) < 1e-9 ? std::copysign(1.0, tangent) : tangent;
    CNumber const away = (1 - bulge * bulge) / (4 * bulge); // of the centre from the chord, in chord lengths
    CKernel::Point_2 const a = Exact(start);
    CKernel::Point_2 const b = Exact(end);
    CKernel::Point_2 const centre((a.x() + b.x()) / 2 - away * (b.y() - a.y()),
                                  (a.y() + b.y()) / 2 + away * (b.x() - a.x()));
    CKernel::Circle_2 const circle(centre, CGAL::squared_distance(centre, a),
                                   sweep > 0.0 ? CGAL::COUNTERCLOCKWISE : CGAL::CLOCKWISE);
    CTraits::Curve_2 const curve(circle, CTraits::Point_2(a.x(), a.y()), CTraits::Point_2(b.x(), b.y()));
    std::vector<CGAL::Object> parts;
    CTraits().make_x_monotone_2_object()(curve, std::back_inserter(parts));
    for (CGAL::Object const & part : parts)
    {
        CExactCurve monotone;
        if (CGAL::assign(monotone, part)) polygon.push_back(monotone);
    }
}

CExactPolygon MakePolygon(geometry::CPolygon const & source)
{
    CExactPolygon polygon;
    for (CPiece const & piece : ReadPieces(source))
    {
        if (piece.sweep == 0.0)
        {
            polygon.push_back(CExactCurve(Exact(piece.start), Exact(piece.end)));
        }
        else if (std::abs(piece.sweep) < 4.0)
        {
            AppendArc(polygon, piece.start, piece.end, piece.sweep);
        }
        else // a long arc, or a full circle: two halves
        {
            CPoint const middle = piece.PointAt(0.5);
            AppendArc(polygon, piece.start, middle, 0.5 * piece.sweep);
            AppendArc(polygon, middle, piece.end, 0.5 * piece.sweep);
        }
    }
    if (polygon.orientation() == CGAL::CLOCKWISE) polygon.reverse_orientation();
    return polygon;
}

CExactPolygons MakePolygons(CPolygons const & sources)
{
    CExactPolygons polygons;
    for (auto const & source : sources)
    {
        polygons.push_back(MakePolygon(*source));
    }
    return polygons;
}

/// Chords by the shoelace sum, and between each chord and its arc a circular segment. Clockwise ones are negative.
double SignedArea(CExactPolygon const & polygon)
{
    double area = 0.0;
    for (auto curve = polygon.curves_begin(); curve != polygon.curves_end(); ++curve)
    {
        double const ax = CGAL::to_double(curve->source().x());
        double const ay = CGAL::to_double(curve->source().y());
        double const bx = CGAL::to_double(curve->target().x());
        double const by = CGAL::to_double(curve->target().y());
        area += 0.5 * (ax * by - bx * ay);
        if (!curve->is_circular()) continue;
        double const square = CGAL::to_double(curve->supporting_circle().squared_radius());
        double const angle = 2.0 * std::asin(std::min(1.0, 0.5 * std::hypot(bx - ax, by - ay) / std::sqrt(square)));
        double const sign = curve->orientation() == CGAL::COUNTERCLOCKWISE ? 1.0 : -1.0;
        area += sign * 0.5 * square * (angle - std::sin(angle));
    }
    return area;
}

void Unite(CExactPolygons const & polygons, CPolygonSet & set)
{
    if (polygons.size() == 1) return set.insert(polygons.front());
    set.join(polygons.begin(), polygons.end());
}

void RunOperation(EOperation operation, CExactPolygons const & first, CExactPolygons const & second,
                  CPolygonSet & result)
{
    CPolygonSet others;
    Unite(first, result);
    Unite(second, others);
    switch (operation)
    {
    case EOperation::eDifference:
    case EOperation::eSubtractAll:
        return result.difference(others);
    case EOperation::eIntersection:
        return result.intersection(others);
    case EOperation::eUnion:
        return result.join(others);
    case EOperation::eMergeAll:
        return;
    default:
        throw std::logic_error("CGAL isn't asked to do this");
    }
}

} // namespace

CRun PrepareCgal(CWorkload const & workload, EArcs)
{
    return [&workload, first = MakePolygons(workload.first), second = MakePolygons(workload.second)]
    {
        CPolygonSet set;
        std::vector<CExactPolygonWithHoles> result;
        CStopwatch const watch(workload);
        RunOperation(workload.operation, first, second, set);
        set.polygons_with_holes(std::back_inserter(result));
        COutcome outcome{.milliseconds = watch.Milliseconds(), .pieces = result.size()};
        for (auto const & polygon : result)
        {
            outcome.value += SignedArea(polygon.outer_boundary());
            for (auto hole = polygon.holes_begin(); hole != polygon.holes_end(); ++hole)
            {
                outcome.value += SignedArea(*hole);
            }
        }
        return outcome;
    };
}

} // namespace bench
