// The chord approximation of an arc, for callers that walk an outline vertex by vertex.
//
// All circles share one grid of 64 directions. The grid points of the whole circle are built from one octant by
// mirroring; those within the sweep are selected as one stretch of the ring; the exact ends are put in front and behind.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <memory>
#include <utility>

#include <geometry/arc/path_object_arc.h>

#include "arc/arc_geometry.h"

namespace geometry
{

namespace
{

using Points = std::vector<TPoint<double>>;

constexpr double GridStep = 0.09817477042468103; // radians: pi / 32
constexpr int StepsInOctant = 8;
constexpr std::size_t ClosedGridSize = 65;

/// Cosine and sine of the grid directions of the first octant.
std::array<TPoint<double>, StepsInOctant + 1> const & Octant()
{
    static auto const octant = []
    {
        std::array<TPoint<double>, StepsInOctant + 1> points;
        for (int i = 1; i <= StepsInOctant; ++i)
        {
            points[static_cast<std::size_t>(i)] = TPoint<double>(std::cos(i * GridStep), std::sin(i * GridStep));
        }
        return points;
    }();
    return octant;
}

/// The whole circle from its rightmost point counter-clockwise back to it; the centre alone if there is no radius.
class CCirclePoints
{
public:
    CCirclePoints(TPoint<double> const & c, double r)
    {
        if (r <= 0.0)
        {
            Add(c.x, c.y);
            return;
        }
        Add(r, 0.0);
        for (std::size_t i = 1; i <= StepsInOctant; ++i)
        {
            Add(r * Octant()[i].x, r * Octant()[i].y);
        }
        AddMirrored([this](TPoint<double> const & p) { Add(p.y, p.x); });
        AddMirrored([this](TPoint<double> const & p) { Add(-p.x, p.y); });
        AddMirrored([this](TPoint<double> const & p) { Add(p.x, -p.y); });
        for (TPoint<double> & point : m_Points)
        {
            point.x += c.x;
            point.y += c.y;
        }
    }

    std::size_t size() const { return m_Size; }
    void pop_back() { --m_Size; }
    TPoint<double> const & operator[](std::size_t i) const { return m_Points[i]; }

private:
    void Add(double x, double y)
    {
        m_Points[m_Size].x = x;
        m_Points[m_Size++].y = y;
    }

    /// `add` is called with the present points, from the last but one back to the first.
    template <typename AddMirror>
    void AddMirrored(AddMirror const & add)
    {
        for (std::size_t i = m_Size - 1; i-- > 0;)
        {
            add(m_Points[i]);
        }
    }

    std::array<TPoint<double>, ClosedGridSize> m_Points;
    std::size_t m_Size = 0;
};

/// Index of the grid point that follows `A` where all grid points lie in the sweep; the size of the ring if none does.
std::size_t FindFirstAfterStart(Sweep const & sweep, CCirclePoints const & ring)
{
    std::size_t found = ring.size();
    double best = 0.0;
    TPoint<double> const & c = sweep.C;
    for (std::size_t i = 0; i < ring.size(); ++i)
    {
        TPoint<double> const & p = ring[i];
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

    TPoint<double> const & operator[](std::size_t i) const
    {
        if (m_BeginsAtA && i == 0)
        {
            return m_A;
        }
        std::size_t const k = i - (m_BeginsAtA ? 1U : 0U);
        return k < m_Selected ? m_Ring[(m_First + k) % m_Ring.size()] : m_B;
    }

private:
    /// Finds the stretch of the ring that lies in the sweep.
    void SelectStretch(Sweep const & sweep)
    {
        std::size_t const n = m_Ring.size();
        if (n == 0)
        {
            return;
        }
        bool inside = IsPointInSweep(sweep, m_Ring[n - 1]);
        std::size_t entry = n;
        std::size_t exit = n;
        for (std::size_t i = 0; i < n && (entry == n || exit == n); ++i)
        {
            bool const isIn = IsPointInSweep(sweep, m_Ring[i]);
            if (isIn != inside)
            {
                (isIn ? entry : exit) = i;
                inside = isIn;
            }
        }
        if (entry != n && exit != n)
        {
            m_First = entry;
            m_Selected = (exit + n - entry) % n;
        }
        else if (entry == n && exit == n && inside)
        {
            m_First = FindFirstAfterStart(sweep, m_Ring);
            m_Selected = m_First < n ? n : 0;
        }
    }

    TPoint<double> m_A;
    TPoint<double> m_B;
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
    CChordChain const chain(SweepOf(arc));
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
