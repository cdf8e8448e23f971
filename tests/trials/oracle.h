/// \file
/// Which points polygons cover, read off their path objects in long double: shares no code with the library.
#pragma once

#include <vector>

#include <geometry/geometry.h>

namespace trials
{

using geometry::CPolygon;
using Polygons = std::vector<CPolygon*>;
using ConstPolygons = std::vector<CPolygon const*>;
using Real = long double;

struct TSpot
{
    double x;
    double y;
};

/// A segment, or an arc that runs counter-clockwise from `a` to `b`; a full circle has `a` equal to `b`.
struct TEdge
{
    TSpot a;
    TSpot b;
    TSpot centre;
    double radius; ///< 0 for a segment
};

/// The outlines of one polygon.
struct TFace
{
    std::vector<TEdge> edges; ///< of outline and holes
    double minX, minY, maxX, maxY;
};

TFace ReadFace(CPolygon const & polygon);
/// By the number of crossings of a ray, half-open, over outline and holes together.
bool IsInside(TFace const & face, TSpot const & p);
/// To the nearest of the outlines; 1e300 without any.
double DistanceTo(TFace const & face, TSpot const & p);
TSpot MiddleOf(TEdge const & edge);
/// Into the plane beside the middle, one unit long, to the left of a segment or away from the centre.
TSpot NormalOf(TEdge const & edge);

} // namespace trials
