// A sort for relations that need not be an ordering: "contains or is larger" can run in circles, and a standard sort
// may then read out of bounds.
#pragma once

#include <cstddef>
#include <vector>

namespace geometry
{

/// Bottom-up merge sort: stable, O(n log n) calls of `before`, in bounds for any answers it gives; the order that
/// `before` describes where it describes one. An exception of `before` or of an allocation leaves all elements there.
template <typename T, typename Before>
void SortByRelation(std::vector<T*> & elements, Before before)
{
    std::size_t const count = elements.size();
    std::vector<T*> source(elements);
    std::vector<T*> target(count);
    for (std::size_t width = 1; width < count; width *= 2)
    {
        for (std::size_t low = 0; low < count; low += 2 * width)
        {
            std::size_t const middle = low + width < count ? low + width : count;
            std::size_t const high = middle + width < count ? middle + width : count;
            std::size_t left = low;
            std::size_t right = middle;
            for (std::size_t out = low; out < high; ++out)
            {
                bool const takeRight = left == middle || (right < high && before(*source[right], *source[left]));
                target[out] = source[takeRight ? right++ : left++];
            }
        }
        source.swap(target);
    }
    elements.swap(source);
}

} // namespace geometry
