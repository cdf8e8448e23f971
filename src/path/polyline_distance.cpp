// Distances of a polyline to points and polylines. Pairs with an arc are the arc's work.
//
// Loops over all segments say which point or pair is the nearest: the first one of those that are as near. Where there
// are many segments the same one is found by search trees.
#include <cfloat>
#include <cmath>
#include <optional>

#include <geometry/arc/path_object_arc.h>
#include <geometry/path/path_object_polyline.h>

#include "numeric/nearest_pair.h"
#include "path/segment_index.h"
#include "path/segment_kernels.h"

namespace geometry
{

namespace
{

using Points = CPathObjectBase::Points;

constexpr std::size_t MinSearchedPairs = 512;  // with fewer, a loop over all is faster than a search
constexpr std::size_t PairsToPayASegment = 16; // for its place in a search tree

/// The nearest pair of two polylines in the order of the loops.
class CSegmentPairs
{
public:
    CSegmentPairs(Points const & p, Points const & q) : m_P(p), m_Q(q) {}

    /// The distance of two segments with the closest points.
    double Measure(CNearestPair::TPlace const & place, TPoint<double> & onP, TPoint<double> & onQ) const
    {
        auto const [i, j] = place;
        return SquareDistanceSegments(m_P[i], m_P[i + 1], m_Q[j], m_Q[j + 1], onP, onQ);
    }

    /// What a loop does that knows the distance `best`: a pair counts only if it comes as near as that.
    bool IsReached(CNearestPair::TPlace const & place, double best) const
    {
        auto const [i, j] = place;
        CBoundingRect<double> reach(m_P[i], m_P[i + 1]);
        reach.Inflate(std::sqrt(best));
        return reach.Overlaps(CBoundingRect<double>(m_Q[j], m_Q[j + 1]));
    }

    /// The loop itself.
    double FindByLoop(TPoint<double> & onP, TPoint<double> & onQ) const
    {
        double best = DBL_MAX;
        for (std::size_t i = 0; i + 1 < m_P.size(); ++i)
        {
            CBoundingRect<double> reach(m_P[i], m_P[i + 1]);
            reach.Inflate(best < DBL_MAX ? std::sqrt(best) : 0.0);
            for (std::size_t j = 0; j + 1 < m_Q.size(); ++j)
            {
                if (best < DBL_MAX && !reach.Overlaps(CBoundingRect<double>(m_Q[j], m_Q[j + 1])))
                {
                    continue;
                }
                TPoint<double> a;
                TPoint<double> b;
                double const d = Measure({i, j}, a, b);
                if (d < best)
                {
                    best = d;
                    onP = a;
                    onQ = b;
                    if (IsAlmostEqual(0.0, d, FineUlpLimit))
                    {
                        return 0.0;
                    }
                    reach = CBoundingRect<double>(m_P[i], m_P[i + 1]);
                    reach.Inflate(std::sqrt(best));
                }
            }
        }
        return best;
    }

    /// The pair that the loop finds. None where that can't be told: if the loop may have passed over the nearest one.
    /// It has not, if the pair is reached from the smallest distance before it, which is no more than the loop knew.
    std::optional<CNearestPair::TPlace> FindByIndex(CChainIndex const & p, CChainIndex const & q) const
    {
        double const largest = std::max(GetLargestCoordinate(p.GetRect()), GetLargestCoordinate(q.GetRect()));
        auto const measure = [&](std::size_t i, std::size_t j)
        {
            TPoint<double> a;
            TPoint<double> b;
            return ZeroIfFine(Measure({i, j}, a, b));
        };
        CNearestPair nearest(largest);
        FindNearestPair(p, q, nearest, measure);
        if (!nearest.IsFound() || IsReached(nearest.GetPlace(), nearest.GetBest()))
        {
            return nearest.IsFound() ? std::optional(nearest.GetPlace()) : std::nullopt;
        }
        CNearestPair before(largest, 0.0, nearest.GetPlace());
        FindNearestPair(p, q, before, measure);
        bool const isMeasured = !before.IsFound() || IsReached(nearest.GetPlace(), before.GetBest());
        return isMeasured ? std::optional(nearest.GetPlace()) : std::nullopt;
    }

private:
    Points const & m_P;
    Points const & m_Q;
};

} // namespace

double CPathObjectPolyline::SquareDistanceToPoint(double x, double y, TPoint<double> & closest) const
{
    TPoint<double> const point(x, y);
    double best = DBL_MAX;
    auto const tryTo = [&](std::size_t i)
    {
        TPoint<double> c;
        double const d = ClosestPointOnSegment(m_Points[i], m_Points[i + 1], point, c);
        if (d < best)
        {
            best = d;
            closest = c;
        }
        return d;
    };
    CChainIndex const* const index = IsIndexable(point) ? FindSegmentIndex(false) : nullptr;
    if (index != nullptr)
    {
        CBoundingRect<double> const atPoint(point, point);
        CNearestPair nearest(std::max(GetLargestCoordinate(index->GetRect()), GetLargestCoordinate(atPoint)));
        TPoint<double> c;
        FindNearestPair(*index, CChainIndex({atPoint}), nearest,
                        [&](std::size_t i, std::size_t)
                        { return ClosestPointOnSegment(m_Points[i], m_Points[i + 1], point, c); });
        return nearest.IsFound() ? tryTo(nearest.GetPlace().first) : DBL_MAX;
    }
    for (std::size_t i = 0; i + 1 < m_Points.size(); ++i)
    {
        tryTo(i);
    }
    return best;
}

double CPathObjectPolyline::SquareDistanceToPath(CPathObjectPolyline const & other, TPoint<double> & onThis,
                                                 TPoint<double> & onOther) const
{
    CSegmentPairs const pairs(m_Points, other.m_Points);
    std::size_t const count = m_Points.size() * other.m_Points.size();
    if (IsIndexUsed(count >= MinSearchedPairs))
    {
        bool const isWorthIt = count >= PairsToPayASegment * (m_Points.size() + other.m_Points.size());
        CChainIndex const* mine = FindSegmentIndex(isWorthIt);
        CChainIndex const* theirs = other.FindSegmentIndex(isWorthIt);
        std::unique_ptr<CChainIndex> passing; // of the shorter one, where only the longer one keeps an index
        if ((mine == nullptr) != (theirs == nullptr))
        {
            Points const & points = mine == nullptr ? m_Points : other.m_Points;
            passing = points.size() < MinIndexedSegmentVertices ? MakeSegmentIndex(points) : nullptr;
            (mine == nullptr ? mine : theirs) = passing.get();
        }
        if (mine != nullptr && theirs != nullptr)
        {
            if (auto const place = pairs.FindByIndex(*mine, *theirs))
            {
                return ZeroIfFine(pairs.Measure(*place, onThis, onOther));
            }
        }
    }
    return pairs.FindByLoop(onThis, onOther);
}

double CPathObjectPolyline::SquareDistanceToPath(CPathObjectArc const & other, TPoint<double> & onThis,
                                                 TPoint<double> & onOther) const
{
    return other.SquareDistanceToPath(*this, onOther, onThis);
}

double CPathObjectPolyline::SquareDistanceToPath(CPathObjectBase const & other, TPoint<double> & onThis,
                                                 TPoint<double> & onOther) const
{
    return other.SquareDistanceToPath(*this, onOther, onThis);
}

} // namespace geometry
