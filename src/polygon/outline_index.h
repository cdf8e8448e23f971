// The objects of an outline in a search tree: for points against a polygon, and for the distances of polygons.
#pragma once

#include <memory>
#include <vector>

#include "arc/distance_reach.h"
#include "numeric/nearest_pair.h"

namespace geometry
{

/// Reads the objects while it is made, and keeps nothing of them but rectangles.
class COutlineIndex
{
public:
    /// At least one object.
    explicit COutlineIndex(std::vector<CPathObjectBase const*> const & objects);

    /// Calls `visit(i)` for all objects that the upward ray from `point` may cross.
    template <typename Visit>
    void SearchAbove(TPoint<double> const & point, Visit const & visit) const
    {
        double const room =
            CNearestPair::RelativeRoom * std::max(m_Largest, std::max(std::fabs(point.x), std::fabs(point.y)));
        m_Objects->Search([&](CBoundingRect<double> const & r)
                          { return !(point.x < r.minX - room || point.x > r.maxX + room || point.y > r.maxY + room); },
                          [&](std::size_t i)
                          {
                              visit(i);
                              return true;
                          });
    }

    /// The object nearest to a point, by the square distance `measure(i)`; the first of those. False: can't be told.
    template <typename Measure>
    bool FindNearestToPoint(TPoint<double> const & point, Measure const & measure, std::size_t & found) const
    {
        if (!IsIndexable(point))
        {
            return false;
        }
        CBoundingRect<double> const atPoint(point, point);
        CNearestPair nearest(std::max(m_Largest, GetLargestCoordinate(atPoint)));
        FindNearestPair(*m_Objects, CChainIndex({atPoint}), nearest,
                        [&](std::size_t i, std::size_t) { return measure(i); });
        found = nearest.GetPlace().first;
        return nearest.IsFound();
    }

    /// None yet.
    CNearestPair MakeNearestPair(COutlineIndex const & other) const
    {
        bool const areArcs = m_MetReach > 0.0 && other.m_MetReach > 0.0;
        return CNearestPair(std::max(m_Largest, other.m_Largest), areArcs ? m_MetReach + other.m_MetReach : 0.0);
    }

    /// Offers to `nearest` the square distances `measure(i, j)` of all pairs of an object of this outline and one of
    /// `other` of which it may hold one. False: which they are can't be told.
    template <typename Measure>
    bool OfferPairs(COutlineIndex const & other, CNearestPair & nearest, Measure const & measure) const
    {
        double const largest = std::max(m_Largest, other.m_Largest);
        if (!m_SmallestArc.IsCertainWithin(largest) || !other.m_SmallestArc.IsCertainWithin(largest))
        {
            return false;
        }
        FindNearestPair(*m_Objects, *other.m_Objects, nearest, measure);
        if (m_Centres != nullptr && other.m_Centres != nullptr)
        {
            double const near = 2.0 * CNearestPair::RelativeRoom * largest;
            m_Centres->WalkPairs(
                *other.m_Centres, SquareGapOfCentres,
                [&](double gap, std::size_t i, std::size_t j)
                { return gap <= near * near && nearest.MayHold(0.0, i, j); },
                [&](std::size_t i, std::size_t j) { nearest.Offer(measure(i, j), i, j); });
        }
        return true;
    }

private:
    static double SquareGapOfCentres(CBoundingRect<double> const & a, CBoundingRect<double> const & b);

    std::unique_ptr<CChainIndex> m_Objects; ///< what the distances to each are computed for
    std::unique_ptr<CChainIndex> m_Centres; ///< of arcs, an empty rectangle for other objects; null without arcs
    TDistanceReach m_SmallestArc;
    double m_Largest = 0.0;
    double m_MetReach = 0.0;
};

} // namespace geometry
