// The holes of a polygon that grows in a merge: most steps touch none of them, and find that out by their rectangles
// alone, which stand in a row.
#pragma once

#include <vector>

#include "polygon/polygon_tools.h"

namespace geometry
{

/// Takes the holes of the polygon, in their order, until it has stopped growing.
class CTargetHoles
{
public:
    bool IsEmpty() const { return m_Holes.empty(); }
    /// A hole may bear holes itself: rings that lie about each other where an outline crosses itself.
    bool HasNested() const { return m_HasNested; }
    PolygonVector const & GetAll() const { return m_Holes; }

    /// Moves the holes of `target` here, where there are none, or back behind those that it has meanwhile.
    void TakeFrom(CPolygon & target);
    void GiveBackTo(CPolygon & target);
    /// Moves all to the end of `holes`.
    void TakeAll(PolygonVector & holes);

    /// Which ones have rectangles that overlap `box`, ascending.
    std::vector<std::size_t> FindOverlapping(CBoundingRect<double> const & box) const;
    /// Puts `holes` before the others.
    void PutInFront(PolygonVector & holes);
    /// Deletes the hole at `index`; `pieces` take its place.
    void Replace(std::size_t index, PolygonVector & pieces);
    /// Deletes that at `index` and those behind.
    void DeleteFrom(std::size_t index);

private:
    void Insert(std::size_t index, PolygonVector & holes);

    OwningPolygonVector m_Holes;
    std::vector<CBoundingRect<double>> m_Rects; ///< of each
    bool m_HasNested = false;
};

} // namespace geometry
