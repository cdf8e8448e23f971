#include "clip/cell_index.h"

#include <algorithm>
#include <numeric>

namespace geometry
{

namespace
{

/// The upper halves of two coordinates, bit by bit in turns: places with near codes are near each other.
std::uint32_t CodeOf(CBoundingRect<int> const & rect)
{
    // the place within a cell, which is less than 2^22 wide
    std::uint32_t const x = static_cast<std::uint32_t>(rect.minX) >> 6;
    std::uint32_t const y = static_cast<std::uint32_t>(rect.minY) >> 6;
    std::uint32_t code = 0;
    for (unsigned int bit = 0; bit < 16; ++bit)
    {
        code |= ((x >> bit) & 1U) << (2 * bit) | ((y >> bit) & 1U) << (2 * bit + 1);
    }
    return code;
}

std::vector<std::uint32_t> SortByPlace(std::vector<CBoundingRect<int>> const & rects)
{
    std::vector<std::uint32_t> codes(rects.size());
    std::transform(rects.begin(), rects.end(), codes.begin(), CodeOf);
    std::vector<std::uint32_t> order(rects.size());
    std::iota(order.begin(), order.end(), std::uint32_t{0});
    std::sort(order.begin(), order.end(),
              [&](std::uint32_t a, std::uint32_t b) { return codes[a] != codes[b] ? codes[a] < codes[b] : a < b; });
    return order;
}

CBoundingRect<double> ReadAsDoubles(CBoundingRect<int> const & rect)
{
    return CBoundingRect<double>(rect.minX, rect.minY, rect.maxX, rect.maxY);
}

std::vector<CBoundingRect<double>> Arrange(std::vector<CBoundingRect<int>> const & rects,
                                           std::vector<std::uint32_t> const & order)
{
    std::vector<CBoundingRect<double>> arranged(rects.size());
    std::transform(order.begin(), order.end(), arranged.begin(),
                   [&](std::uint32_t i) { return ReadAsDoubles(rects[i]); });
    return arranged;
}

} // namespace

CCellIndex::CCellIndex(std::vector<CBoundingRect<int>> const & rects)
    : m_Order(SortByPlace(rects)), m_Tree(Arrange(rects, m_Order))
{
}

std::vector<std::uint32_t> CCellIndex::Find(CBoundingRect<int> const & query) const
{
    CBoundingRect<double> const q = ReadAsDoubles(query);
    std::vector<std::uint32_t> found;
    m_Tree.Search([&](CBoundingRect<double> const & r)
                  { return r.maxX >= q.minX && r.minX <= q.maxX && r.maxY >= q.minY && r.minY <= q.maxY; },
                  [&](std::size_t i)
                  {
                      found.push_back(m_Order[i]);
                      return true;
                  });
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace geometry
