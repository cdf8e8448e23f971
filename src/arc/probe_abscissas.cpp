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
constexpr double SmallestTurn = 1e-14; // as a part of a square

/// Twice the area of start, mid-point, end and centre, by which an arc that was moved and turned round finds its
/// direction again. A repair leaves the mid-point where it was: it may lie in line with the others. 0: a full circle.
double TurnOf(CPathObjectArc const & arc, Sweep const & sweep)
{
    TPoint<double> const & middle = CArcInternals::GetPoints(arc)[3];
    return std::fabs((sweep.B.x - sweep.A.x) * (middle.y - sweep.C.y) -
                     (sweep.B.y - sweep.A.y) * (middle.x - sweep.C.x));
}

/// An arc so short that the misfit of its ends turns them round can be read as nearly the whole circle, while its
/// rectangle is that of a part: the ray may cross it above or below the rectangle then.
bool IsReadBesideRect(CBoundingRect<double> const & rect, Sweep const & sweep)
{
    TPoint<double> const & centre = sweep.C;
    double const x = 0.5 * (rect.minX + rect.maxX);
    double const rise = std::sqrt(std::max(sweep.r * sweep.r - (x - centre.x) * (x - centre.x), 0.0));
    auto const isBeside = [&](double y)
    {
        return (y < rect.minY - 2.0 * LargestMisfit || y > rect.maxY + 2.0 * LargestMisfit) &&
               IsPointInSweepByHalves(sweep, TPoint<double>(x, y));
    };
    return isBeside(centre.y - rise) || isBeside(centre.y + rise);
}

/// One whose ends are turned round and level with the centre can be read as half of its circle: beyond both ends, the
/// ray crosses it once then.
bool IsReadPastEnds(CBoundingRect<double> const & rect, Sweep const & sweep)
{
    double const left = std::min(sweep.A.x, sweep.B.x) - 2.0 * LargestMisfit;
    double const right = std::max(sweep.A.x, sweep.B.x) + 2.0 * LargestMisfit;
    auto const isCrossedOnce = [&](double x)
    {
        return IsAbscissaInSweep(sweep.A, sweep.B, sweep.C, x, true) !=
               IsAbscissaInSweep(sweep.A, sweep.B, sweep.C, x, false);
    };
    return (rect.minX < left && isCrossedOnce(rect.minX)) || (rect.maxX > right && isCrossedOnce(rect.maxX));
}

/// What the distances to the arc go by, the directions from its centre, takes it beyond its rectangle: also one whose
/// ends are turned round by their misfit, or by rounding.
bool IsMeasuredBeyondRect(CBoundingRect<double> const & rect, Sweep const & sweep)
{
    TPoint<double> const & c = sweep.C;
    double const r = sweep.r;
    constexpr double room = 2.0 * LargestMisfit;
    auto const holds = [&](double x, double y)
    { return sweep.IsClosed() || IsPointInSweep(sweep, TPoint<double>(x, y)); };
    return (c.x + r > rect.maxX + room && holds(c.x + r, c.y)) || (c.y + r > rect.maxY + room && holds(c.x, c.y + r)) ||
           (c.x - r < rect.minX - room && holds(c.x - r, c.y)) || (c.y - r < rect.minY - room && holds(c.x, c.y - r));
}

/// The ends are 14 degrees apart at least, seen from the centre, so that the arc bulges by more than seven times the
/// misfits that a steady one may have, and no reading is wrong by more than these.
bool AreEndsClearlyApart(Sweep const & sweep)
{
    double const dot =
        (sweep.A.x - sweep.C.x) * (sweep.B.x - sweep.C.x) + (sweep.A.y - sweep.C.y) * (sweep.B.y - sweep.C.y);
    return sweep.r > 1000.0 * LargestMisfit && dot < 0.97 * sweep.r * sweep.r;
}

/// The arc reaches beyond its rectangle in one of the ways in which it is read.
bool IsMisread(CBoundingRect<double> const & rect, Sweep const & sweep)
{
    return IsMeasuredBeyondRect(rect, sweep) || IsReadBesideRect(rect, sweep) || IsReadPastEnds(rect, sweep);
}

/// A repair moves the centre and leaves the rectangle.
bool IsRectOutdated(CBoundingRect<double> const & rect, CBoundingRect<double> const & anew)
{
    return !(rect.minX == anew.minX && rect.minY == anew.minY && rect.maxX == anew.maxX && rect.maxY == anew.maxY);
}

} // namespace

TArcReading ReadArc(CPathObjectArc const & arc)
{
    Sweep const sweep = SweepOf(arc);
    double const toA = DistanceBetween(sweep.A, sweep.C);
    double const toB = DistanceBetween(sweep.B, sweep.C);
    CBoundingRect<double> const rect = CalculateArcBoundingRect(sweep, (toB + toA) * 0.5);
    return {.sweep = sweep,
            .toA = toA,
            .toB = toB,
            .reach = std::max(std::fabs(sweep.C.x), std::fabs(sweep.C.y)),
            .rect = rect,
            .isBeyondRect = IsMeasuredBeyondRect(rect, sweep)};
}

