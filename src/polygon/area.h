// Areas of outlines and rectangles.
#pragma once

#include <geometry/polygon/polygon.h>

namespace geometry
{

/// Signed area of an outline, exact on arcs, positive for a counter-clockwise one. 0 without path objects.
double SignedOutlineArea(CPolygon::PathObjects const & outline);

/// The sign of `SignedOutlineArea`: -1 or 1, or 0 where the area isn't above `least` on either side. Where that is
/// plain, no angle of an arc is worked out.
int SignOfOutlineArea(CPolygon::PathObjects const & outline, double least);

/// Signed area between one path object and `origin`: those of all objects of an outline add up to its own.
double SignedAreaTo(CPathObjectBase const & object, TPoint<double> const & origin);

/// Area of the outline alone, without its holes, and its length.
double AreaOf(CPolygon const & ring);
double LengthOf(CPolygon const & ring);

/// The ring is nowhere wider than `width`, in coordinate units.
bool IsThinnerThan(CPolygon const & ring, double width);
/// The ring is no wider than the rounding of its coordinates: it bounds nothing.
bool IsWithoutWidth(CPolygon const & ring);

/// `AreaOf(ring) > area`, quickly where facts of its outline are kept. Else, and where that isn't clear, false.
bool IsAreaClearlyLarger(CPolygon const & ring, double area);

/// The rings of the union of `a` and `b` have all the area and all the length of both: these share neither area nor a
/// stretch of outline, but meet in single points. An outline that runs through such a point twice is hard on the next
/// clip, and nothing is gained by it.
/// `areaOfB`: that of `b`, which the caller may know; afterwards that of all rings.
bool IsPointContact(std::vector<CPolygon*> const & rings, CPolygon const & a, CPolygon const & b, double & areaOfB);

/// Area of a rectangle; a side that isn't positive counts as 0.
inline double RectArea(CBoundingRect<double> const & rect)
{
    double const width = rect.maxX - rect.minX;
    double const height = rect.maxY - rect.minY;
    return (width > 0.0 ? width : 0.0) * (height > 0.0 ? height : 0.0);
}

} // namespace geometry
