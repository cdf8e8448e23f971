// Loose material brought into the order that polygons need: a heap of path objects becomes one chain, a heap of closed
// outlines is told apart into outlines and holes.
#include <geometry/polygon/polygon.h>

#include <algorithm>

#include "polygon/area.h"
#include "polygon/relation_sort.h"

namespace geometry
{

// --- a chain of path objects -------------------------------------------------------------------------------------

namespace
{

using PathObjects = CPolygon::PathObjects;

void DeleteAll(PathObjects & objects)
{
    for (CPathObjectBase* object : objects)
    {
        delete object;
    }
    objects.clear();
}

/// `object` goes on where `current` ends, reversed if need be.
bool Follows(CPathObjectBase const & current, CPathObjectBase & object)
{
    TPoint<double> const & end = current.GetEndPoint();
    if (object.GetStartPoint() == end)
    {
        return true;
    }
    if (!(object.GetEndPoint() == end))
    {
        return false;
    }
    object.Reverse();
    return true;
}

/// Moves the last object to the front and behind it, pass by pass, what follows; the others keep their order.
/// True if the chain takes up all objects.
bool MakeChain(PathObjects & objects)
{
    auto const at = [&](std::size_t i) { return objects.begin() + static_cast<std::ptrdiff_t>(i); };
    std::rotate(objects.begin(), objects.end() - 1, objects.end());
    std::size_t chained = 1;
    for (std::size_t before = 0; chained < objects.size() && chained > before;)
    {
        before = chained;
        for (std::size_t i = chained; i < objects.size(); ++i)
        {
            if (Follows(*objects[chained - 1], *objects[i]))
            {
                std::rotate(at(chained), at(i), at(i) + 1);
                ++chained;
            }
        }
    }
    return chained == objects.size();
}

} // namespace

bool CPolygon::SortPathObjectsForProperPolygonCreation(std::vector<CPathObjectBase*> & objects)
{
    bool isChain = !objects.empty() && std::find(objects.begin(), objects.end(), nullptr) == objects.end();
    if (isChain && objects.size() == 1)
    {
        isChain = objects.front()->GetStartPoint() == objects.front()->GetEndPoint();
    }
    else if (isChain)
    {
        isChain = MakeChain(objects);
    }
    if (!isChain)
    {
        DeleteAll(objects);
    }
    return isChain;
}

// --- outlines and holes ------------------------------------------------------------------------------------------

namespace
{

bool IsInAny(CPolygon const & polygon, std::vector<CPolygon*> const & others)
{
    return std::any_of(others.begin(), others.end(),
                       [&](CPolygon const* other) { return other->PolygonInPolygon(polygon); });
}

} // namespace

void CPolygon::SplitPolygonsInOutlinesAndHoles(std::vector<CPolygon*> & polygons, std::vector<CPolygon*> & outlines,
                                               std::vector<CPolygon*> & holes)
{
    outlines.clear();
    holes.clear();
    outlines.reserve(polygons.size()); // from here to the hand-over nothing but the sort can fail
    holes.reserve(polygons.size());
    polygons.erase(std::remove(polygons.begin(), polygons.end(), nullptr), polygons.end());
    SortByRelation(polygons, [](CPolygon const & a, CPolygon const & b)
                   { return a.PolygonInPolygon(b) || RectArea(a.GetBoundingRect()) > RectArea(b.GetBoundingRect()); });
    for (CPolygon* polygon : polygons)
    {
        bool const isHole = IsInAny(*polygon, outlines) && !IsInAny(*polygon, holes);
        (isHole ? holes : outlines).push_back(polygon);
    }
    polygons.clear();
}

} // namespace geometry
