// Polygons whose rectangles don't reach each other, not even through others, never meet: a merge of many is cut into
// such groups first.
#include "polygon/merge.h"

namespace geometry
{

namespace
{

using Helper = CPolygon::COverlapVectorsHelper;

/// Puts `root` and all that it reaches into `group`. The stack of open visits stands in for recursion, which would go
/// as deep as a chain of polygons is long.
void VisitComponent(Helper & root, PolygonVector & group)
{
    struct OpenVisit
    {
        Helper* helper;
        std::size_t next; ///< index of the overlap to look at
    };
    auto const enter = [&group](Helper & helper)
    {
        group.push_back(helper.polygon);
        helper.visited = true;
        return OpenVisit{&helper, 0};
    };
    std::vector<OpenVisit> open(1, enter(root));
    while (!open.empty())
    {
        OpenVisit & visit = open.back();
        if (visit.next == visit.helper->overlaps.size())
        {
            open.pop_back();
        }
        else if (Helper & other = *visit.helper->overlaps[visit.next++]; !other.visited)
        {
            open.push_back(enter(other));
        }
    }
}

} // namespace

void CreateOverlapVectors(GroupingHash & hash, std::vector<PolygonVector> & groups)
{
    std::vector<Helper*> found;
    for (Helper* helper : hash.GetObjects())
    {
        found.clear();
        hash.GetObjectsInRect(helper->GetBoundingRect(), found);
        helper->overlaps = found;
    }
    for (Helper* helper : hash.GetObjects())
    {
        if (!helper->visited)
        {
            groups.emplace_back();
            VisitComponent(*helper, groups.back());
        }
    }
}

std::list<OwningPolygonVector> GroupPolygons(OwningPolygonVector & polygons)
{
    std::vector<PolygonVector> components;
    if (polygons.size() > CPolygon::m_GroupingAmount)
    {
        GroupingHash hash;
        for (CPolygon* polygon : polygons)
        {
            auto helper = std::make_unique<Helper>(polygon);
            hash.AddNew(helper.get());
            helper.release();
        }
        CreateOverlapVectors(hash, components);
    }
    else
    {
        components.emplace_back(polygons);
    }
    std::list<OwningPolygonVector> groups;
    for (PolygonVector const & component : components)
    {
        groups.emplace_back().reserve(component.size());
    }
    auto group = groups.begin();
    for (PolygonVector const & component : components)
    {
        (group++)->assign(component.begin(), component.end()); // within what is reserved: can't throw
    }
    polygons.clear();
    return groups;
}

} // namespace geometry
