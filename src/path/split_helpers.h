// Keeping the cuts of a path object in order; shared by polylines and arcs.
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include <geometry/path/path_object_base.h>

namespace geometry
{

/// The entries of one list: the one found last, since the next one is mostly near it, and, once that wasn't so a few
/// times, a table by their segments, which are counted from the end of the path. Above it a pyramid of bits, one for 64
/// of the level below, tells which are there.
class CSplitEntryPlaces
{
public:
    using List = CPathObjectBase::SplitPositionList;
    using Entry = List::iterator;

    explicit CSplitEntryPlaces(List & list) : m_List(list), m_Last(list.begin()) {}

    /// As `FindOrAddSplitEntry`.
    Entry FindOrAdd(CPathObjectBase::PointIterator start, CPathObjectBase::PointIterator end,
                    CPathObjectBase::PointIterator pathEnd);

private:
    bool FindNearLast(CPathObjectBase::PointIterator start);
    void FindFarFromLast(CPathObjectBase::PointIterator start, CPathObjectBase::PointIterator pathEnd);
    void Set(std::size_t segment, Entry entry);
    /// The entry of the segment, or else that of the nearest one behind it in the path; null if there is none.
    Entry const* FindAtOrBehind(std::size_t segment) const;

    static constexpr unsigned int LevelBits = 6;
    static constexpr std::size_t LevelCount = 7;

    List & m_List;
    Entry m_Last; ///< the first one that isn't before the segment asked for last
    int m_Walks = 0;
    std::vector<Entry> m_Entries; ///< empty until it is needed
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

    CSplitEntryPlaces & PlacesOf(CPathObjectBase::SplitPositionList & list);

private:
    struct TKnown
    {
        CPathObjectBase::SplitPositionList* list = nullptr;
        CSplitEntryPlaces* places = nullptr;
    };

    CSplitEntryFinder* m_Outer; ///< the one that was there before
    std::unordered_map<CPathObjectBase::SplitPositionList*, CSplitEntryPlaces> m_Places;
    std::array<TKnown, 2> m_Known; ///< the two lists asked for last: those of a pair
};

/// The entry of the segment `start` to `end`, made at its place in the order of the segments if there is none.
/// `pathEnd` is the end of the vertices of the path.
CPathObjectBase::SplitEntry & FindOrAddSplitEntry(CPathObjectBase::SplitPositionList & list,
                                                  CPathObjectBase::PointIterator start,
                                                  CPathObjectBase::PointIterator end,
                                                  CPathObjectBase::PointIterator pathEnd);

/// Inserts `point` by its distance from `origin`; equal distances stay in the order of their arrival, and duplicates
/// stay.
void InsertSplitPoint(CPathObjectBase::SplitPoints & points, CPathObjectBase::SplitPoint const & point,
                      CPathObjectBase::SplitPoint const & origin);

} // namespace geometry
