// Uniting polygons: the driver over a range, the core that grows one polygon after another, and what it needs to group
// polygons and to put holes back.
#pragma once

#include <list>

#include "polygon/booleans.h"

namespace geometry
{

/// Element of the grouping: a polygon with those whose rectangles touch its own.
struct CPolygon::COverlapVectorsHelper
{
    explicit COverlapVectorsHelper(CPolygon* p) : polygon(p) {}
    CBoundingRect<double> const & GetBoundingRect() const { return polygon->GetBoundingRect(); }

    CPolygon* polygon;                            ///< not owned
    std::vector<COverlapVectorsHelper*> overlaps; ///< itself included
    bool visited = false;                         ///< its polygon stands in a group
};

using GroupingHash = CSpatialHashContainer<CPolygon::COverlapVectorsHelper,
                                           CHashCalculator<CPolygon::COverlapVectorsHelper, CBoundingRect<int>>>;

/// Appends to `groups` the polygons of each connected component of touching rectangles, depth first.
void CreateOverlapVectors(GroupingHash & hash, std::vector<PolygonVector> & groups);

/// Moves `polygons` into groups that can't meet: their components if they are more than `CPolygon::m_GroupingAmount`,
/// else one group. `polygons` is empty afterwards.
std::list<OwningPolygonVector> GroupPolygons(OwningPolygonVector & polygons);

/// Gives each hole to the innermost of `polygons` that contains it, and leaves null in its place. Sorts `polygons`,
/// small ones first. Holes that fit nowhere stay.
void AttachHolesToPolygons(PolygonVector & polygons, PolygonVector & holes);

/// Moves the polygons that lie in a hole of another one from `polygons` to `islands`. Sorts `polygons`.
void SplitOffIslands(PolygonVector & polygons, PolygonVector & islands);

/// What came of a merge, beside its polygons.
struct MergeOutcome
{
    EClipResult code =
        Clipper::eClipNothingToDo; ///< as the clipper and the holes had it; later ones may cover failures
    bool mayHaveMissed = false;    ///< a polygon passed over earlier may meet what grew meanwhile
    bool lostHoles = false;        ///< a hole couldn't be worked out and is gone
};

/// Which polygon of a group is grown next.
enum class EMergeOrder
{
    eLastFirst,
    eLargestFirst ///< so that none is swallowed by another one, which hadn't met all that it passed over
};

/// Whether a merge ends early, with polygons unmerged, once the calling thread is asked to stop.
enum class EMergeStop
{
    eNever,
    eWhenAsked
};

/// Unites the polygons of `group`, starting from the one that `order` says, and appends the merged ones to `result`;
/// `group` is empty afterwards. Polygons that one passed over before it was swallowed by another aren't offered to that
/// one again.
MergeOutcome DoMergeCore(PolygonVector & group, PolygonVector & result, Clipper & clipper, EMergeOrder order,
                         EMergeStop stop = EMergeStop::eNever);

/// `DoMergeCore`, again and again until nothing is missed; `order` is that of the first round.
MergeOutcome MergeCompletely(PolygonVector & group, PolygonVector & result, Clipper & clipper, EMergeOrder order,
                             EMergeStop stop = EMergeStop::eNever);

/// Merges pieces whose holes are known not to meet other pieces: merges the outlines, then puts the holes back. Ends
/// early when the calling thread is asked to stop.
EClipResult DoMergeCoreRestricted(PolygonVector & group, PolygonVector & result, Clipper & clipper);

/// `MergePolygonRange`, but until nothing is missed: its results don't overlap each other.
EClipResult MergeRangeCompletely(CPolygon const & polygon, PolygonVector & result, PolygonRange const & range,
                                 Clipper & clipper);

/// Empties `result`, deleting, and fills it with the union of `polygon` and all of `range`, beginning with `polygon`.
/// `eClipFailed` leaves it empty; `eClipNothingToDo` says that no new outline was traced.
EClipResult MergePolygonRange(CPolygon const & polygon, PolygonVector & result, PolygonRange const & range,
                              Clipper & clipper);

/// `MergePolygonRange` of the first of `polygons` and the others; at least one. Takes them over, unless one has a user
/// info. `result` is empty before.
EClipResult MergeAll(PolygonVector & polygons, PolygonVector & result, Clipper & clipper);

/// The same by `DoMergeCoreRestricted`.
EClipResult MergeAllRestricted(PolygonVector & polygons, PolygonVector & result, Clipper & clipper);

} // namespace geometry
