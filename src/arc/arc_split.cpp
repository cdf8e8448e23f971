// Cutting an arc: where it meets arcs and polylines, the cuts in path order, and the pieces.
//
// The crossings come from the sweep kernels. A point at the end of an object is no cut, since the end vertex belongs to
// whatever follows; a point where an arc is only touched is a cut marked `touchOnly`. The cuts of an arc stand in the
// one entry of its list, from start to end whatever its direction.
#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <memory>
#include <utility>

#include <geometry/arc/path_object_arc.h>
#include <geometry/path/path_object_polyline.h>

#include "arc/arc_split.h"
#include "arc/sweep_kernels.h"
#include "path/segment_kernels.h"
#include "path/split_helpers.h"

namespace geometry
{

namespace
{

using SplitPoint = CPathObjectBase::SplitPoint;
using SplitPoints = CPathObjectBase::SplitPoints;
using SplitPiece = CPathObjectBase::SplitPiece;
using SplitPositionList = CPathObjectBase::SplitPositionList;

/// How a piece begins.
enum EPieceStart : std::int8_t
{
    eAtOwnStart = 0,
    eAtIntersection = 1,
    eAtIntersectionOnStart = 3,
    eAtTouch = 4
};

SplitPoint MakeSplitPoint(TPoint<double> const & point, bool touchOnly)
{
    SplitPoint result(point.x, point.y);
    result.touchOnly = touchOnly;
    return result;
}

/// The cuts in the one entry of an arc's list, which is made if it isn't there.
SplitPoints & BringToEntry(SplitPositionList & list)
{
    if (list.empty())
    {
        list.emplace_back();
        list.front().second.reserve(2); // seldom more
    }
    return list.front().second;
}

/// Removes the last and the first point where `isEnd` says that it belongs to what follows.
template <typename IsEnd>
void DropEnds(CrossingPoints & h, IsEnd const & isEnd)
{
    if (h.count > 1 && isEnd(h.Last()))
    {
        --h.count;
    }
    if (h.count > 0 && isEnd(h.points[0]))
    {
        h.DropFirst();
    }
}

bool IsOpenEnd(CPathObjectArc const & arc, TPoint<double> const & point)
{
    return point == arc.GetEndPoint() && arc.GetStartPoint() != arc.GetEndPoint();
}

/// Cuts one arc along its split points.
class CArcCutter
{
public:
    CArcCutter(CPathObjectArc const & arc, std::vector<SplitPiece> & pieces) : m_Arc(arc), m_Pieces(pieces) {}

    void Run(SplitPoints const & points)
    {
        m_Pieces.reserve(m_Pieces.size() + points.size() + 1);
        if (CutFirst(points))
        {
            for (std::size_t i = 0; i < points.size(); ++i)
            {
                CutAfter(points, i);
            }
        }
    }

private:
    /// The piece before the first cut. False: the arc stays whole and is done with.
    bool CutFirst(SplitPoints const & points)
    {
        SplitPoint const & first = points.front();
        if (first != m_Arc.GetStartPoint())
        {
            AppendArc(m_Arc.GetStartPoint(), first, eAtOwnStart);
            return true;
        }
        if (points.size() == 1 || (points.size() == 2 && points.back() == m_Arc.GetEndPoint()))
        {
            Append(std::unique_ptr<CPathObjectBase>(m_Arc.Clone()),
                   first.touchOnly ? eAtTouch : eAtIntersectionOnStart);
            return false;
        }
        return true;
    }

    /// The piece from cut `i` to the next one, or to the end of the arc.
    void CutAfter(SplitPoints const & points, std::size_t i)
    {
        SplitPoint const & current = points[i];
        EPieceStart const atCut = current == m_Arc.GetStartPoint() ? eAtIntersectionOnStart : eAtIntersection;
        if (i + 1 == points.size())
        {
            if (current != m_Arc.GetEndPoint())
            {
                AppendArc(current, m_Arc.GetEndPoint(), current.touchOnly ? eAtTouch : atCut);
            }
            return;
        }
        SplitPoint const & next = points[i + 1];
        if (current == next) // found by two partners: an arc between the two would be the whole circle
        {
            AppendPoint(current, current.touchOnly ? eAtTouch : eAtIntersection);
        }
        else
        {
            AppendArc(current, next, current.touchOnly ? eAtTouch : atCut);
        }
    }

    /// A piece so flat that its rise over the chord is lost in the rounding of its points is the chord: read as an arc,
    /// it could pass for the rest of its circle.
    void AppendArc(TPoint<double> const & from, TPoint<double> const & to, EPieceStart start)
    {
        if (IsFlat(from, to))
        {
            Append(std::make_unique<CPathObjectPolyline>(from, to), start, true);
            return;
        }
        Append(std::make_unique<CPathObjectArc>(from, to, m_Arc.GetCentre(), m_Arc.IsCounterClockwise(),
                                                m_Arc.GetRadius()),
               start, true);
    }

    bool IsFlat(TPoint<double> const & from, TPoint<double> const & to) const
    {
        constexpr double roundings = 4.0 * DBL_EPSILON;
        double const radius = m_Arc.GetRadius();
        TPoint<double> const & centre = m_Arc.GetCentre();
        double const reach = std::max(std::fabs(centre.x), std::fabs(centre.y)) + radius;
        double const cross = (from.x - centre.x) * (to.y - centre.y) - (from.y - centre.y) * (to.x - centre.x);
        bool const isShortWay = m_Arc.IsCounterClockwise() ? cross >= 0.0 : cross <= 0.0; // not round the circle
        // the rise is the square of the chord by eight radii
        return isShortWay && SquareDistance(from, to) < 8.0 * radius * roundings * reach;
    }

