// The lists of cuts. A long list is searched through a table beside it, which lives as long as the notes are taken.
#include "path/split_helpers.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>
#include <iterator>
#include <tuple>
#include <utility>

#include "numeric/chain_index.h"
#include "path/segment_kernels.h"

namespace geometry
{

namespace
{

using SplitEntry = CPathObjectBase::SplitEntry;
using SplitPositionList = CPathObjectBase::SplitPositionList;
using PointIterator = CPathObjectBase::PointIterator;

constexpr std::size_t LongListSize = 64;
constexpr std::size_t LongEntrySize = 32;

constexpr int StepsFromLast = 8;
constexpr int WalksBeforeTable = 4;

thread_local CSplitEntryFinder* currentFinder = nullptr;

SplitPositionList::iterator AddBefore(SplitPositionList & list, SplitPositionList::iterator place, PointIterator start,
                                      PointIterator end)
{
    return list.emplace(place, std::piecewise_construct, std::make_tuple(start, end), std::make_tuple());
}

} // namespace

CSplitEntryFinder::CSplitEntryFinder() : m_Outer(currentFinder)
{
    currentFinder = this;
}

CSplitEntryFinder::~CSplitEntryFinder()
{
    currentFinder = m_Outer;
}

void CSplitEntryPlaces::Set(std::size_t segment, Entry entry)
{
    if (segment >= m_Entries.size())
    {
        m_Entries.resize(segment + 1);
    }
    m_Entries[segment] = entry;
    for (std::vector<std::uint64_t> & level : m_Levels)
    {
        std::size_t const word = segment >> LevelBits;
        if (word >= level.size())
        {
            level.resize(word + 1);
        }
        level[word] |= std::uint64_t{1} << (segment % 64);
        segment = word;
    }
}

CSplitEntryPlaces::Entry const* CSplitEntryPlaces::FindAtOrBehind(std::size_t segment) const
{
    // up until a word holds a bit before the place, then down along the last bits
    segment = std::min(segment + 1, m_Entries.size());
    for (std::size_t up = 0; up < LevelCount; ++up)
    {
        std::size_t const word = segment >> LevelBits;
        std::vector<std::uint64_t> const & level = m_Levels[up];
        std::uint64_t const mask = (std::uint64_t{1} << (segment % 64)) - 1;
        std::uint64_t const bits = word < level.size() ? level[word] & mask : 0;
        if (bits != 0)
        {
            std::size_t found = word * 64 + static_cast<std::size_t>(std::bit_width(bits)) - 1;
            for (std::size_t down = up; down-- > 0;)
            {
                found = found * 64 + static_cast<std::size_t>(std::bit_width(m_Levels[down][found])) - 1;
            }
            return &m_Entries[found];
        }
        segment = word;
    }
    return nullptr;
}

/// Steps from the last entry to the first one that isn't before `start`; false if that is far.
bool CSplitEntryPlaces::FindNearLast(PointIterator start)
{
    auto const isBefore = [start](Entry entry) { return entry->first.first < start; };
    Entry entry = m_Last;
    int steps = 0;
    while (entry != m_List.end() && isBefore(entry) && ++steps < StepsFromLast)
    {
        ++entry;
    }
    while (entry != m_List.begin() && !isBefore(std::prev(entry)) && ++steps < StepsFromLast)
    {
        --entry;
    }
    m_Last = entry;
    return steps < StepsFromLast;
}

/// The same with no regard to the last entry: a few times by a walk, and then by the table.
void CSplitEntryPlaces::FindFarFromLast(PointIterator start, PointIterator pathEnd)
{
    if (m_Walks < WalksBeforeTable)
    {
        ++m_Walks;
        m_Last = std::find_if(m_List.begin(), m_List.end(),
                              [&](SplitEntry const & entry) { return !(entry.first.first < start); });
        return;
    }
    if (m_Entries.empty())
    {
        for (auto entry = m_List.begin(); entry != m_List.end(); ++entry)
        {
            Set(static_cast<std::size_t>(pathEnd - entry->first.first), entry);
        }
    }
    Entry const* const next = FindAtOrBehind(static_cast<std::size_t>(pathEnd - start));
    m_Last = next == nullptr ? m_List.end() : *next;
}

CSplitEntryPlaces::Entry CSplitEntryPlaces::FindOrAdd(PointIterator start, PointIterator end, PointIterator pathEnd)
{
    if (!FindNearLast(start))
    {
        FindFarFromLast(start, pathEnd);
    }
    if (m_Last == m_List.end() || m_Last->first.first != start)
    {
        m_Last = AddBefore(m_List, m_Last, start, end);
        if (!m_Entries.empty())
        {
            Set(static_cast<std::size_t>(pathEnd - start), m_Last);
        }
    }
    return m_Last;
}

CSplitEntryPlaces & CSplitEntryFinder::PlacesOf(SplitPositionList & list)
{
    for (TKnown const & known : m_Known)
    {
        if (known.list == &list)
        {
            return *known.places;
        }
    }
    m_Known[0] = m_Known[1];
    m_Known[1] = {&list, &m_Places.try_emplace(&list, list).first->second};
    return *m_Known[1].places;
}

SplitEntry & FindOrAddSplitEntry(SplitPositionList & list, PointIterator start, PointIterator end,
                                 PointIterator pathEnd)
{
    assert(start < pathEnd && end < pathEnd);
    if (currentFinder != nullptr && IsIndexUsed(list.size() >= LongListSize))
    {
        return *currentFinder->PlacesOf(list).FindOrAdd(start, end, pathEnd);
    }
    // the entries stand in the order of the segments: the first one that isn't before `start` decides
    auto const place =
        std::find_if(list.begin(), list.end(), [&](auto const & entry) { return !(entry.first.first < start); });
    return place != list.end() && place->first.first == start ? *place : *AddBefore(list, place, start, end);
}

void InsertSplitPoint(CPathObjectBase::SplitPoints & points, CPathObjectBase::SplitPoint const & point,
                      CPathObjectBase::SplitPoint const & origin)
{
    if (points.empty())
    {
        points.push_back(point);
        return;
    }
    double const distance = SquareDistance(point, origin);
    auto const isFarther = [&](auto const & present) { return SquareDistance(present, origin) > distance; };
    bool const isLong = std::isfinite(distance) && IsIndexUsed(points.size() >= LongEntrySize);
    auto const place =
        isLong ? std::partition_point(points.begin(), points.end(), [&](auto const & p) { return !isFarther(p); })
               : std::find_if(points.begin(), points.end(), isFarther);
    points.insert(place, point);
}

} // namespace geometry
