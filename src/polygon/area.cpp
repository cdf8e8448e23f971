// Areas of outlines, exact on arcs: the shoelace sum over straight pieces and chords, and for each arc the circular
// segment between chord and arc.
#include <geometry/polygon/polygon.h>

#include <cmath>

#include <geometry/arc/path_object_arc.h>

namespace geometry
{

namespace
{

constexpr double twoPi = 6.283185307179586;

/// `angle - sin(angle)`, by its series where the difference would cancel.
double AngleMinusSine(double angle)
{
    if (angle > 0.25)
    {
        return angle - std::sin(angle);
    }
    double const s = angle * angle;
    return angle * s / 6.0 * (1.0 - s / 20.0 * (1.0 - s / 42.0 * (1.0 - s / 72.0 * (1.0 - s / 110.0))));
}

/// The area between the chord from start to end and the arc, positive for a counter-clockwise arc:
/// `r * r / 2 * (angle - sin(angle))` with the angle of the sweep.
double CircularSegmentArea(CPathObjectArc const & arc)
{
    if (arc.IsDegenerate())
    {
        return 0.0;
    }
    bool const isCounterClockwise = arc.IsCounterClockwise();
    TPoint<double> const & a = isCounterClockwise ? arc.GetStartPoint() : arc.GetEndPoint();
    TPoint<double> const & b = isCounterClockwise ? arc.GetEndPoint() : arc.GetStartPoint();
    TPoint<double> const & c = arc.GetCentre();
    double const ax = a.x - c.x, ay = a.y - c.y;
    double const bx = b.x - c.x, by = b.y - c.y;
    double angle = twoPi;
    if (!(a == b))
    {
        angle = std::atan2(ax * by - ay * bx, ax * bx + ay * by);
        if (angle < 0.0)
        {
            angle += twoPi;
        }
    }
    double const squareRadius = (ax * ax + ay * ay + bx * bx + by * by) * 0.5;
    double const area = squareRadius * 0.5 * AngleMinusSine(angle);
    return isCounterClockwise ? area : -area;
}

double SignedOutlineArea(CPolygon::PathObjects const & outline)
{
    if (outline.empty())
    {
        return 0.0;
    }
    // relative to a point of the outline, so that a place far from the origin costs no digits
    TPoint<double> const origin = outline.front()->GetStartPoint();
    double area = 0.0;
    auto const addSegment = [&](TPoint<double> const & p, TPoint<double> const & q) {
        area += 0.5 * ((p.x - origin.x) * (q.y - origin.y) - (q.x - origin.x) * (p.y - origin.y));
    };
    for (CPathObjectBase const * object : outline)
    {
        if (auto const * arc = dynamic_cast<CPathObjectArc const *>(object))
        {
            addSegment(arc->GetStartPoint(), arc->GetEndPoint());
            area += CircularSegmentArea(*arc);
            continue;
        }
        auto const end = object->GetPointsEnd();
        for (auto p = object->GetPointsBegin(); end - p > 1; ++p)
        {
            addSegment(p[0], p[1]);
        }
    }
    return area;
}

} // namespace

double CPolygon::GetArea() const
{
    double area = std::fabs(SignedOutlineArea(m_Outline));
    for (CPolygon const * hole : GetHoles())
    {
        area -= std::fabs(SignedOutlineArea(hole->m_Outline));
    }
    return area;
}

} // namespace geometry
