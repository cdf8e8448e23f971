// The chord approximation of an arc, for callers that walk an outline vertex by vertex.
//
// All circles share one grid of 64 directions, mirrored from one octant. The grid points of the circle within the sweep
// are selected as one stretch of the ring; the exact ends are put in front and behind.
#include <algorithm>
#include <array>
#include <bit>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include <geometry/arc/path_object_arc.h>

#include "arc/arc_geometry.h"
#include "numeric/chain_index.h"

namespace geometry
{

namespace
{

using Points = std::vector<TPoint<double>>;

constexpr double GridStep = 0.09817477042468103; // radians: pi / 32
constexpr int StepsInOctant = 8;
constexpr std::size_t ClosedGridSize = 65;

/// Cosine and sine of all grid directions, mirrored from those of the first octant; the last one is the first again.
std::array<TPoint<double>, ClosedGridSize> const & GridDirections()
{
    static auto const directions = []
    {
        std::array<TPoint<double>, ClosedGridSize> points;
        std::size_t size = 1;
        auto const add = [&](double x, double y) { points[size++] = TPoint<double>(x, y); };
        points[0] = TPoint<double>(1.0, 0.0);
        for (int i = 1; i <= StepsInOctant; ++i)
        {
            add(std::cos(i * GridStep), std::sin(i * GridStep));
        }
        // each time the present points, from the last but one back to the first
        for (std::size_t i = size - 1; i-- > 0;)
        {
            add(points[i].y, points[i].x);
        }
        for (std::size_t i = size - 1; i-- > 0;)
        {
            add(-points[i].x, points[i].y);
        }
        for (std::size_t i = size - 1; i-- > 0;)
        {
            add(points[i].x, -points[i].y);
        }
        return points;
    }();
    return directions;
}

/// The grid points of a circle from its rightmost point counter-clockwise; the centre alone if there is no radius.
class CCirclePoints
{
public:
    CCirclePoints(TPoint<double> const & c, double r)
        : m_Directions(GridDirections()), m_Centre(c), m_Radius(r), m_Size(r <= 0.0 ? 1 : ClosedGridSize),
          m_IsPlain(r > 0.0 && r <= DBL_MAX)
    {
    }

    std::size_t size() const { return m_Size; }
    void pop_back() { --m_Size; }
    TPoint<double> operator[](std::size_t i) const
    {
        TPoint<double> const & d = m_Directions[i];
        if (m_IsPlain)
        {
            return TPoint<double>(m_Radius * d.x + m_Centre.x, m_Radius * d.y + m_Centre.y);
        }
        return m_Radius <= 0.0 ? m_Centre : TPoint<double>(Scale(d.x) + m_Centre.x, Scale(d.y) + m_Centre.y);
    }
    double GetRadius() const { return m_Radius; }

private:
    /// Zero stays zero though the radius is infinite.
    double Scale(double part) const { return part == 0.0 ? part : m_Radius * part; }

