// Where a vertical line doesn't tell from the two ends of an arc above a point how often it crosses the arc.
#pragma once

#include <vector>

#include <geometry/arc/path_object_arc.h>

namespace geometry
{

/// The points of the arc say the same about its circle, and this isn't lost in the rounding of the coordinates.
bool IsSteadyArc(CPathObjectArc const & arc);

/// The abscissas of arcs near which rounding decides: those of their ends and of the left and right end of their
/// circles. Anywhere else the ray upward from a point below the arc crosses it an odd number of times if its ends lie on
/// different sides, and else an even number of times, as any curve, and the computation comes to the same.
class CProbeAbscissas
{
public:
    /// `arc` must be steady, and no full circle.
    void Add(CPathObjectArc const & arc);
    /// To be called after the last `Add` and before the first question.
    void Prepare();
    bool IsNear(double x) const;

private:
    struct TInterval
    {
        double low;
        double high;
    };
    std::vector<TInterval> m_Intervals; ///< once prepared, apart and ascending
};

} // namespace geometry
