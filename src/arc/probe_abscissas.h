// Where a vertical line doesn't tell from the two ends of an arc above a point how often it crosses the arc.
#pragma once

#include <algorithm>
#include <cfloat>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <geometry/arc/path_object_arc.h>

#include "arc/sweep_kernels.h"

namespace geometry
{

/// What an arc comes to by its points.
struct TArcReading
{
    Sweep sweep;
    double toA;                 ///< from the centre
    double toB;                 ///< the same
    double reach;               ///< the greater coordinate of the centre
    CBoundingRect<double> rect; ///< worked out anew
    bool isBeyondRect;          ///< points elsewhere may count as on the arc, anywhere on its circle
};
/// The arc must be valid.
TArcReading ReadArc(CPathObjectArc const & arc);

/// The points of the arc say the same about its circle, and this isn't lost in the rounding of the coordinates.
/// Worked out once; what changes the arc makes it forget.
bool IsSteadyArc(CPathObjectArc const & arc);

/// The most that the distances of its two ends from the centre differ from the radius of a steady arc.
constexpr double LargestMisfit = 0.01;
/// The radius of a steady arc is above this part of the coordinates of the centre.
constexpr double SmallestRadius = 1e-6;

/// `x` is near one of the abscissas of the arc, which must be as for `CAbscissaField`.
bool IsNearAbscissa(CPathObjectArc const & arc, double x);

/// The abscissas of arcs near which rounding decides: those of their ends and of the left and right end of their
/// circles. Anywhere else the ray upward from a point below the arc crosses it an odd number of times if its ends lie
/// on different sides, and else an even number of times, as any curve, and the computation comes to the same.
///
/// A bit for each of many cells, set where an abscissa is near. There are so many that a few of a hundred are set,
/// unless arcs are so short or so flat that rounding decides nearly everywhere.
class CAbscissaField
{
public:
    /// For up to `most` arcs between `low` and `high`.
    void Reset(double low, double high, std::size_t most);
    /// `arc` must be steady.
    void Add(CPathObjectArc const & arc);
    /// True if `x` is near an abscissa, and now and then elsewhere.
    bool MayBeNear(double x) const
    {
        std::size_t const cell = CellOf(x);
        return !m_Bits.empty() && ((m_Bits[cell / WordSize] >> (cell % WordSize)) & 1U) != 0;
    }

private:
    static constexpr std::size_t WordSize = 64;
    static constexpr std::size_t WordsPerArc = 4;
    static constexpr std::size_t MaxFillPerArc = 32; ///< words; with more the intervals cover nearly everything

    /// Never falls where `x` grows, whatever the rounding, so that each point of an interval is in a cell from that of
    /// its low end to that of its high end.
    std::size_t CellOf(double x) const
    {
        double const cell = (x - m_Low) * m_CellsPerUnit;
        // numbers that are none come to 0
        return static_cast<std::size_t>(static_cast<std::int64_t>(std::min(m_LastCell, std::max(0.0, cell))));
    }
    void Fill(std::size_t first, std::size_t last);

    std::vector<std::uint64_t> m_Bits; ///< empty before the first arc
    std::size_t m_WordCount = 0;
    std::size_t m_FillLeft = 0; ///< in words; when it is used up, everything is filled
    double m_Low = 0.0;
    double m_CellsPerUnit = 0.0;
    double m_LastCell = 0.0;
};

} // namespace geometry
