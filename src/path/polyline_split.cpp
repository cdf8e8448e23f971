// Cutting polylines at their crossings, in two steps: `DetermineSplitPositions` notes the cuts of one pair, segment
// by segment, in a list of each object; after all pairs have had their turn, `DoSplits` cuts along everything noted.
// The end vertex of a segment belongs to the next segment: no crossing is noted there.
#include <geometry/path/path_object_polyline.h>

#include <algorithm>
#include <cassert>
#include <memory>

#include <geometry/arc/path_object_arc.h>

#include "path/segment_kernels.h"
#include "path/split_helpers.h"

namespace geometry
{

CPathObjectBase::SplitEntry & FindOrAddSplitEntry(CPathObjectBase::SplitPositionList & list,
                                                  CPathObjectBase::PointIterator start,
                                                  CPathObjectBase::PointIterator end,
                                                  [[maybe_unused]] CPathObjectBase::PointIterator pathEnd)
{
    assert(start < pathEnd && end < pathEnd);
    // the entries stand in the order of the segments: the first one that isn't before `start` decides
    auto const place =
        std::find_if(list.begin(), list.end(), [&](auto const & entry) { return !(entry.first.first < start); });
    if (place != list.end() && place->first.first == start)
    {
        return *place;
    }
    return *list.emplace(place, std::make_pair(start, end), std::vector<CPathObjectBase::SplitPoint>());
}

void InsertSplitPoint(std::vector<CPathObjectBase::SplitPoint> & points, CPathObjectBase::SplitPoint const & point,
                      CPathObjectBase::SplitPoint const & origin)
{
    double const distance = SquareDistance(point, origin);
    auto const place = std::find_if(points.begin(), points.end(),
                                    [&](auto const & present) { return SquareDistance(present, origin) > distance; });
    points.insert(place, point);
}

CPathObjectBase::EPathSplitResult CPathObjectPolyline::DetermineSplitPositions(CPathObjectPolyline const & other,
                                                                               SplitPositionList & mine,
                                                                               SplitPositionList & theirs) const
{
    auto const toSplitPoint = [](TPoint<double> const & p) { return SplitPoint(p.x, p.y); };
    bool const mayMeet = m_BoundingRect.Overlaps(other.m_BoundingRect);
    for (PointIterator s = m_Points.begin(); mayMeet && m_Points.end() - s > 1; ++s)
    {
        CBoundingRect<double> const rectOfS(s[0], s[1]);
        if (!other.m_BoundingRect.Overlaps(rectOfS))
        {
            continue;
        }
        SplitEntry* entryOfS = nullptr;
        for (PointIterator t = other.m_Points.begin(); other.m_Points.end() - t > 1; ++t)
        {
            TPoint<double> first;
            TPoint<double> second;
            if (!rectOfS.Overlaps(CBoundingRect<double>(t[0], t[1])) ||
                !IntersectSegments(s[0], s[1], t[0], t[1], false, false, first, second))
            {
                continue;
            }
            if (entryOfS == nullptr)
            {
                entryOfS = &FindOrAddSplitEntry(mine, s, s + 1, m_Points.end());
            }
            SplitEntry & entryOfT = FindOrAddSplitEntry(theirs, t, t + 1, other.m_Points.end());
            InsertSplitPoint(entryOfS->second, toSplitPoint(first), toSplitPoint(s[0]));
            InsertSplitPoint(entryOfT.second, toSplitPoint(first), toSplitPoint(t[0]));
            if (!(first == second))
            {
                InsertSplitPoint(entryOfS->second, toSplitPoint(second), toSplitPoint(s[0]));
                InsertSplitPoint(entryOfT.second, toSplitPoint(second), toSplitPoint(t[0]));
            }
        }
    }
    return mine.empty() && theirs.empty() ? eNoSplitPositions : eSplitPositionsFound;
}

CPathObjectBase::EPathSplitResult CPathObjectPolyline::DetermineSplitPositions(CPathObjectArc const & other,
                                                                               SplitPositionList & mine,
                                                                               SplitPositionList & theirs) const
{
    return other.DetermineSplitPositions(*this, theirs, mine);
}

CPathObjectBase::EPathSplitResult CPathObjectPolyline::DetermineSplitPositions(CPathObjectBase const & other,
                                                                               SplitPositionList & mine,
                                                                               SplitPositionList & theirs) const
{
    return other.DetermineSplitPositions(*this, theirs, mine);
}

void CPathObjectPolyline::AppendVertexRange(PointIterator first, PointIterator last)
{
    for (; first != last; ++first)
    {
        AddVertex(first->x, first->y);
    }
}

void CPathObjectPolyline::DoSplits(SplitPositionList const & positions, std::vector<SplitPiece> & pieces) const
{
    if (positions.empty())
    {
        return;
    }
    PointIterator cur = m_Points.begin(); // the first vertex that no piece holds yet
    SplitPoint last;                      // the cut last handled
    bool hasLast = false;
    bool lastAtVertex = false;

    auto const newPiece = [&]
    {
        auto piece = std::make_unique<CPathObjectPolyline>();
        piece->SetUserInfo(CloneUserInfo());
        if (hasLast && !lastAtVertex)
        {
            piece->AddVertex(last.x, last.y);
        }
        return piece;
    };
    auto const finishPiece = [&](std::unique_ptr<CPathObjectPolyline> piece)
    {
        if (piece->IsValid())
        {
            int const flags = (hasLast ? 1 : 0) | (lastAtVertex ? 2 : 0);
            pieces.emplace_back(piece.get(), static_cast<std::int8_t>(flags));
            piece.release();
        }
    };

    for (SplitEntry const & entry : positions)
    {
        auto const [start, end] = entry.first;
        std::vector<SplitPoint> const & cuts = entry.second;
        for (std::size_t i = 0; i < cuts.size(); ++i)
        {
            SplitPoint const & p = cuts[i];
            // a repeat of the last cut on the same vertex is a cut of its own
            bool const isAtVertex = p == *start && (i == 0 || !(p == last));
            if (!isAtVertex)
            {
                auto piece = newPiece();
                piece->AppendVertexRange(cur, end);
                piece->AddVertex(p.x, p.y);
                finishPiece(std::move(piece));
                cur = end;
            }
            else if (start != m_Points.begin())
            {
                auto piece = newPiece();
                piece->AppendVertexRange(cur, end);
                finishPiece(std::move(piece));
                cur = start;
            }
            lastAtVertex = isAtVertex;
            hasLast = true;
            last = p;
        }
    }
    auto piece = newPiece();
    piece->AppendVertexRange(cur, m_Points.end());
    finishPiece(std::move(piece));
}

} // namespace geometry
