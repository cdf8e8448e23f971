// Keeping the cuts of a path object in order; shared by polylines and arcs.
#pragma once

#include <map>
#include <unordered_map>
#include <vector>

#include <geometry/path/path_object_base.h>

namespace geometry
{

/// While one lives, `FindOrAddSplitEntry` of its thread finds the entries of long lists fast. The lists must live as
/// long, and nothing else may add to them or remove.
class CSplitEntryFinder
{
public:
    using Places = std::map<CPathObjectBase::PointIterator, CPathObjectBase::SplitPositionList::iterator>;

    CSplitEntryFinder();
    CSplitEntryFinder(CSplitEntryFinder const &) = delete;
    CSplitEntryFinder & operator=(CSplitEntryFinder const &) = delete;
    ~CSplitEntryFinder();

    /// The entries of `list` by the start of their segments.
    Places & PlacesOf(CPathObjectBase::SplitPositionList & list);

private:
    CSplitEntryFinder* m_Outer; ///< the one that was there before
    std::unordered_map<CPathObjectBase::SplitPositionList*, Places> m_Places;
};

/// The entry of the segment `start` to `end`, made at its place in the order of the segments if there is none.
/// `pathEnd` is the end of the vertices of the path.
CPathObjectBase::SplitEntry & FindOrAddSplitEntry(CPathObjectBase::SplitPositionList & list,
                                                  CPathObjectBase::PointIterator start,
                                                  CPathObjectBase::PointIterator end,
                                                  CPathObjectBase::PointIterator pathEnd);

/// Inserts `point` by its distance from `origin`; equal distances stay in the order of their arrival, and duplicates
/// stay.
void InsertSplitPoint(std::vector<CPathObjectBase::SplitPoint> & points, CPathObjectBase::SplitPoint const & point,
                      CPathObjectBase::SplitPoint const & origin);

} // namespace geometry
