// A polygon from path objects that were just made, without a leak on any way out.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include <geometry/path/path_object_polyline.h>
#include <geometry/polygon/polygon.h>

namespace geometry
{

/// The closed outline of `rect`, counter-clockwise from its lower left corner, as it is: not cleaned up.
inline std::unique_ptr<CPathObjectPolyline> MakeRectangleOutline(CBoundingRect<double> const & rect)
{
    auto outline = std::make_unique<CPathObjectPolyline>();
    outline->AddVertex(rect.minX, rect.minY);
    outline->AddVertex(rect.maxX, rect.minY);
    outline->AddVertex(rect.maxX, rect.maxY);
    outline->AddVertex(rect.minX, rect.maxY);
    outline->AddVertex(rect.minX, rect.minY);
    return outline;
}

using OwnedPathObjects = std::vector<std::unique_ptr<CPathObjectBase>>;

inline std::unique_ptr<CPolygon> MakePolygonFrom(OwnedPathObjects objects)
{
    CPolygon::PathObjects handedOver;
    handedOver.reserve(objects.size());
    for (auto const & object : objects)
    {
        handedOver.push_back(object.get());
    }
    auto polygon = std::make_unique<CPolygon>(handedOver.begin(), handedOver.end());
    // the accepted objects stand in the outline in this order; a refused one is freed here
    auto const & outline = polygon->GetOutline();
    std::size_t accepted = 0;
    for (auto & object : objects)
    {
        if (accepted < outline.size() && outline[accepted] == object.get())
        {
            object.release();
            ++accepted;
        }
    }
    return polygon;
}

} // namespace geometry
