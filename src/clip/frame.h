// Copies of polygons in coordinates of another size and place, and back.
#pragma once

#include "polygon/polygon_tools.h"

namespace geometry
{

/// Coordinates that begin elsewhere and are larger by a power of two, so that what goes there and back changes by the
/// rounding of the place alone. In it a shape is near 2^30 units large, where the absolute distances of the arc code are
/// small and steps of a part of the size are large against them.
class CFrame
{
public:
    /// Of the coordinates themselves.
    CFrame() = default;
    /// For work on `polygons`.
    explicit CFrame(PolygonRange const & polygons);

    /// A step in the coordinates themselves, from the frame back. Scaling is exact.
    bool IsPlain() const { return m_Scale == 1.0 && m_Origin.x == 0.0 && m_Origin.y == 0.0; }
    /// A copy with holes, in the frame, moved by `shift` (in the units of the frame).
    std::unique_ptr<CPolygon> Enter(CPolygon const & polygon, TPoint<double> const & shift) const;
    /// A copy with holes, back from the frame.
    std::unique_ptr<CPolygon> Leave(CPolygon const & polygon) const;
    void Leave(CPathObjectBase & object) const;
    double GetScale() const { return m_Scale; }

private:
    TPoint<double> m_Origin;
    double m_Scale = 1.0;
};

} // namespace geometry
