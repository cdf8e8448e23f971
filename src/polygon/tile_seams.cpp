// A cut through a slanted edge computes its vertex with rounding, so that the clean-up of a clip, which knows no more
// than units in the last place, takes it for a corner.
#include "polygon/tile_seams.h"

#include <algorithm>
#include <cmath>

#include <geometry/path/path_object_polyline.h>

namespace geometry
{

namespace
{

constexpr double SeamReach = 0.5;          // tiles are cut within 0.3 of their borders
constexpr double RelativeRounding = 1e-13; // of the coordinates

bool IsNear(std::vector<double> const & borders, double coordinate)
{
    auto const next = std::lower_bound(borders.begin(), borders.end(), coordinate - SeamReach);
    return next != borders.end() && *next <= coordinate + SeamReach;
}

/// `p` lies between `a` and `b`, on their line but for the rounding of a cut.
bool IsOnEdge(TPoint<double> const & a, TPoint<double> const & p, TPoint<double> const & b)
{
    double const dx = b.x - a.x;
    double const dy = b.y - a.y;
    double const length = std::hypot(dx, dy);
    double const along = dx * (p.x - a.x) + dy * (p.y - a.y);
    double const off = std::fabs(dx * (p.y - a.y) - dy * (p.x - a.x)) / length;
    double const reach = std::max({std::fabs(a.x), std::fabs(a.y), std::fabs(b.x), std::fabs(b.y)});
    return along > 0.0 && along < length * length && off <= RelativeRounding * reach;
}

class CSeamRemover final : public CPathObjectVisitor
{
public:
    explicit CSeamRemover(TTileGrid const & grid) : m_Grid(grid) {}

    bool VisitPolyline(CPathObjectPolyline & polyline) override
    {
        std::vector<TPoint<double>> points(polyline.GetPointsBegin(), polyline.GetPointsEnd());
        std::size_t const before = points.size();
        RemoveSeamsIn(points);
        if (points.size() < before)
        {
            polyline.clear();
            for (TPoint<double> const & point : points)
            {
                polyline.AddVertex(point.x, point.y);
            }
        }
        return true;
    }
    bool VisitArc(CPathObjectArc &) override { return true; }
    bool VisitBase(CPathObjectBase &) override { return true; }

private:
    bool IsSeam(TPoint<double> const & a, TPoint<double> const & p, TPoint<double> const & b) const
    {
        return (IsNear(m_Grid.x, p.x) || IsNear(m_Grid.y, p.y)) && IsOnEdge(a, p, b);
    }

    void RemoveSeamsIn(std::vector<TPoint<double>> & points) const
    {
        std::size_t kept = 1;
        for (std::size_t i = 1; i < points.size(); ++i)
        {
            if (i + 1 == points.size() || !IsSeam(points[kept - 1], points[i], points[i + 1]))
            {
                points[kept++] = points[i];
            }
        }
        points.resize(kept);
        if (kept > 4 && points.front() == points.back() && IsSeam(points[kept - 2], points[0], points[1]))
        {
            points.erase(points.begin()); // a closed outline begins at its next vertex
            points.back() = points.front();
        }
    }

    TTileGrid const & m_Grid;
};

} // namespace

void RemoveSeams(TTileGrid const & grid, PolygonVector & polygons)
{
    CSeamRemover remover(grid);
    auto const removeIn = [&](CPolygon & ring)
    {
        CPolygonInternals::ClearOutlineCache(ring);
        for (CPathObjectBase* object : ring.GetOutline())
        {
            object->Accept(remover);
        }
    };
    for (CPolygon* polygon : polygons)
    {
        removeIn(*polygon);
        for (CPolygon* hole : polygon->GetHoles())
        {
            removeIn(*hole);
        }
    }
}

} // namespace geometry
