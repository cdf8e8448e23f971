/// \file
/// Shapes as strings, for tests: `M 0,0 L 8,0 A ccw 8,3 8,6 L 0,6 Z`.
///
/// Each letter begins a path object: `L` a polyline through one or more points, `A` an arc (sense, centre, end). `Z`
/// closes the ring with a segment, which goes on the polyline before it, if the ring isn't closed. The first ring is
/// the outline, the others are holes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <geometry/polygon/polygon.h>

namespace geometry::test
{

/// One edge of a ring; it starts where the edge before it ends.
struct TEdge
{
    TPoint<double> end;
    bool isArc = false;
    bool isCounterClockwise = false; ///< of an arc
    TPoint<double> centre;           ///< of an arc
    bool beginsObject = false;       ///< a segment may go on the polyline before it, an arc never does
};

/// A closed ring: the last edge ends where the first one starts. The edge of a full circle is a ring by itself.
using Ring = std::vector<TEdge>;
/// The outline and the holes.
using Shape = std::vector<Ring>;

/// Text to rings and back; the text of a shape gives the same coordinates and path objects again, bit by bit.
Shape ParseShape(std::string const & text);
std::string PrintShape(Shape const & shape);

/// A polygon with holes, vertex by vertex as in the shape: nothing is cleaned up.
std::unique_ptr<CPolygon> MakePolygon(Shape const & shape);
/// The rings of a polygon, division into path objects included.
Shape ShapeOf(CPolygon const & polygon);

/// Each point as a complex number times `a + b * i`, then moved.
Shape Mapped(Shape shape, double a, double b, double dx, double dy);
Shape Reversed(Shape shape);
/// Each ring starts `steps` edges later.
Shape StartedLater(Shape shape, int steps);

} // namespace geometry::test