namespace
{

bool IsSteady(CPathObjectArc const & arc, bool isRectCurrent)
{
    Sweep const sweep = SweepOf(arc);
    CBoundingRect<double> const & rect = arc.GetBoundingRect();
    double const radius = sweep.r;
    double const reach = std::max(std::fabs(sweep.C.x), std::fabs(sweep.C.y));
    auto const fits = [&](TPoint<double> const & end)
    { return std::fabs(DistanceBetween(end, sweep.C) - radius) <= LargestMisfit; };
    return radius > SmallestRadius * reach && reach + radius < LargestReach && fits(sweep.A) && fits(sweep.B) &&
           TurnOf(arc, sweep) > SmallestTurn * (reach + radius) * (reach + radius) &&
           (isRectCurrent || !IsRectOutdated(rect, CalculateArcBoundingRect(sweep))) &&
           (AreEndsClearlyApart(sweep) || !IsMisread(rect, sweep));
}

} // namespace

bool IsSteadyArc(CPathObjectArc const & arc)
{
    TLazyValue<std::int32_t> & steadiness = CArcInternals::SteadinessOf(arc);
    std::int32_t known = steadiness;
    if (known < eUnsteady)
    {
        known = arc.IsValid() && IsSteady(arc, known == eRectIsCurrent) ? eSteady : eUnsteady;
        steadiness = known;
    }
    return known == eSteady;
}

namespace
{

/// Calls `visit(low, high)` for the intervals around the abscissas of the arc.
template <typename Visit>
void ForEachAbscissa(CPathObjectArc const & arc, Visit const & visit)
{
    CBoundingRect<double> const & rect = arc.GetBoundingRect();
    TPoint<double> const* const points = CArcInternals::GetPoints(arc);
    double const x = points[2].x;
    double const radius = arc.GetRadius();
    double const room = 10.0 * LargestMisfit + 1e-6 * radius + 1e-9 * (std::fabs(x) + radius);
    visit(points[0].x - room, points[0].x + room);
    visit(points[1].x - room, points[1].x + room);
    // left and right of the arc nothing is to be decided: the line doesn't meet it
    if (x - radius + 2.0 * room > rect.minX)
    {
        visit(x - radius - room, x - radius + room);
    }
    if (x + radius - 2.0 * room < rect.maxX)
    {
        visit(x + radius - room, x + radius + room);
    }
}

} // namespace

bool IsNearAbscissa(CPathObjectArc const & arc, double x)
{
    bool isNear = false;
    ForEachAbscissa(arc, [&](double low, double high) { isNear = isNear || !(x < low || x > high); });
    return isNear;
}

void CAbscissaField::Reset(double low, double high, std::size_t most)
{
    m_Bits.clear();
    m_WordCount = WordsPerArc * std::max<std::size_t>(most, 1);
    m_FillLeft = MaxFillPerArc * m_WordCount;
    m_LastCell = static_cast<double>(m_WordCount * WordSize - 1);
    m_Low = low;
    double const perUnit = m_LastCell / (high - low);
    m_CellsPerUnit = perUnit > 0.0 && perUnit < DBL_MAX ? perUnit : 0.0; // or all in one cell
}

void CAbscissaField::Fill(std::size_t first, std::size_t last)
{
    constexpr std::uint64_t all = ~std::uint64_t{0};
    std::size_t const end = last / WordSize;
    for (std::size_t word = first / WordSize; word <= end; ++word)
    {
        std::uint64_t const fromFirst = word == first / WordSize ? all << (first % WordSize) : all;
        std::uint64_t const toLast = word == end ? all >> (WordSize - 1 - last % WordSize) : all;
        m_Bits[word] |= fromFirst & toLast;
    }
}

void CAbscissaField::Add(CPathObjectArc const & arc)
{
    if (m_Bits.empty())
    {
        m_Bits.assign(m_WordCount, 0);
    }
    ForEachAbscissa(arc,
                    [this](double low, double high)
                    {
                        std::size_t const first = CellOf(low);
                        std::size_t const last = CellOf(high);
                        if (first == last) // mostly
                        {
                            m_Bits[first / WordSize] |= std::uint64_t{1} << (first % WordSize);
                            return;
                        }
                        std::size_t const words = (last - first) / WordSize;
                        if (words > m_FillLeft)
                        {
                            m_FillLeft = 0;
                            m_Bits.assign(m_WordCount, ~std::uint64_t{0});
                            return;
                        }
                        m_FillLeft -= words;
                        Fill(first, last);
                    });
}

} // namespace geometry
