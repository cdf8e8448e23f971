// Holes and islands around a merge: outlines are merged first, and each hole then goes to the innermost polygon that
// contains it.
#include "polygon/merge.h"

#include <algorithm>
#include <cmath>

#include "polygon/area.h"
#include "polygon/relation_sort.h"
#include "proof/inside.h"
#include "report/reporting.h"

namespace geometry
{

namespace
{

/// Puts a polygon before those that contain it, and before those with a larger rectangle. No ordering in every input:
/// where outlines cross, each can lie in the other.
bool StandsBefore(CPolygon const & a, CPolygon const & b)
{
    return b.PolygonInPolygon(a) || RectArea(b.GetBoundingRect()) > RectArea(a.GetBoundingRect());
}

/// `polygon` contains `hole`, judged by one point; where there is a choice, an island that touches the hole from within
/// must not pass for a polygon around it.
bool CanOwn(CPolygon const & polygon, CPolygon const & hole, bool isOneOfMany)
{
    return polygon.PolygonInPolygon(hole) && (!isOneOfMany || std::abs(SignedOutlineArea(polygon.GetOutline())) >=
                                                                  std::abs(SignedOutlineArea(hole.GetOutline())));
}

/// `polygon` lies in a hole of `other`. A hole that lies in `polygon` tells that no other hole holds it.
bool IsIslandIn(CPolygon & other, CPolygon const & polygon)
{
    if (!polygon.GetBoundingRect().Overlaps(other.GetBoundingRect()))
    {
        return false;
    }
    std::vector<CPolygon*> near;
    CPolygonInternals::HolesOf(other).GetObjectsInRect(polygon.GetBoundingRect(), near);
    for (CPolygon const* hole : near)
    {
        if (hole->PolygonInPolygon(polygon))
        {
            return true;
        }
        if (polygon.PolygonInPolygon(*hole))
        {
            return false;
        }
    }
    return false;
}

} // namespace

void AttachHolesToPolygons(PolygonVector & polygons, PolygonVector & holes)
{
    if (holes.empty())
    {
        return;
    }
    SortByRelation(polygons, StandsBefore);
    for (CPolygon*& hole : holes)
    {
        auto owner =
            std::find_if(polygons.begin(), polygons.end(),
                         [&](CPolygon const* polygon) { return CanOwn(*polygon, *hole, polygons.size() > 1); });
        if (owner == polygons.end())
        {
            // its test point may touch the outline that it lies in
            owner = std::find_if(polygons.begin(), polygons.end(),
                                 [&](CPolygon const* polygon) { return Encloses(*polygon, *hole); });
        }
        if (owner == polygons.end())
        {
            owner =
                std::find_if(polygons.begin(), polygons.end(),
                             [&](CPolygon const* polygon) { return LiesClearlyIn(*hole, *polygon).value_or(false); });
        }
        if (owner != polygons.end())
        {
            CPolygonInternals::AddAsHole(**owner, *hole);
            hole = nullptr;
        }
    }
}

void SplitOffIslands(PolygonVector & polygons, PolygonVector & islands)
{
    SortByRelation(polygons, StandsBefore);
    for (std::size_t i = 0; i < polygons.size();)
    {
        bool isIsland = false;
        for (std::size_t k = i + 1; k < polygons.size() && !isIsland; ++k)
        {
            isIsland = IsIslandIn(*polygons[k], *polygons[i]);
        }
        if (isIsland)
        {
            MovePolygon(polygons, i, islands);
        }
        else
        {
            ++i;
        }
    }
}

namespace
{

/// A hole that lies where two pieces overlap comes with both.
void DropDuplicates(PolygonVector & holes)
{
    TBorrowedPolygons kept;
    for (CPolygon*& hole : holes)
    {
        std::vector<CPolygon*> near;
        CBoundingRect<int> const rect = ToIntegerRect(hole->GetBoundingRect());
        kept.hash.GetObjectsInRect(hole->GetBoundingRect(), near);
        bool const isThere = std::any_of(
            near.begin(), near.end(),
            [&](CPolygon const* other)
            {
                CBoundingRect<int> const otherRect = ToIntegerRect(other->GetBoundingRect());
                return otherRect.minX == rect.minX && otherRect.maxY == rect.maxY && other->IsCoincidentWith(*hole);
            });
        if (isThere)
        {
            delete hole;
            hole = nullptr;
        }
        else
        {
            kept.hash.Add(hole);
        }
    }
    holes.erase(std::remove(holes.begin(), holes.end(), nullptr), holes.end());
}

} // namespace

EClipResult DoMergeCoreRestricted(PolygonVector & group, PolygonVector & result, Clipper & clipper)
{
    OwningPolygonVector islands;
    SplitOffIslands(group, islands);
    OwningPolygonVector holes;
    for (CPolygon* polygon : group)
    {
        CPolygonInternals::TakeHoles(*polygon, holes);
    }
    MergeCompletely(group, result, clipper, EMergeOrder::eLastFirst, EMergeStop::eWhenAsked);
    DropDuplicates(holes);
    AttachHolesToPolygons(result, holes);
    for (CPolygon const* hole : holes)
    {
        if (hole != nullptr && !IsWithoutWidth(*hole))
        {
            Report(CReport::eReasonLostHole, hole->GetBoundingRect());
        }
    }
    AppendPolygons(result, islands);
    return Clipper::eClipNothingToDo;
}

} // namespace geometry
