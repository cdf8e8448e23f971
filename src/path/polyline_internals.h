// What the clipper does with the polylines that it makes.
#pragma once

#include <geometry/path/path_object_polyline.h>

namespace geometry
{

struct CPolylineInternals
{
    /// Appends the vertices of `other`, from its end to its start with `reverse`. The first of these takes the place of
    /// the last vertex, so that both must have one.
    static void ContinueWith(CPathObjectPolyline & polyline, CPathObjectPolyline const & other, bool reverse)
    {
        polyline.ContinueWith(other, reverse);
    }
};

} // namespace geometry
