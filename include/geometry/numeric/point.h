/// \file
/// A point in the plane, compared with tolerance.
#pragma once

#include <geometry/numeric/almost_equal.h>

namespace geometry
{

/// A point in the caller's coordinate unit. The virtual destructor lets the points of a cut derive from it.
template <typename T>
struct TPoint
{
    T x{}; ///< horizontal coordinate
    T y{}; ///< vertical coordinate

    TPoint() = default;
    TPoint(T const & xValue, T const & yValue) : x(xValue), y(yValue) {}
    TPoint(TPoint const &) = default;
    TPoint & operator=(TPoint const &) = default;
    virtual ~TPoint() = default;

    /// Both coordinates almost equal with the standard limit; `y` is looked at only if `x` agrees.
    bool operator==(TPoint const & other) const { return IsAlmostEqual(x, other.x) && IsAlmostEqual(y, other.y); }
    bool operator!=(TPoint const & other) const { return !(*this == other); }
};

} // namespace geometry
