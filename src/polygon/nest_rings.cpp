// The clipper hands over bare rings. Most are outlines; a ring within another one is a hole of it.
#include <algorithm>

#include "numeric/nearby_pieces.h"
#include "polygon/area.h"
#include "polygon/booleans.h"

namespace geometry
{

namespace
{

/// A ring, and one around it.
struct TEnclosed
{
    std::size_t ring;
    std::size_t by;
};

/// Finds the rings around rings. They come in the order of their tracing, so that neighbours are near each other.
class CNesting
{
public:
    explicit CNesting(PolygonVector const & rings)
        : m_Rings(rings), m_Index(RectsOf(rings)), m_Areas(rings.size(), -1.0)
    {
    }

    /// All pairs, in the order of the rings.
    std::vector<TEnclosed> FindEnclosed()
    {
        std::vector<TEnclosed> enclosed;
        CNearbyPieces nearby(m_Index);
        for (std::size_t i = 0; i < m_Rings.size(); ++i)
        {
            if (i % CNearbyPieces::BlockSize == 0)
            {
                nearby.LookUp(RectOfBlock(i)); // what is around a rectangle overlaps it
            }
            CBoundingRect<double> const & rect = m_Index.GetRect(i);
            nearby.Search([&rect](CBoundingRect<double> const & r) { return r.ContainsRect(rect); },
                          [&](std::size_t k)
                          {
                              if (k != i && IsLarger(k, i) && Encloses(*m_Rings[k], *m_Rings[i]))
                              {
                                  enclosed.push_back({i, k});
                              }
                          });
        }
        return enclosed;
    }

private:
    static std::vector<CBoundingRect<double>> RectsOf(PolygonVector const & rings)
    {
        std::vector<CBoundingRect<double>> rects;
        rects.reserve(rings.size());
        for (CPolygon const* ring : rings)
        {
            rects.push_back(ring->GetBoundingRect());
        }
        return rects;
    }

    CBoundingRect<double> RectOfBlock(std::size_t i) const
    {
        CBoundingRect<double> around;
        for (std::size_t const end = std::min(i + CNearbyPieces::BlockSize, m_Rings.size()); i < end; ++i)
        {
            around.Include(m_Index.GetRect(i));
        }
        return around;
    }

    /// The area of `k`, which may have a long outline, is asked only if that is needed.
    bool IsLarger(std::size_t k, std::size_t i)
    {
        return IsAreaClearlyLarger(*m_Rings[k], AreaOfRing(i)) || AreaOfRing(k) > AreaOfRing(i);
    }

    double AreaOfRing(std::size_t i) { return m_Areas[i] < 0.0 ? m_Areas[i] = AreaOf(*m_Rings[i]) : m_Areas[i]; }

    PolygonVector const & m_Rings;
    CChainIndex m_Index;
    std::vector<double> m_Areas; ///< once asked for
};

} // namespace

void NestRings(PolygonVector & rings)
{
    if (rings.size() < 2)
    {
        return;
    }
    std::vector<TEnclosed> const enclosed = CNesting(rings).FindEnclosed();
    std::vector<std::size_t> depths(enclosed.empty() ? 0 : rings.size(), 0);
    for (TEnclosed const & pair : enclosed)
    {
        ++depths[pair.ring];
    }
    for (auto first = enclosed.begin(); first != enclosed.end();)
    {
        std::size_t const ring = first->ring;
        auto const last = first + static_cast<std::ptrdiff_t>(depths[ring]);
        if (depths[ring] % 2 != 0)
        {
            // the innermost one around it lies in all others, unless rings cross: then it may have become a hole itself
            std::size_t const owner =
                std::max_element(first, last,
                                 [&](TEnclosed const & a, TEnclosed const & b) { return depths[a.by] < depths[b.by]; })
                    ->by;
            if (rings[owner] != nullptr)
            {
                CPolygonInternals::AddAsHole(*rings[owner], *rings[ring]);
                rings[ring] = nullptr;
            }
        }
        first = last;
    }
    rings.erase(std::remove(rings.begin(), rings.end(), nullptr), rings.end());
}

} // namespace geometry
