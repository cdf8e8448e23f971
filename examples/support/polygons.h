/// \file
/// Polygons with an owner each, as the examples pass them around.
#pragma once

#include <geometry/geometry.h>

#include <memory>
#include <vector>

namespace svg
{

using CPolygons = std::vector<std::unique_ptr<geometry::CPolygon>>;

/// Takes over what an operation of the library has handed out and leaves `source` empty.
inline void TakeOver(std::vector<geometry::CPolygon*> & source, CPolygons & target)
{
    target.reserve(target.size() + source.size()); // nothing below can throw
    for (geometry::CPolygon* polygon : source)
    {
        target.emplace_back(polygon);
    }
    source.clear();
}

} // namespace svg
