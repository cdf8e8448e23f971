// Polygons that wait for their turn in a merge. The target takes them out one by one, from anywhere, and each time it
// has grown it asks which of the others are near the place.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "numeric/scatter_index.h"
#include "polygon/polygon_tools.h"

namespace geometry
{

/// Owns its polygons, each at a place of its own: those that leave leave a gap, so that the order and the places of the
/// others stay. Their rectangles must not change meanwhile.
class CWaitingPolygons
{
public:
    bool IsEmpty() const { return m_Count == 0; }
    /// Behind the last place.
    std::size_t GetEnd() const { return m_Places.size(); }
    /// The polygon, or null in a gap.
    CPolygon* At(std::size_t place) const { return m_Places[place]; }

    /// Puts `polygon` behind all others.
    void Add(std::unique_ptr<CPolygon> polygon);
    /// The same for all of `polygons`, which are taken out there.
    void AddAll(PolygonVector & polygons);
    void AddAll(CWaitingPolygons & polygons);
    std::unique_ptr<CPolygon> Take(std::size_t place);
    /// Moves all to the end of `target`.
    void TakeAll(PolygonVector & target);
    /// Closes the gaps, if that is worth it: the places change.
    void Tidy();

    /// The places from `start` on of the polygons whose rectangles overlap `box`, ascending.
    std::vector<std::size_t> FindOverlapping(CBoundingRect<double> const & box, std::size_t start);

private:
    void CloseGaps();
    void BringIndexUpToDate();

    OwningPolygonVector m_Places; ///< null in gaps
    std::size_t m_Count = 0;      ///< without gaps
    /// Of the polygons that stood before `m_IndexedEnd` when it was made. The number of each is its index in
    /// `m_IndexedPlaces`.
    std::unique_ptr<CScatterIndex> m_Index;
    std::vector<std::size_t> m_IndexedPlaces;
    std::size_t m_IndexedEnd = 0;
};

} // namespace geometry
