// Where a tile border cut a straight edge, the joined edge can keep the vertices of the cut.
#pragma once

#include "polygon/polygon_tools.h"

namespace geometry
{

/// The borders of a grid of tiles, ascending.
struct TTileGrid
{
    std::vector<double> x;
    std::vector<double> y;
};

/// Removes the vertices at tile borders that lie on the straight line of their neighbours but for rounding.
void RemoveSeams(TTileGrid const & grid, PolygonVector & polygons);

} // namespace geometry
