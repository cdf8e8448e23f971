/// \file
/// Axis-parallel rectangles whose tests are tolerant: rectangles that touch within tolerance overlap.
#pragma once

#include <algorithm>
#include <limits>

#include <geometry/numeric/point.h>

namespace geometry
{

/// A rectangle by its four sides. Empty is: both minima the largest, both maxima the smallest (lowest) finite value
/// of `T`; an empty rectangle needs no flag, since the first `Include` overwrites all four sides.
/// Used with `double` for coordinates and with `int` for the cells of the spatial hash.
template <typename T>
class CBoundingRect
{
public:
    T minX = std::numeric_limits<T>::max();    ///< left side
    T minY = std::numeric_limits<T>::max();    ///< lower side
    T maxX = std::numeric_limits<T>::lowest(); ///< right side
    T maxY = std::numeric_limits<T>::lowest(); ///< upper side

    CBoundingRect() = default;
    CBoundingRect(T left, T lower, T right, T upper) : minX(left), minY(lower), maxX(right), maxY(upper) {}

    /// The rectangle of two points, by plain minimum and maximum.
    CBoundingRect(TPoint<T> const & a, TPoint<T> const & b)
        : minX(std::min(a.x, b.x)), minY(std::min(a.y, b.y)), maxX(std::max(a.x, b.x)), maxY(std::max(a.y, b.y))
    {
    }

    /// Back to the empty state.
    void Reset() { *this = CBoundingRect(); }

    /// Extends the rectangle by a point. A NaN coordinate changes nothing.
    void Include(TPoint<T> const & point)
    {
        minX = std::min(minX, point.x);
        minY = std::min(minY, point.y);
        maxX = std::max(maxX, point.x);
        maxY = std::max(maxY, point.y);
    }

    /// Extends the rectangle to the union with another; an empty one changes nothing.
    void Include(CBoundingRect const & other)
    {
        minX = std::min(minX, other.minX);
        minY = std::min(minY, other.minY);
        maxX = std::max(maxX, other.maxX);
        maxY = std::max(maxY, other.maxY);
    }

    /// Moves every side outward by `|distance|`: a rectangle can't be shrunk this way. An empty one stays empty.
    void Inflate(T const & distance)
    {
        if (minX > maxX || minY > maxY)
        {
            return;
        }
        T const d = distance < T{} ? -distance : distance;
        minX -= d;
        minY -= d;
        maxX += d;
        maxY += d;
    }

    /// False if the two are clearly apart in x or in y. An empty rectangle overlaps nothing.
    bool Overlaps(CBoundingRect const & other) const
    {
        return !IsClearlyLess(maxX, other.minX) && !IsClearlyGreater(minX, other.maxX) &&
               !IsClearlyLess(maxY, other.minY) && !IsClearlyGreater(minY, other.maxY);
    }

    /// False if the point is clearly outside; a point on a side within tolerance is inside.
    bool ContainsPoint(T const & x, T const & y) const
    {
        return !IsClearlyGreater(x, maxX) && !IsClearlyLess(x, minX) && !IsClearlyGreater(y, maxY) &&
               !IsClearlyLess(y, minY);
    }

    /// False if a side of `other` is clearly outside this rectangle.
    bool ContainsRect(CBoundingRect const & other) const
    {
        return !IsClearlyLess(other.minX, minX) && !IsClearlyLess(other.minY, minY) &&
               !IsClearlyGreater(other.maxX, maxX) && !IsClearlyGreater(other.maxY, maxY);
    }
};

/// Truncates each side toward zero to a 32-bit integer, independently, and sorts each pair of sides. A side beyond
/// the 32-bit range takes the nearest 32-bit value, NaN takes 0.
GEOMETRY_EXPORT CBoundingRect<int> ToIntegerRect(CBoundingRect<double> const & rect);

} // namespace geometry