    /// A piece without length, between two cuts at the same point.
    void AppendPoint(TPoint<double> const & point, EPieceStart start)
    {
        Append(std::make_unique<CPathObjectPolyline>(point, point), start, true);
    }

    /// Hands the piece over to the holder of the pieces.
    void Append(std::unique_ptr<CPathObjectBase> piece, EPieceStart start, bool needsUserInfo = false)
    {
        if (needsUserInfo && m_Arc.GetUserInfo() != nullptr)
        {
            piece->SetUserInfo(m_Arc.GetUserInfo()->Clone());
        }
        m_Pieces.emplace_back(piece.get(), static_cast<std::int8_t>(start));
        piece.release();
    }

    CPathObjectArc const & m_Arc;
    std::vector<SplitPiece> & m_Pieces;
};

} // namespace

void InsertArcSplitPoint(CPathObjectArc const & arc, SplitPoints & points, SplitPoint const & point)
{
    SplitPoint const added = point; // the argument may be an element of the vector
    if (points.empty() || added == arc.GetStartPoint())
    {
        points.insert(points.begin(), added);
        return;
    }
    Sweep const sweep = SweepOf(arc);
    bool const counterClockwise = arc.IsCounterClockwise();
    for (auto element = points.begin(); element != points.end(); ++element)
    {
        if (*element != arc.GetStartPoint() && IsPointInSweep(sweep.A, *element, sweep.C, added) == counterClockwise)
        {
            points.insert(element, added);
            return;
        }
    }
    points.push_back(added);
}

CPathObjectBase::EPathSplitResult CPathObjectArc::DetermineSplitPositions(CPathObjectArc const & other,
                                                                          SplitPositionList & mine,
                                                                          SplitPositionList & theirs) const
{
    if (!IsValid() || !other.IsValid() || !m_BoundingRect.Overlaps(other.m_BoundingRect))
    {
        return eNoSplitPositions;
    }
    CrossingPoints h;
    EArcMeeting const meeting = IntersectArcArc(SweepOf(*this), SweepOf(other), h);
    if (meeting == EArcMeeting::eNone)
    {
        return eNoSplitPositions;
    }
    DropEnds(h, [&](TPoint<double> const & point) { return IsOpenEnd(other, point) || IsOpenEnd(*this, point); });
    for (unsigned int i = 0; i < h.count; ++i)
    {
        SplitPoint const point = MakeSplitPoint(h.points[i], meeting == EArcMeeting::eTouch);
        InsertArcSplitPoint(*this, BringToEntry(mine), point);
        InsertArcSplitPoint(other, BringToEntry(theirs), point);
    }
    return eSplitPositionsFound; // also where only ends met
}

CPathObjectBase::EPathSplitResult CPathObjectArc::DetermineSplitPositions(CPathObjectPolyline const & other,
                                                                          SplitPositionList & mine,
                                                                          SplitPositionList & theirs) const
{
    if (!IsValid() || !m_BoundingRect.Overlaps(other.GetBoundingRect()))
    {
        return eNoSplitPositions;
    }
    std::size_t const entriesBefore = theirs.size();
    Sweep const sweep = SweepOf(*this);
    PointIterator const end = other.GetPointsEnd();
    PointIterator p = other.GetPointsBegin();
    for (PointIterator q = p; p != end && ++q != end; p = q)
    {
        CrossingPoints h;
        ELineMeeting const meeting = IntersectArcSegment(sweep, *p, *q, h);
        if (meeting == ELineMeeting::eNone)
        {
            continue;
        }
        TPoint<double> const & first = h.points[0];
        bool const isTangent = meeting == ELineMeeting::eTouch && first != GetStartPoint() && first != GetEndPoint() &&
                               first != *q && first != *p;
        if (!isTangent)
        {
            DropEnds(h, [&](TPoint<double> const & point) { return point == *q || IsOpenEnd(*this, point); });
        }
        if (h.count == 0)
        {
            continue;
        }
        if (!isTangent) // a tangent cuts the arc only
        {
            SplitEntry & entry = FindOrAddSplitEntry(theirs, p, q, end);
            for (unsigned int i = 0; i < h.count; ++i)
            {
                InsertSplitPoint(entry.second, MakeSplitPoint(h.points[i], false), SplitPoint(p->x, p->y));
            }
        }
        for (unsigned int i = 0; i < h.count; ++i)
        {
            InsertArcSplitPoint(*this, BringToEntry(mine), MakeSplitPoint(h.points[i], isTangent));
        }
    }
    return theirs.size() > entriesBefore ? eSplitPositionsFound : eNoSplitPositions;
}

CPathObjectBase::EPathSplitResult CPathObjectArc::DetermineSplitPositions(CPathObjectBase const & other,
                                                                          SplitPositionList & mine,
                                                                          SplitPositionList & theirs) const
{
    return other.DetermineSplitPositions(*this, theirs, mine);
}

void CPathObjectArc::DoSplits(SplitPositionList const & positions, std::vector<SplitPiece> & pieces) const
{
    if (IsValid() && positions.size() == 1 && !positions.front().second.empty())
    {
        CArcCutter(*this, pieces).Run(positions.front().second);
    }
}

} // namespace geometry
