// The lists of cuts. A long list is searched through a map beside it, which lives as long as the notes are taken.
#include "path/split_helpers.h"

#include <algorithm>
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

CSplitEntryFinder::Places & CSplitEntryFinder::PlacesOf(SplitPositionList & list)
{
    Places & places = m_Places[&list];
    if (places.empty())
    {
        for (auto entry = list.begin(); entry != list.end(); ++entry)
        {
            places.emplace_hint(places.end(), entry->first.first, entry);
        }
    }
    return places;
}

SplitEntry & FindOrAddSplitEntry(SplitPositionList & list, PointIterator start, PointIterator end,
                                 [[maybe_unused]] PointIterator pathEnd)
{
    assert(start < pathEnd && end < pathEnd);
    auto const add = [&](SplitPositionList::iterator place)
    { return list.emplace(place, std::make_pair(start, end), std::vector<CPathObjectBase::SplitPoint>()); };
    if (currentFinder != nullptr && IsIndexUsed(list.size() >= LongListSize))
    {
        CSplitEntryFinder::Places & places = currentFinder->PlacesOf(list);
        auto const next = places.lower_bound(start);
        if (next != places.end() && next->first == start)
        {
            return *next->second;
        }
        auto const added = add(next == places.end() ? list.end() : next->second);
        places.emplace_hint(next, start, added);
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
