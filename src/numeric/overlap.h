// Rectangles that overlap one of them: many are passed over by plain comparisons, with a branch that is nearly always
// taken.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include <geometry/numeric/bounding_rect.h>

namespace geometry
{

/// Overlaps by plain comparison whatever `rect` overlaps within tolerance: 100 units in the last place.
inline CBoundingRect<double> WithToleranceRoom(CBoundingRect<double> rect)
{
    constexpr double relativeRoom = 1e-12;
    constexpr double largestRegular = 1e300;
    double const largest =
        std::max({std::fabs(rect.minX), std::fabs(rect.minY), std::fabs(rect.maxX), std::fabs(rect.maxY)});
    if (!(largest < largestRegular))
    {
        constexpr double all = std::numeric_limits<double>::infinity();
        return CBoundingRect<double>(-all, -all, all, all);
    }
    rect.Inflate(relativeRoom * largest + std::numeric_limits<double>::min());
    return rect;
}

inline bool OverlapPlainly(CBoundingRect<double> const & a, CBoundingRect<double> const & b)
{
    bool const isApartInX = (static_cast<int>(a.maxX < b.minX) | static_cast<int>(a.minX > b.maxX)) != 0;
    return !isApartInX && !(a.maxY < b.minY) && !(a.minY > b.maxY); // numbers that are none overlap everything
}

} // namespace geometry
