// Is a polygon grown or shrunk by a distance what it should be? Judged by the distance of points to its outline.
#pragma once

#include <optional>

#include "polygon/polygon_tools.h"

namespace geometry
{

class CInflationJudge
{
public:
    /// `amount`: grown by it if positive, else shrunk.
    CInflationJudge(CPolygon const & polygon, double amount);

    /// A point that `result` should cover and doesn't, or the other way round; none if it agrees.
    std::optional<TPoint<double>> FindContradiction(PolygonVector const & result) const;

private:
    bool IsContradiction(TPoint<double> const & point, PolygonVector const & result) const;
    std::optional<TPoint<double>> FindBeside(CPolygon const & ring, std::size_t step, double distance,
                                             PolygonVector const & result) const;

    CPolygon const & m_Polygon;
    double m_Distance;
    bool m_IsGrown;
    double m_Clearance;
};

} // namespace geometry
