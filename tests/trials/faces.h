/// \file
/// Polygons of the library as the judge reads them: rings of edges about a local origin, with lengths, distances and
/// areas by formulas of its own.
#pragma once

#include <vector>

#include <geometry/polygon/polygon.h>

namespace trials
{

using Polygons = std::vector<geometry::CPolygon const*>;

struct TSpot
{
    double x = 0.0;
    double y = 0.0;
};

inline TSpot operator+(TSpot const & a, TSpot const & b)
{
    return {a.x + b.x, a.y + b.y};
}
inline TSpot operator-(TSpot const & a, TSpot const & b)
{
    return {a.x - b.x, a.y - b.y};
}
inline TSpot operator*(double f, TSpot const & a)
{
    return {f * a.x, f * a.y};
}
double Length(TSpot const & a);

struct TEdge
{
    TSpot a;
    TSpot b;
    bool isArc = false;
    TSpot low; ///< corners of a rectangle around the edge
    TSpot high;
    // Of an arc, read counter-clockwise from `from` to `to`, whichever way it runs:
    TSpot centre;
    TSpot from;
    TSpot to;
    double radius = 0.0; ///< the mean of the distances from the centre to the ends
    double start = 0.0;  ///< the angle of `from`
    double sweep = 0.0;  ///< above 0, at most 2 pi
    double sense = 1.0;  ///< -1 for one that runs clockwise
};

using TRing = std::vector<TEdge>;

/// One polygon: its outline first, then its holes.
using TFace = std::vector<TRing>;

/// A list of polygons.
struct TFaces
{
    TSpot origin; ///< a place of which coordinates are told apart exactly
    std::vector<TFace> faces;
    TSpot low;
    TSpot high;
    bool hasArcs = false;
    double perimeter = 0.0;
    double smallestSide = 0.0; ///< of the rectangle of any outline
    double farthest = 0.0;     ///< the largest coordinate, seen from (0, 0)
    int edgeCount = 0;
};

TFaces ReadFaces(Polygons const & polygons, TSpot const & origin);
/// An open path: a single ring whose ends don't meet, for distances only.
TFaces ReadPath(geometry::CPathObjectBase const & path, TSpot const & origin);
/// An origin for polygons around a point: multiples of 2^20.
TSpot OriginNear(double x, double y);

double Distance(TSpot const & p, TEdge const & edge);
double Distance(TSpot const & p, TFaces const & faces);
/// Some edge lies within `limit` of the point.
bool IsNear(TSpot const & p, TFaces const & faces, double limit);
/// In the middle of the edge, and the unit vector at right angles to the edge there.
TSpot MiddleOf(TEdge const & edge, TSpot & normal);
/// The area of rings that neither cross nor touch themselves.
double SimpleArea(TFace const & face);

} // namespace trials
