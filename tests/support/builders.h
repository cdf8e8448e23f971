// Short ways to the shapes that unit tests start from. Everything made here belongs to the caller.
#pragma once

#include <initializer_list>
#include <memory>
#include <vector>

#include <geometry/geometry.h>

#include "polygon/polygon_tools.h"

namespace geometry::test
{

using Point = TPoint<double>;

inline std::unique_ptr<CPathObjectPolyline> Line(std::initializer_list<Point> vertices)
{
    auto line = std::make_unique<CPathObjectPolyline>();
    for (Point const & vertex : vertices)
    {
        line->AddVertex(vertex.x, vertex.y);
    }
    return line;
}

/// Counter-clockwise from the lower left corner.
inline std::unique_ptr<CPathObjectPolyline> RectLine(double left, double lower, double right, double upper)
{
    return Line({{left, lower}, {right, lower}, {right, upper}, {left, upper}, {left, lower}});
}

inline CPolygon Rect(double left, double lower, double right, double upper)
{
    return CPolygon(RectLine(left, lower, right, upper).release());
}

inline CPolygon Disc(double x, double y, double radius)
{
    return CPolygon(new CPathObjectArc(Point(x, y), radius));
}

/// `outline` with the outline of `hole` cut out of it.
inline CPolygon WithHole(CPolygon const & outline, CPolygon const & hole)
{
    CPolygon polygon(outline);
    std::vector<CPolygon*> extra;
    polygon.AddHole(&hole, nullptr, nullptr, extra);
    DeletePolygons(extra);
    return polygon;
}

inline double TotalArea(std::vector<CPolygon*> const & polygons)
{
    double area = 0.0;
    for (CPolygon const* polygon : polygons)
    {
        area += polygon->GetArea();
    }
    return area;
}

inline std::vector<Point> Vertices(CPathObjectBase const & object)
{
    return {object.GetPointsBegin(), object.GetPointsEnd()};
}

} // namespace geometry::test
