#include "polygon/outline_index.h"

#include <algorithm>

#include <geometry/arc/path_object_arc.h>

namespace geometry
{

namespace
{

constexpr double RoomForOthers = 10.0; // how much larger coordinates of another outline may be

} // namespace

COutlineIndex::COutlineIndex(std::vector<CPathObjectBase const*> const & objects)
{
    std::vector<TDistanceReach> reaches;
    reaches.reserve(objects.size());
    for (CPathObjectBase const* object : objects)
    {
        reaches.push_back(DistanceReachOf(*object));
        m_Largest = std::max(m_Largest, reaches.back().largest);
    }
    std::vector<CBoundingRect<double>> rects;
    std::vector<CBoundingRect<double>> centres;
    rects.reserve(objects.size());
    for (std::size_t i = 0; i < objects.size(); ++i)
    {
        TDistanceReach const reach =
            reaches[i].IsCertainWithin(RoomForOthers * m_Largest) ? reaches[i] : TDistanceReach();
        rects.push_back(reach.rect);
        if (reach.radius < DBL_MAX)
        {
            centres.resize(objects.size());
            TPoint<double> const & centre = static_cast<CPathObjectArc const &>(*objects[i]).GetCentre();
            centres[i] = CBoundingRect<double>(centre, centre);
        }
        m_SmallestArc.radius = std::min(m_SmallestArc.radius, reach.radius);
        m_MetReach = std::max(m_MetReach, reach.metReach);
    }
    m_Objects = std::make_unique<CChainIndex>(std::move(rects));
    m_Centres = centres.empty() ? nullptr : std::make_unique<CChainIndex>(std::move(centres));
}

/// The nearest points of circles about one and the same centre lie on the same side: such arcs need no care.
double COutlineIndex::SquareGapOfCentres(CBoundingRect<double> const & a, CBoundingRect<double> const & b)
{
    bool const isOnePoint = a.minX == a.maxX && a.minY == a.maxY && b.minX == a.minX && b.maxX == a.maxX &&
                            b.minY == a.minY && b.maxY == a.maxY;
    return isOnePoint ? DBL_MAX : SquareGap(a, b);
}

} // namespace geometry
