#include "numeric/scatter_index.h"

#include <algorithm>
#include <numeric>

#include "numeric/overlap.h"

namespace geometry
{

namespace
{

using Rect = CScatterIndex::Rect;

/// Where `value` lies between `low` and `high`, in 16 bits; anything for what isn't a number.
std::uint32_t PlaceBetween(double low, double high, double value)
{
    constexpr double largest = 65535.0;
    double const place = largest * ((value - low) / (high - low));
    return place > 0.0 ? static_cast<std::uint32_t>(std::min(place, largest)) : 0;
}

/// The places of the lower left corner along both axes, bit by bit in turns: places with near codes are near each
/// other.
std::uint32_t CodeOf(Rect const & rect, Rect const & bounds)
{
    std::uint32_t const x = PlaceBetween(bounds.minX, bounds.maxX, rect.minX);
    std::uint32_t const y = PlaceBetween(bounds.minY, bounds.maxY, rect.minY);
    std::uint32_t code = 0;
    for (unsigned int bit = 0; bit < 16; ++bit)
    {
        code |= ((x >> bit) & 1U) << (2 * bit) | ((y >> bit) & 1U) << (2 * bit + 1);
    }
    return code;
}

std::vector<std::uint32_t> SortByPlace(std::vector<Rect> const & rects)
{
    Rect bounds;
    for (Rect const & rect : rects)
    {
        bounds.Include(rect);
    }
    std::vector<std::uint32_t> codes(rects.size());
    std::transform(rects.begin(), rects.end(), codes.begin(), [&](Rect const & rect) { return CodeOf(rect, bounds); });
    std::vector<std::uint32_t> order(rects.size());
    std::iota(order.begin(), order.end(), std::uint32_t{0});
    std::sort(order.begin(), order.end(),
              [&](std::uint32_t a, std::uint32_t b) { return codes[a] != codes[b] ? codes[a] < codes[b] : a < b; });
    return order;
}

std::vector<Rect> Arrange(std::vector<Rect> const & rects, std::vector<std::uint32_t> const & order)
{
    std::vector<Rect> arranged(rects.size());
    std::transform(order.begin(), order.end(), arranged.begin(), [&](std::uint32_t i) { return rects[i]; });
    return arranged;
}

} // namespace

CScatterIndex::CScatterIndex(std::vector<Rect> const & rects)
    : m_Order(SortByPlace(rects)), m_Tree(Arrange(rects, m_Order))
{
}

std::vector<std::uint32_t> CScatterIndex::Find(Rect const & query) const
{
    std::vector<std::uint32_t> found;
    m_Tree.Search([&](Rect const & r) { return OverlapPlainly(r, query); },
                  [&](std::size_t i)
                  {
                      found.push_back(m_Order[i]);
                      return true;
                  });
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace geometry
