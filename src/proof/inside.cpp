#include "proof/inside.h"

#include <algorithm>
#include <cmath>

#include "arc/as_arc.h"
#include "proof/outline_probe.h"
#include "proof/region_proof.h"

namespace geometry
{

namespace
{

/// A place on the object, and a direction across it.
struct TPlace
{
    TPoint<double> at;
    TPoint<double> across;
};

std::optional<TPlace> PlaceOn(CPathObjectBase const & object)
{
    TPlace place;
    if (CPathObjectArc const* const arc = AsArc(object))
    {
        place.at = arc->GetInbetweenPoint();
        place.across = TPoint<double>(place.at.x - arc->GetCentre().x, place.at.y - arc->GetCentre().y);
    }
    else
    {
        auto const begin = object.GetPointsBegin();
        if (object.GetPointsEnd() - begin < 2)
        {
            return std::nullopt;
        }
        auto const middle = begin + (object.GetPointsEnd() - begin - 1) / 2;
        place.at = TPoint<double>((middle[0].x + middle[1].x) * 0.5, (middle[0].y + middle[1].y) * 0.5);
        place.across = TPoint<double>(middle[0].y - middle[1].y, middle[1].x - middle[0].x);
    }
    double const length = std::sqrt(place.across.x * place.across.x + place.across.y * place.across.y);
    if (!(length > 0.0))
    {
        return std::nullopt;
    }
    place.across = TPoint<double>(place.across.x / length, place.across.y / length);
    return place;
}

} // namespace

std::optional<bool> LiesClearlyIn(CPolygon const & inner, CPolygon const & outer)
{
    constexpr std::size_t mostObjects = 16;
    constexpr double parts[] = {0.3, 0.1, 0.03, 1e-3, 1e-5}; // of the size, from an edge
    COutlineProbe ofInner;
    COutlineProbe ofOuter;
    ofInner.Read(inner);
    ofOuter.Read(outer);
    CBoundingRect<double> const & rect = inner.GetBoundingRect();
    double const size = std::min(rect.maxX - rect.minX, rect.maxY - rect.minY);
    double const clearance = ToleranceOf({&inner});
    auto const & outline = inner.GetOutline();
    std::size_t const step = outline.size() / mostObjects + 1;
    for (double const part : parts)
    {
        for (std::size_t i = 0; i < outline.size(); i += step)
        {
            std::optional<TPlace> const place = PlaceOn(*outline[i]);
            for (double const side : {part * size, -part * size})
            {
                if (!place)
                {
                    continue;
                }
                TPoint<double> const point(place->at.x + side * place->across.x, place->at.y + side * place->across.y);
                COutlineProbe::TAnswer const own = ofInner.Locate(point, clearance);
                COutlineProbe::TAnswer const other = ofOuter.Locate(point, clearance);
                if (own.isInside && !own.isNear && !other.isNear)
                {
                    return other.isInside;
                }
            }
        }
    }
    return std::nullopt;
}

} // namespace geometry
