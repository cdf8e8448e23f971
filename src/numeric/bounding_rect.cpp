// Conversion of coordinate rectangles to the integer rectangles of the spatial hash: truncated, not rounded outward,
// and saturated, so that an empty or a far moved rectangle is no undefined behaviour.
#include <geometry/numeric/bounding_rect.h>

namespace geometry
{

namespace
{

int TruncateSaturated(double value)
{
    constexpr int low = std::numeric_limits<int>::min();
    constexpr int high = std::numeric_limits<int>::max();
    if (value != value)
    {
        return 0;
    }
    if (value <= static_cast<double>(low))
    {
        return low;
    }
    if (value >= static_cast<double>(high))
    {
        return high;
    }
    return static_cast<int>(value);
}

} // namespace

CBoundingRect<int> ToIntegerRect(CBoundingRect<double> const & rect)
{
    TPoint<int> const lower(TruncateSaturated(rect.minX), TruncateSaturated(rect.minY));
    TPoint<int> const upper(TruncateSaturated(rect.maxX), TruncateSaturated(rect.maxY));
    return CBoundingRect<int>(lower, upper);
}

} // namespace geometry
