// Keeping the cuts of a path object in order; shared by polylines and arcs.
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include <geometry/path/path_object_base.h>

namespace geometry
{

/// The entries of a list by their segments, which are counted from the end of the path. Above them a pyramid of bits, one
/// for 64 of the level below, tells which are there.
class CSplitEntryPlaces
{
public:
    using Entry = CPathObjectBase::SplitPositionList::iterator;

    bool IsEmpty() const { return m_Entries.empty(); }
    void Set(std::size_t segment, Entry entry);
    /// The entry of the segment, or else that of the nearest one behind it in the path; null if there is none.
    Entry const* FindAtOrBehind(std::size_t segment) const;

private:
    static constexpr unsigned int LevelBits = 6;
    static constexpr std::size_t LevelCount = 7;

    std::vector<Entry> m_Entries;
    std::array<std::vector<std::uint64_t>, LevelCount> m_Levels;
};

/// While one lives, `FindOrAddSplitEntry` of its thread finds the entries of long lists fast. The lists must live as
/// long, and nothing else may add to them or remove.
class CSplitEntryFinder
{
public:
    CSplitEntryFinder();
    CSplitEntryFinder(CSplitEntryFinder const &) = delete;
    CSplitEntryFinder & operator=(CSplitEntryFinder const &) = delete;
    ~CSplitEntryFinder();

    CSplitEntryPlaces & PlacesOf(CPathObjectBase::SplitPositionList & list, CPathObjectBase::PointIterator pathEnd);

private:
    CSplitEntryFinder* m_Outer; ///< the one that was there before
    std::unordered_map<CPathObjectBase::SplitPositionList*, CSplitEntryPlaces> m_Places;
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