    std::array<TPoint<double>, ClosedGridSize> const & m_Directions;
    TPoint<double> const & m_Centre;
    double m_Radius;
    std::size_t m_Size;
    bool m_IsPlain;
};

/// Directions of the grid, a bit each.
using GridMask = std::uint64_t;
constexpr int GridSize = 64;
constexpr GridMask WholeGrid = ~GridMask{0};

GridMask Bit(int i)
{
    return GridMask{1} << i;
}

/// Nearest to the direction (x, y); half way between two, give or take a tenth of a step, either of them.
int NearestGridDirection(double x, double y)
{
    double const dx = std::fabs(x);
    double const dy = std::fabs(y);
    double const q = std::min(dx, dy) / std::max(dx, dy);
    // pi / 4 * q + 0.273 * q * (1 - q) is the arc tangent of q less at most 0.04 steps
    double steps = q * (8.0 + 2.781 * (1.0 - q));
    steps = dy > dx ? 16.0 - steps : steps;
    steps = x < 0.0 ? 32.0 - steps : steps;
    steps = y < 0.0 ? 64.0 - steps : steps;
    return static_cast<int>(steps + 0.5) % GridSize;
}

/// The grid points in the sweep, one by one. There must be 64.
GridMask SelectByAsking(Sweep const & sweep, CCirclePoints const & ring)
{
    GridMask mask = 0;
    for (int i = 0; i < GridSize; ++i)
    {
        mask |= IsPointInSweep(sweep, ring[static_cast<std::size_t>(i)]) ? Bit(i) : 0;
    }
    return mask;
}

/// Rounding is far below the distance of two grid points, and so are the tolerances.
bool IsClearOfRounding(Sweep const & sweep, double radius)
{
    double const least = 0.25 * radius * radius;
    return radius > 1e-100 && radius < 1e100 && std::fabs(sweep.C.x) < 1e6 * radius &&
           std::fabs(sweep.C.y) < 1e6 * radius && SquareDistance(sweep.A, sweep.C) >= least &&
           SquareDistance(sweep.B, sweep.C) >= least;
}

/// The same where that is clear of rounding: directions other than the nearest ones of the two lines through the centre
/// and the ends of the sweep are clearly left or right of them, and only those are asked for which that leaves a doubt.
GridMask SelectByDirection(Sweep const & sweep, CCirclePoints const & ring)
{
    TPoint<double> const & c = sweep.C;
    TPoint<double> const u(sweep.A.x - c.x, sweep.A.y - c.y);
    TPoint<double> const v(sweep.B.x - c.x, sweep.B.y - c.y);
    constexpr GridMask Left = 0x00000000fffffffe; // of the direction 0
    constexpr GridMask Right = 0xfffffffe00000000;
    int const nearA = NearestGridDirection(u.x, u.y);
    int const nearB = NearestGridDirection(v.x, v.y);
    GridMask const isBehindA = std::rotl(Left, nearA);
    GridMask const isNotBehindA = std::rotl(Right, nearA);
    GridMask const isBeforeB = std::rotl(Right, nearB);
    GridMask const isNotBeforeB = std::rotl(Left, nearB);
    bool const isAtMostHalfTurn = u.x * v.y - u.y * v.x >= 0.0;
    GridMask mask = isAtMostHalfTurn ? isBehindA & isBeforeB : isBehindA | isBeforeB;
    GridMask const isOut = isAtMostHalfTurn ? isNotBehindA | isNotBeforeB : isNotBehindA & isNotBeforeB;
    for (GridMask asked = ~(mask | isOut); asked != 0; asked &= asked - 1)
    {
        int const i = std::countr_zero(asked);
        mask |= IsPointInSweep(sweep, ring[static_cast<std::size_t>(i)]) ? Bit(i) : 0;
    }
    return mask;
}

/// Index of the grid point that follows `A` where all grid points lie in the sweep; the size of the ring if none does.
std::size_t FindFirstAfterStart(Sweep const & sweep, CCirclePoints const & ring)
{
    std::size_t found = ring.size();
    double best = 0.0;
    TPoint<double> const & c = sweep.C;
    for (std::size_t i = 0; i < ring.size(); ++i)
    {
        TPoint<double> const p = ring[i];
        if (!((p.y - c.y) * (sweep.A.x - c.x) - (p.x - c.x) * (sweep.A.y - c.y) > 0.0))
        {
            continue;
        }
        double const distance = SquareDistance(p, sweep.A);
        if (found == ring.size() || distance < best)
        {
            found = i;
            best = distance;
        }
    }
    return found;
}

/// The chain of chords of a sweep: a stretch of the grid of its circle, in counter-clockwise order, and the two ends
/// where they aren't on it.
class CChordChain
{
public:
    explicit CChordChain(Sweep const & sweep)
        : m_A(sweep.A), m_B(sweep.B), m_Ring(sweep.C, CalculateArcRadius(sweep.A, sweep.B, sweep.C))
    {
        if (IsExactlyEqual(m_A, m_B))
        {
            m_Selected = m_Ring.size();
            return;
        }
        m_Ring.pop_back();
        SelectStretch(sweep);
        m_BeginsAtA = m_Selected == 0 || (m_Ring[m_First].x != m_A.x && m_Ring[m_First].y != m_A.y);
        bool const startIsOffCentre = m_A.x != sweep.C.x && m_A.y != sweep.C.y;
        m_EndsAtB = (size() < 2 && startIsOffCentre) || !IsExactlyEqual((*this)[size() - 1], m_B);
    }

