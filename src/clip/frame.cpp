// A polygon is copied object by object; joints that were the same within the rounding of one place may not be within
// that of another, so they are made to meet again.
#include "clip/frame.h"

#include <cfloat>
#include <cmath>

#include <geometry/path/path_object_polyline.h>

#include "arc/as_arc.h"
#include "polygon/outline_builder.h"

namespace geometry
{

namespace
{

constexpr int sizeExponent = 30;
constexpr double largestRounding = 1.0 / 1024; // of the place, in the units of the frame

void MoveVertex(CPathObjectPolyline & polyline, std::ptrdiff_t index, TPoint<double> const & to)
{
    polyline.RemoveVertex(static_cast<unsigned int>(index));
    polyline.InsertVertex(static_cast<unsigned int>(index), to.x, to.y);
}

/// Makes `next` begin where `object` ends.
void MakeMeet(CPathObjectBase & object, CPathObjectBase & next)
{
    TPoint<double> const end = object.GetEndPoint();
    TPoint<double> const start = next.GetStartPoint();
    if (end == start)
    {
        return;
    }
    if (auto* const polyline = dynamic_cast<CPathObjectPolyline*>(&next))
    {
        MoveVertex(*polyline, 0, end);
    }
    else if (auto* const before = dynamic_cast<CPathObjectPolyline*>(&object))
    {
        MoveVertex(*before, before->GetPointsEnd() - before->GetPointsBegin() - 1, start);
    }
    else if (auto* const arc = dynamic_cast<CPathObjectArc*>(&next); arc != nullptr && &object != &next)
    {
        arc->SetArc(end, arc->GetEndPoint(), arc->GetCentre(), arc->IsCounterClockwise(), arc->GetRadius());
    }
}

template <typename Change>
std::unique_ptr<CPolygon> CopyOutline(CPolygon const & polygon, Change const & change)
{
    OwnedPathObjects objects;
    for (CPathObjectBase const* object : polygon.GetOutline())
    {
        objects.emplace_back(object->Clone());
        change(*objects.back());
    }
    CPolygon::PathObjects handedOver;
    CBoundingRect<double> rect;
    for (std::size_t i = 0; i < objects.size(); ++i)
    {
        MakeMeet(*objects[i], *objects[(i + 1) % objects.size()]);
        handedOver.push_back(objects[i].get());
    }
    for (auto const & object : objects)
    {
        rect.Include(object->GetBoundingRect());
    }
    auto copy = std::make_unique<CPolygon>();
    CPolygonInternals::AdoptOutline(*copy, std::move(handedOver), rect, CPolygon::eWindingUnknown, nullptr);
    for (auto & object : objects)
    {
        object.release();
    }
    return copy;
}

template <typename Change>
std::unique_ptr<CPolygon> CopyPolygon(CPolygon const & polygon, Change const & change)
{
    std::unique_ptr<CPolygon> copy = CopyOutline(polygon, change);
    for (CPolygon const* hole : polygon.GetHoles())
    {
        std::unique_ptr<CPolygon> holeCopy = CopyOutline(*hole, change);
        CPolygonInternals::AddUnturnedHole(*copy, *holeCopy);
        holeCopy.release();
    }
    return copy;
}

} // namespace

CFrame::CFrame(PolygonRange const & polygons)
{
    CBoundingRect<double> rect;
    for (CPolygon const* polygon : polygons)
    {
        rect.Include(polygon->GetBoundingRect());
    }
    double const size = std::max(rect.maxX - rect.minX, rect.maxY - rect.minY);
    double const reach =
        std::max({std::fabs(rect.minX), std::fabs(rect.minY), std::fabs(rect.maxX), std::fabs(rect.maxY)});
    if (!(size > 0.0) || !(reach < DBL_MAX / 4))
    {
        return;
    }
    // a few digits only, so that the difference to a coordinate near it has no rounding
    double const grid = std::ldexp(1.0, std::ilogb(size) - 8);
    m_Origin.x = std::round((rect.minX + 0.5 * (rect.maxX - rect.minX)) / grid) * grid;
    m_Origin.y = std::round((rect.minY + 0.5 * (rect.maxY - rect.minY)) / grid) * grid;
    int const exponent = std::min(sizeExponent - std::ilogb(size) - 1,
                                  std::ilogb(largestRounding / (DBL_EPSILON * std::max(reach, size))));
    m_Scale = std::ldexp(1.0, std::min(exponent, 1000));
}

std::unique_ptr<CPolygon> CFrame::Enter(CPolygon const & polygon, TPoint<double> const & shift) const
{
    return CopyPolygon(polygon,
                       [&](CPathObjectBase & object)
                       {
                           object.Translate(-m_Origin.x, -m_Origin.y);
                           object.Scale(m_Scale, m_Scale);
                           object.Translate(shift.x, shift.y);
                       });
}

std::unique_ptr<CPolygon> CFrame::Leave(CPolygon const & polygon) const
{
    return CopyPolygon(polygon, [this](CPathObjectBase & object) { Leave(object); });
}

void CFrame::Leave(CPathObjectBase & object) const
{
    object.Scale(1.0 / m_Scale, 1.0 / m_Scale);
    object.Translate(m_Origin.x, m_Origin.y);
}

} // namespace geometry
