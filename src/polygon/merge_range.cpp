// The ways into a merge: two polygons, a range with the first one's part laid down, and the public one over many, which
// takes the largest first.
#include "polygon/merge.h"

#include <algorithm>
#include <iterator>

#include "proof/proved.h"

namespace geometry
{

namespace
{

/// A merge in groups, each group by `mergeGroup`. The value is that of the last group.
template <typename MergeGroup>
EClipResult MergeGroups(OwningPolygonVector & all, PolygonVector & result, MergeGroup const & mergeGroup)
{
    EClipResult code = Clipper::eClipNothingToDo;
    for (PolygonVector & group : GroupPolygons(all))
    {
        code = mergeGroup(group).code;
    }
    if (code == Clipper::eClipFailed)
    {
        DeletePolygons(result);
    }
    return code;
}

/// The same of copies of a range and of `polygon`, which comes last.
template <typename MergeGroup>
EClipResult MergeCopies(CPolygon const & polygon, PolygonVector & result, PolygonRange const & range,
                        MergeGroup const & mergeGroup)
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
    return MergeGroups(all, result, mergeGroup);
}

/// Moves `polygons` to `target`, or, with a user info, whose clones can be counted, leaves them and puts clones there.
void MoveOrClone(PolygonVector & polygons, PolygonVector & target)
{
    if (std::none_of(polygons.begin(), polygons.end(), [](CPolygon const* polygon) { return HasUserInfo(*polygon); }))
    {
        AppendPolygons(target, polygons);
        return;
    }
    for (CPolygon const* polygon : polygons)
    {
        PushPolygon(target, std::make_unique<CPolygon>(*polygon));
    }
}

} // namespace

namespace
{

bool IsInAny(std::size_t first, std::size_t second)
{
    return first + second > 0;
}

} // namespace

EClipResult MergePolygonRange(CPolygon const & polygon, PolygonVector & result, PolygonRange const & range,
                              Clipper & clipper)
{
    return MergeCopies(polygon, result, range,
                       [&](PolygonVector & group)
                       { return DoMergeCore(group, result, clipper, EMergeOrder::eLastFirst); });
}

EClipResult MergeAll(PolygonVector & polygons, PolygonVector & result, Clipper & clipper)
{
    OwningPolygonVector all;
    std::rotate(polygons.begin(), polygons.begin() + 1, polygons.end());
    MoveOrClone(polygons, all);
    return MergeGroups(all, result,
                       [&](PolygonVector & group)
                       { return DoMergeCore(group, result, clipper, EMergeOrder::eLastFirst); });
}

EClipResult MergeRangeCompletely(CPolygon const & polygon, PolygonVector & result, PolygonRange const & range,
                                 Clipper & clipper)
{
    return MergeCopies(polygon, result, range,
                       [&](PolygonVector & group)
                       { return MergeCompletely(group, result, clipper, EMergeOrder::eLastFirst); });
}

EClipResult MergeAllRestricted(PolygonVector & polygons, PolygonVector & result, Clipper & clipper)
{
    OwningPolygonVector group;
    MoveOrClone(polygons, group);
    EClipResult const code = DoMergeCoreRestricted(group, result, clipper);
    if (code == Clipper::eClipFailed)
    {
        DeletePolygons(result);
    }
    return code;
}

bool CPolygon::MergePolygon(std::vector<CPolygon*> & result, CPolygon const & other) const
{
    bool const isDone =
        RunProved({CReport::eOperationMerge, {this}, {&other}, IsInAny}, result,
                  [](PolygonRange const & first, PolygonRange const & second, PolygonVector & out)
                  {
                      std::unique_ptr<Clipper> const clipper(CreateClipper());
                      return MergePolygonRange(*first.front(), out, second, *clipper) != Clipper::eClipFailed;
                  });
    CPolygonInternals::ForgetFacts(result);
    return isDone;
}

namespace
{

bool MergeMany(PolygonRange const & polygons, PolygonVector & result)
{
    OwningPolygonVector all;
    for (CPolygon const* polygon : polygons)
    {
        PushPolygon(all, std::make_unique<CPolygon>(*polygon));
    }
    std::unique_ptr<Clipper> const clipper(CreateClipper());
    OwningPolygonVector merged;
    bool lostHoles = false;
    for (PolygonVector & group : GroupPolygons(all))
    {
        lostHoles = MergeCompletely(group, merged, *clipper, EMergeOrder::eLargestFirst).lostHoles || lostHoles;
    }
    if (lostHoles)
    {
        DeletePolygons(merged);
    }
    result.swap(merged); // what it held goes with `merged`
    return !lostHoles;
}

} // namespace

bool CPolygon::MergePolygons(std::vector<CPolygon*> & result, std::vector<CPolygon const*> const & polygons)
{
    PolygonRange range;
    std::copy_if(polygons.begin(), polygons.end(), std::back_inserter(range),
                 [](CPolygon const* polygon) { return polygon != nullptr && !polygon->GetOutline().empty(); });
    bool const isDone = RunProved({CReport::eOperationMergeMany, {}, range, IsInAny}, result,
                                  [](PolygonRange const &, PolygonRange const & inputs, PolygonVector & out)
                                  { return MergeMany(inputs, out); });
    CPolygonInternals::ForgetFacts(result);
    return isDone;
}

} // namespace geometry