    std::size_t size() const { return (m_BeginsAtA ? 1U : 0U) + m_Selected + (m_EndsAtB ? 1U : 0U); }

    TPoint<double> operator[](std::size_t i) const
    {
        if (m_BeginsAtA && i == 0)
        {
            return m_A;
        }
        std::size_t const k = i - (m_BeginsAtA ? 1U : 0U);
        std::size_t const at = m_First + k;
        return k < m_Selected ? m_Ring[at < m_Ring.size() ? at : at - m_Ring.size()] : m_B;
    }

private:
    /// Finds the stretch of the ring that lies in the sweep.
    void SelectStretch(Sweep const & sweep)
    {
        if (m_Ring.size() == 0)
        {
            return;
        }
        GridMask const mask = IsIndexUsed(true) && IsClearOfRounding(sweep, m_Ring.GetRadius())
                                  ? SelectByDirection(sweep, m_Ring)
                                  : SelectByAsking(sweep, m_Ring);
        if (mask == WholeGrid)
        {
            m_First = FindFirstAfterStart(sweep, m_Ring);
            m_Selected = m_First < m_Ring.size() ? m_Ring.size() : 0;
        }
        else if (mask != 0)
        {
            GridMask const before = std::rotl(mask, 1);
            int const entry = std::countr_zero(mask & ~before);
            int const exit = std::countr_zero(before & ~mask);
            m_First = static_cast<std::size_t>(entry);
            m_Selected = static_cast<std::size_t>((exit + GridSize - entry) % GridSize);
        }
    }

    TPoint<double> const & m_A; // of the sweep, which must outlive the chain
    TPoint<double> const & m_B;
    CCirclePoints m_Ring;
    std::size_t m_First = 0;
    std::size_t m_Selected = 0;
    bool m_BeginsAtA = false;
    bool m_EndsAtB = false;
};

} // namespace

std::vector<TPoint<double>> BuildArcPoints(Sweep const & sweep)
{
    CChordChain const chain(sweep);
    Points points;
    points.reserve(chain.size());
    for (std::size_t i = 0; i < chain.size(); ++i)
    {
        points.push_back(chain[i]);
    }
    return points;
}

TInnerChordPoints FindInnerChordPoints(CPathObjectArc const & arc)
{
    Sweep const sweep = SweepOf(arc);
    CChordChain const chain(sweep);
    std::size_t const count = chain.size();
    if (count < 2)
    {
        return {};
    }
    TInnerChordPoints points{count - 1, chain[1], chain[count - 2]};
    if (!arc.IsCounterClockwise())
    {
        std::swap(points.second, points.lastButOne);
    }
    return points;
}

CPathObjectBase::Points const & CPathObjectArc::GetArcPoints() const
{
    if (Points const* present = m_ArcPoints.Get())
    {
        return *present;
    }
    static Points const none;
    if (!IsValid())
    {
        return none;
    }
    auto points = std::make_unique<Points>();
    if (IsDegenerate())
    {
        *points = {GetStartPoint(), GetEndPoint()};
    }
    else
    {
        *points = BuildArcPoints(SweepOf(*this));
        if (!IsCounterClockwise())
        {
            std::reverse(points->begin(), points->end());
        }
    }
    return m_ArcPoints.Set(std::move(points));
}

CPathObjectBase::PointIterator CPathObjectArc::GetPointsBegin() const
{
    return GetArcPoints().begin();
}

CPathObjectBase::PointIterator CPathObjectArc::GetPointsEnd() const
{
    return GetArcPoints().end();
}

} // namespace geometry
