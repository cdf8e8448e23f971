// Cuts a polygon into the squares of a grid that begins at the lower left corner of its rectangle: columns from left to
// right, each from bottom to top. Each tile is one intersection with a square.
#include <geometry/polygon/polygon.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>

#include "polygon/booleans.h"
#include "polygon/outline_builder.h"
#include "proof/proved.h"

namespace geometry
{

namespace
{

constexpr std::uint32_t CellSize = 2000000; // coordinate units; the cell of the spatial hash
constexpr std::size_t MaxTilesAlong = 2148; // of the smallest side these cover all coordinates of 32 bits

/// Where the tiles begin along one axis. Empty if they don't come to an end: where a step is lost in rounding, and
/// where there are more of them than the range of coordinates has.
std::vector<double> TileStarts(double const first, double const last, double const side)
{
    std::vector<double> starts;
    for (double at = first; at < last; at += side)
    {
        if (starts.size() == MaxTilesAlong || !(at + side > at))
        {
            return {};
        }
        starts.push_back(at);
    }
    return starts;
}

/// Appends what of `polygon` lies in the tile; a tile that can't be cut adds nothing.
void AppendTile(CPolygon const & polygon, std::unique_ptr<CPathObjectPolyline> outline, PolygonVector & result)
{
    CPolygon const tile(outline.get());
    if (tile.GetOutline().empty())
    {
        return; // refused: a sliver within tolerance
    }
    outline.release();
    OwningPolygonVector pieces;
    RunProved({CReport::eOperationTile,
               {&polygon},
               {&tile},
               [](std::size_t first, std::size_t second) { return first > 0 && second > 0; }},
              pieces,
              [](PolygonRange const & first, PolygonRange const & second, PolygonVector & out)
              { return IntersectPolygonRange(*first.front(), out, second); });
    AppendPolygons(result, pieces);
}

} // namespace

void CPolygon::TilePolygon(unsigned int n, std::vector<CPolygon*> & result) const
{
    result.clear();
    if (n == 0 || n > std::numeric_limits<std::uint32_t>::max() / CellSize)
    {
        return;
    }
    double const side = static_cast<std::uint32_t>(n) * CellSize;
    CBoundingRect<double> const r = m_BoundingRect;
    std::vector<double> const columns = TileStarts(r.minX, r.maxX, side);
    std::vector<double> const rows = TileStarts(r.minY, r.maxY, side);
    OwningPolygonVector pieces;
    for (double const x : columns)
    {
        for (double const y : rows)
        {
            CBoundingRect<double> const tile(x, y, std::min(x + side, r.maxX), std::min(y + side, r.maxY));
            std::unique_ptr<CPathObjectPolyline> outline = MakeRectangleOutline(tile);
            outline->Cleanup(false);
            AppendTile(*this, std::move(outline), pieces);
        }
    }
    result.swap(pieces);
}

} // namespace geometry
