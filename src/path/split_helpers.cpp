// The lists of cuts. A long list is searched through a table beside it, which lives as long as the notes are taken.
#include "path/split_helpers.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>

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

thread_local CSplitEntryFinder* currentFinder = nullptr;

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

CSplitEntryPlaces & CSplitEntryFinder::PlacesOf(SplitPositionList & list, PointIterator pathEnd)
{
    CSplitEntryPlaces & places = m_Places[&list];
    if (places.IsEmpty())
    {
        for (auto entry = list.begin(); entry != list.end(); ++entry)
        {
            places.Set(static_cast<std::size_t>(pathEnd - entry->first.first), entry);
        }
    }
    return places;
}

SplitEntry & FindOrAddSplitEntry(SplitPositionList & list, PointIterator start, PointIterator end,
                                 PointIterator pathEnd)
{
    assert(start < pathEnd && end < pathEnd);
    auto const add = [&](SplitPositionList::iterator place)
    { return list.emplace(place, std::make_pair(start, end), std::vector<CPathObjectBase::SplitPoint>()); };
    if (currentFinder != nullptr && IsIndexUsed(list.size() >= LongListSize))
    {
        CSplitEntryPlaces & places = currentFinder->PlacesOf(list, pathEnd);
        auto const segment = static_cast<std::size_t>(pathEnd - start);
        CSplitEntryPlaces::Entry const* const next = places.FindAtOrBehind(segment);
        if (next != nullptr && (*next)->first.first == start)
        {
            return **next;
        }
        auto const added = add(next == nullptr ? list.end() : *next);
        places.Set(segment, added);
        return *added;
    }
    // the entries stand in the order of the segments: the first one that isn't before `start` decides
    auto const place =
        std::find_if(list.begin(), list.end(), [&](auto const & entry) { return !(entry.first.first < start); });
    return place != list.end() && place->first.first == start ? *place : *add(place);
}

void InsertSplitPoint(std::vector<CPathObjectBase::SplitPoint> & points, CPathObjectBase::SplitPoint const & point,
                      CPathObjectBase::SplitPoint const & origin)
{
    double const distance = SquareDistance(point, origin);
    auto const isFarther = [&](auto const & present) { return SquareDistance(present, origin) > distance; };
    bool const isLong = std::isfinite(distance) && IsIndexUsed(points.size() >= LongEntrySize);
    auto const place =
        isLong ? std::partition_point(points.begin(), points.end(), [&](auto const & p) { return !isFarther(p); })
               : std::find_if(points.begin(), points.end(), isFarther);
    points.insert(place, point);
}

} // namespace geometry
