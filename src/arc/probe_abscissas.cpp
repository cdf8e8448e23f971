#include "arc/probe_abscissas.h"

#include <algorithm>
#include <cmath>

#include "arc/arc_geometry.h"
#include "arc/sweep_kernels.h"
#include "path/segment_kernels.h"

namespace geometry
{

namespace
{

constexpr double LargestReach = 1e15;
constexpr double LargestMisfit = 0.01;  // of the radius, in coordinate units
constexpr double SmallestRadius = 1e-6; // as a part of the coordinates of the centre
constexpr double SmallestTurn = 1e-14;  // twice the area of start, mid-point, end and centre, as a part of a square

/// An arc so short that the misfit of its ends turns them round can be read as nearly the whole circle, while its
/// rectangle is that of a part: the ray may cross it above or below the rectangle then.
bool IsReadBesideRect(CPathObjectArc const & arc)
{
    CBoundingRect<double> const & rect = arc.GetBoundingRect();
    TPoint<double> const & centre = arc.GetCentre();
    double const x = 0.5 * (rect.minX + rect.maxX);
    double const rise = std::sqrt(std::max(arc.GetRadius() * arc.GetRadius() - (x - centre.x) * (x - centre.x), 0.0));
    Sweep const sweep = SweepOf(arc);
    auto const isBeside = [&](double y)
    {
        return (y < rect.minY - 2.0 * LargestMisfit || y > rect.maxY + 2.0 * LargestMisfit) &&
               IsPointInSweepByHalves(sweep, TPoint<double>(x, y));
    };
    return isBeside(centre.y - rise) || isBeside(centre.y + rise);
}

/// A repair moves the centre and leaves the rectangle.
bool IsRectOutdated(CPathObjectArc const & arc)
{
    CBoundingRect<double> const & rect = arc.GetBoundingRect();
    CBoundingRect<double> const anew = CalculateArcBoundingRect(SweepOf(arc));
    return !(rect.minX == anew.minX && rect.minY == anew.minY && rect.maxX == anew.maxX && rect.maxY == anew.maxY);
}

} // namespace

bool IsSteadyArc(CPathObjectArc const & arc)
{
    TPoint<double> const & centre = arc.GetCentre();
    double const radius = arc.GetRadius();
    double const reach = std::max(std::fabs(centre.x), std::fabs(centre.y));
    auto const fits = [&](TPoint<double> const & p)
    { return std::fabs(std::sqrt(SquareDistance(p, centre)) - radius) <= LargestMisfit; };
    return radius > SmallestRadius * reach && reach + radius < LargestReach && fits(arc.GetStartPoint()) &&
           fits(arc.GetEndPoint()) &&
           // moved and turned round, it finds its direction again
           radius * std::sqrt(SquareDistance(arc.GetStartPoint(), arc.GetEndPoint())) >
               SmallestTurn * (reach + radius) * (reach + radius) &&
           !IsRectOutdated(arc) && !IsReadBesideRect(arc);
}

void CProbeAbscissas::Add(CPathObjectArc const & arc)
{
    double const x = arc.GetCentre().x;
    double const radius = arc.GetRadius();
    double const room = 10.0 * LargestMisfit + 1e-6 * radius + 1e-9 * (std::fabs(x) + radius);
    for (double const at : {arc.GetStartPoint().x, arc.GetEndPoint().x, x - radius, x + radius})
    {
        m_Intervals.push_back({at - room, at + room});
    }
}

void CProbeAbscissas::Prepare()
{
    std::sort(m_Intervals.begin(), m_Intervals.end(),
              [](TInterval const & a, TInterval const & b) { return a.low < b.low; });
    std::size_t count = 0;
    for (TInterval const & interval : m_Intervals)
    {
        if (count > 0 && interval.low <= m_Intervals[count - 1].high)
        {
            m_Intervals[count - 1].high = std::max(m_Intervals[count - 1].high, interval.high);
        }
        else
        {
            m_Intervals[count++] = interval;
        }
    }
    m_Intervals.resize(count);
}

bool CProbeAbscissas::IsNear(double x) const
{
    auto const behind = std::upper_bound(m_Intervals.begin(), m_Intervals.end(), x,
                                         [](double at, TInterval const & interval) { return at < interval.low; });
    return behind != m_Intervals.begin() && x <= behind[-1].high;
}

} // namespace geometry
