// Reads outlines, and tells what chords for arcs make of an area.

#include "pieces.h"

#include <algorithm>
#include <cmath>

namespace bench
{
namespace
{

using geometry::CPathObjectArc;
using geometry::CPolygon;

constexpr double Pi = 3.14159265358979323846;
constexpr double Rounding =
    0.1; // units: points within 0.03 of an arc count as on it, and whole coordinates err both ways

double SweepOf(CPathObjectArc const & arc)
{
    CPoint const & centre = arc.GetCentre();
    CPoint const & start = arc.GetStartPoint();
    CPoint const & end = arc.GetEndPoint();
    double const sign = arc.IsCounterClockwise() ? 1.0 : -1.0;
    if (arc.IsFullCircle()) return sign * 2.0 * Pi;
    double const turn =
        std::atan2(end.y - centre.y, end.x - centre.x) - std::atan2(start.y - centre.y, start.x - centre.x);
    double const positive = std::fmod(sign * turn + 4.0 * Pi, 2.0 * Pi);
    return sign * positive;
}

/// How far chords may be from an arc of the polygon.
double ChordTolerance(CPolygon const & polygon, CPiece const & arc, EArcs arcs)
{
    auto const & rect = polygon.GetBoundingRect();
    return 1e-4 *
           (arcs == EArcs::eFineChords ? 2.0 * arc.radius : std::max(rect.maxX - rect.minX, rect.maxY - rect.minY));
}

/// How many chords of one length keep the tolerance.
int CountChords(CPiece const & arc, double tolerance)
{
    // the middle of a chord over an angle a is radius * (1 - cos(a / 2)) from the arc
    double const angle = 2.0 * std::acos(std::max(-1.0, 1.0 - tolerance / arc.radius));
    return std::max(static_cast<int>(std::ceil(std::abs(arc.sweep) / angle)), 2);
}

/// The sums over the outlines of polygons and their holes that bound what chords change.
struct CSums
{
    double segments = 0.0; // area between arcs and chords
    double perimeter = 0.0;
    double tolerance = 0.0; // the largest

    void Add(CPolygon const & polygon, EArcs arcs)
    {
        for (CPiece const & piece : ReadPieces(polygon))
        {
            perimeter += piece.Length();
            if (piece.sweep == 0.0) continue;
            double const own = ChordTolerance(polygon, piece, arcs);
            tolerance = std::max(tolerance, own);
            int const chords = CountChords(piece, own);
            double const angle = std::abs(piece.sweep) / chords;
            segments += chords * 0.5 * piece.radius * piece.radius * (angle - std::sin(angle));
        }
        for (CPolygon const* hole : polygon.GetHoles())
        {
            Add(*hole, arcs);
        }
    }
};

} // namespace

CPoint CPiece::PointAt(double share) const
{
    double const angle = std::atan2(start.y - centre.y, start.x - centre.x) + share * sweep;
    return {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
}

double CPiece::Length() const
{
    return sweep == 0.0 ? std::hypot(end.x - start.x, end.y - start.y) : std::abs(sweep) * radius;
}

std::vector<CPiece> ReadPieces(CPolygon const & polygon)
{
    std::vector<CPiece> pieces;
    for (auto const* object : polygon.GetOutline())
    {
        if (auto const* arc = dynamic_cast<CPathObjectArc const*>(object))
        {
            pieces.push_back({.start = arc->GetStartPoint(),
                              .end = arc->GetEndPoint(),
                              .centre = arc->GetCentre(),
                              .radius = arc->GetRadius(),
                              .sweep = SweepOf(*arc)});
            continue;
        }
        for (auto point = object->GetPointsBegin(); point + 1 != object->GetPointsEnd(); ++point)
        {
            pieces.push_back({.start = *point, .end = *(point + 1)});
        }
    }
    return pieces;
}

std::vector<CPoint> ReadRing(CPolygon const & polygon, EArcs arcs)
{
    std::vector<CPoint> ring;
    for (CPiece const & piece : ReadPieces(polygon))
    {
        ring.push_back(piece.start);
        int const chords = piece.sweep == 0.0 ? 1 : CountChords(piece, ChordTolerance(polygon, piece, arcs));
        for (int i = 1; i < chords; ++i)
        {
            ring.push_back(piece.PointAt(static_cast<double>(i) / chords));
        }
    }
    ring.push_back(ring.front());
    return ring;
}

double AllowedDifference(CWorkload const & workload, EArcs arcs)
{
    CSums sums;
    for (CPolygons const* polygons : {&workload.first, &workload.second})
    {
        for (auto const & polygon : *polygons)
        {
            sums.Add(*polygon, arcs);
        }
    }
    switch (workload.operation)
    {
    case EOperation::ePoints: // a few on the boundary may count otherwise
        return 3.0;
    case EOperation::eDistance:
        return Rounding;
    case EOperation::eInflate: // bands are up to half a percent wider, and a peer rounds corners with chords
        return sums.perimeter * (sums.tolerance + 0.01 * std::abs(workload.amount)) + sums.segments;
    default:
        return sums.perimeter * Rounding + (arcs == EArcs::eKept ? 0.0 : sums.segments);
    }
}

std::vector<CPeer> const & GetPeers()
{
    static std::vector<CPeer> const peers{
#ifdef TRUEARC_PEER_GEOS
        {"GEOS", PrepareGeos},
        {"GEOS, finer", PrepareGeos, EArcs::eFineChords},
#endif
#ifdef TRUEARC_PEER_CGAL
        {"CGAL", PrepareCgal, EArcs::eKept},
#endif
#ifdef TRUEARC_PEER_BOOST
        {"Boost", PrepareBoost},
#endif
#ifdef TRUEARC_PEER_CLIPPER
        {"Clipper", PrepareClipper},
#endif
    };
    return peers;
}

} // namespace bench
