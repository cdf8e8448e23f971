// The ways into a merge: two polygons, a range with the first one's part laid down, and the public one over many, which
// chooses the order so that nothing is missed.
#include <cmath>

#include "polygon/area.h"
#include "polygon/merge.h"
#include "polygon/relation_sort.h"

namespace geometry
{

EClipResult MergePolygonRange(CPolygon const & polygon, PolygonVector & result, PolygonRange const & range,
                              Clipper & clipper)
{
    DeletePolygons(result);
    if (range.empty())
    {
        PushPolygon(result, std::make_unique<CPolygon>(polygon));
        return Clipper::eClipNothingToDo;
    }
    OwningPolygonVector all;
    for (CPolygon const* other : range)
    {
        PushPolygon(all, std::make_unique<CPolygon>(*other));
    }
    PushPolygon(all, std::make_unique<CPolygon>(polygon));
    EClipResult code = Clipper::eClipNothingToDo;
    for (PolygonVector & group : GroupPolygons(all))
    {
        code = DoMergeCore(group, result, clipper).code;
    }
    if (code == Clipper::eClipFailed)
    {
        DeletePolygons(result);
    }
    return code;
}

EClipResult MergePolygonRangeRestricted(CPolygon const & polygon, PolygonVector & result, PolygonRange const & range,
                                        Clipper & clipper)
{
    DeletePolygons(result);
    if (range.empty())
    {
        PushPolygon(result, std::make_unique<CPolygon>(polygon));
        return Clipper::eClipNothingToDo;
    }
    OwningPolygonVector group;
    PushPolygon(group, std::make_unique<CPolygon>(polygon));
    for (CPolygon const* other : range)
    {
        PushPolygon(group, std::make_unique<CPolygon>(*other));
    }
    EClipResult const code = DoMergeCoreRestricted(group, result, clipper);
    if (code == Clipper::eClipFailed)
    {
        DeletePolygons(result);
    }
    return code;
}

bool CPolygon::MergePolygon(std::vector<CPolygon*> & result, CPolygon const & other) const
{
    std::unique_ptr<Clipper> const clipper(CreateClipper());
    return MergePolygonRange(*this, result, PolygonRange(1, &other), *clipper) != Clipper::eClipFailed;
}

namespace
{

/// By rectangle, then by outline: a polygon never lies in one that stands before it.
bool IsSmaller(CPolygon const & a, CPolygon const & b)
{
    double const areaA = RectArea(a.GetBoundingRect());
    double const areaB = RectArea(b.GetBoundingRect());
    return areaA != areaB ? areaA < areaB
                          : std::abs(SignedOutlineArea(a.GetOutline())) < std::abs(SignedOutlineArea(b.GetOutline()));
}

} // namespace

bool CPolygon::MergePolygons(std::vector<CPolygon*> & result, std::vector<CPolygon const*> const & polygons)
{
    OwningPolygonVector all;
    for (CPolygon const* polygon : polygons)
    {
        if (polygon != nullptr && !polygon->GetOutline().empty())
        {
            PushPolygon(all, std::make_unique<CPolygon>(*polygon));
        }
    }
    DeletePolygons(result);
    std::unique_ptr<Clipper> const clipper(CreateClipper());
    // starting from the largest, a merge meets all that there is; only covered holes can ask for another round
    for (bool isDone = all.empty(); !isDone;)
    {
        std::size_t const count = all.size();
        OwningPolygonVector merged;
        MergeOutcome total;
        for (PolygonVector & group : GroupPolygons(all))
        {
            SortByRelation(group, IsSmaller);
            MergeOutcome const outcome = DoMergeCore(group, merged, *clipper);
            total.mayHaveMissed = total.mayHaveMissed || outcome.mayHaveMissed;
            total.lostHoles = total.lostHoles || outcome.lostHoles;
        }
        if (total.lostHoles)
        {
            return false;
        }
        isDone = !total.mayHaveMissed || merged.size() >= count;
        AppendPolygons(isDone ? result : all, merged);
    }
    return true;
}

} // namespace geometry
