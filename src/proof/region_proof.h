// Does a result cover what its inputs say? Asked at points beside the edges of both, and spread between them.
//
//       .----------.         o: points beside the middle of an edge, one on each side, clear of every outline of the
//    o  |  o       |            inputs; a region that is wrong has an edge of the inputs or of the result at its border
//       |     .----|----.    x: points spread over the rectangles
//       |  x  |    |    |
//       '-----|----'    |
#pragma once

#include <optional>
#include <vector>

#include "polygon/polygon_tools.h"
#include "proof/outline_probe.h"

namespace geometry
{

/// Judges a region by those that it was made of.
class CRegionJudge
{
public:
    /// Whether a point belongs to the region that was asked for: `first` counts the inputs of the first group that it
    /// lies in, `second` those of the second.
    using Membership = bool (*)(std::size_t first, std::size_t second);

    CRegionJudge(PolygonRange first, PolygonRange second, Membership isMember);

    /// A point at which `result` doesn't cover what it should, or covers it several times; none if it agrees, or where
    /// coordinates are no numbers.
    std::optional<TPoint<double>> FindContradiction(PolygonVector const & result);

private:
    /// A point that is asked about, and how many polygons it lies in.
    struct TProbe
    {
        TPoint<double> point;
        std::size_t counts[3] = {0, 0, 0}; ///< of both groups of inputs and of the result
        bool isNear = false;               ///< an outline of the inputs is near
        bool isOdd = false;                ///< in the polygon at hand
    };

    void ChoosePoints(PolygonVector const & result);
    void AddPoint(TPoint<double> const & point);
    void CountGroup(PolygonRange const & polygons, std::size_t group);
    void PassOutline(CPolygon const & polygon, bool isInput);
    void AddBeside(CPolygon const & ring, std::size_t edges, bool onBothSides);
    void AddPair(TPoint<double> const & at, TPoint<double> const & from, TPoint<double> const & to, double size,
                 bool onBothSides);
    void Spread(CBoundingRect<double> const & rect);

    PolygonRange m_First;
    PolygonRange m_Second;
    Membership m_IsMember;
    std::vector<TProbe> m_Probes;       ///< by x
    std::vector<std::size_t> m_Touched; ///< probes of which something was told for the polygon at hand
    COutlineProbe m_Outline;
    double m_Clearance = 0.0;
    std::size_t m_PairCount = 0; ///< of points that were added; tells how far they stand
};

/// What a caller tolerates between the inputs and the result: a millionth of the smallest side of any of them, what the
/// arc code takes for the same, and the rounding of the coordinates. In coordinate units.
double ToleranceOf(PolygonRange const & polygons);

} // namespace geometry
