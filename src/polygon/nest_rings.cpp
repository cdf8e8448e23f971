// The clipper hands over bare rings. Most are outlines; a ring within another one is a hole of it.
#include <algorithm>

#include "numeric/chain_index.h"
#include "polygon/area.h"
#include "polygon/booleans.h"

namespace geometry
{

namespace
{

/// The rings around each ring. Rings come in the order of their tracing, so that neighbours are near each other.
std::vector<std::vector<std::size_t>> FindEnclosing(PolygonVector const & rings)
{
    std::vector<CBoundingRect<double>> rects;
    for (CPolygon const* ring : rings)
    {
        rects.push_back(ring->GetBoundingRect());
    }
    CChainIndex const index(rects);
    std::vector<double> areas(rings.size(), -1.0); // once asked for
    auto const areaOf = [&](std::size_t i) { return areas[i] < 0.0 ? areas[i] = AreaOf(*rings[i]) : areas[i]; };
    std::vector<std::vector<std::size_t>> enclosing(rings.size());
    for (std::size_t i = 0; i < rings.size(); ++i)
    {
        index.Search([&](CBoundingRect<double> const & rect) { return rect.ContainsRect(rects[i]); },
                     [&](std::size_t k)
                     {
                         if (k != i && (IsAreaClearlyLarger(*rings[k], areaOf(i)) || areaOf(k) > areaOf(i)) &&
                             Encloses(*rings[k], *rings[i]))
                         {
                             enclosing[i].push_back(k);
                         }
                         return true;
                     });
    }
    return enclosing;
}

} // namespace

void NestRings(PolygonVector & rings)
{
    if (rings.size() < 2)
    {
        return;
    }
    auto const enclosing = FindEnclosing(rings);
    for (std::size_t i = 0; i < rings.size(); ++i)
    {
        if (enclosing[i].size() % 2 != 0)
        {
            // the innermost one around it lies in all others, unless rings cross: then it may have become a hole itself
            std::size_t const owner = *std::max_element(enclosing[i].begin(), enclosing[i].end(),
                                                        [&](std::size_t a, std::size_t b)
                                                        { return enclosing[a].size() < enclosing[b].size(); });
            if (rings[owner] != nullptr)
            {
                CPolygonInternals::AddAsHole(*rings[owner], *rings[i]);
                rings[i] = nullptr;
            }
        }
    }
    rings.erase(std::remove(rings.begin(), rings.end(), nullptr), rings.end());
}

} // namespace geometry
