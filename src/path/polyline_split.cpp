// Cutting polylines at their crossings, in two steps: `DetermineSplitPositions` notes the cuts of one pair, segment
// by segment, in a list of each object; after all pairs have had their turn, `DoSplits` cuts along everything noted.
// The end vertex of a segment belongs to the next segment: no crossing is noted there.
#include <geometry/path/path_object_polyline.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>

#include <geometry/arc/path_object_arc.h>

#include "numeric/nearby_pieces.h"
#include "path/polyline_internals.h"
#include "path/segment_kernels.h"
#include "path/split_helpers.h"

namespace geometry
{

namespace
{

constexpr std::size_t MinPairsForIndex = 4096; // of segments; below, the loops over all of them are faster

constexpr std::size_t SegmentsInBlock = CNearbyPieces::BlockSize;

/// None of the segments from `first` to before `last` overlaps `rect`: what is around all of them is clearly apart.
bool IsBlockApart(CBoundingRect<double> const & rect, std::vector<TPoint<double>> const & points, std::size_t first,
                  std::size_t last)
{
    CBoundingRect<double> around;
    double sum = 0.0;
    for (std::size_t i = first; i <= last; ++i)
    {
        around.Include(points[i]);
        sum += points[i].x + points[i].y;
    }
    return std::isfinite(sum) && !rect.Overlaps(around) &&
           IsIndexUsed(true); // numbers that are none overlap everything
}

/// Calls `visit(i)` for each segment whose rectangle overlaps `rect`, in path order. `index`: of the segments, or null.
template <typename Visit>
void ForEachSegmentIn(CBoundingRect<double> const & rect, std::vector<TPoint<double>> const & points,
                      CChainIndex const* index, Visit const & visit)
{
    auto const overlaps = [&rect](CBoundingRect<double> const & r) { return rect.Overlaps(r); };
    if (index != nullptr)
    {
        index->Search(overlaps,
                      [&](std::size_t i)
                      {
                          visit(i);
                          return true;
                      });
        return;
    }
    for (std::size_t block = 0; block + 1 < points.size(); block += SegmentsInBlock)
    {
        std::size_t const end = std::min(block + SegmentsInBlock, points.size() - 1);
        if (IsBlockApart(rect, points, block, end))
        {
            continue;
        }
        for (std::size_t i = block; i < end; ++i)
        {
            if (overlaps(CBoundingRect<double>(points[i], points[i + 1])))
            {
                visit(i);
            }
        }
    }
}

/// The segments of one polyline that are near those of another, which come in path order.
class CNearbySegments
{
public:
    /// `index`: of the segments, or null.
    CNearbySegments(std::vector<TPoint<double>> const & points, CChainIndex const* index) : m_Points(points)
    {
        if (index != nullptr)
        {
            m_Nearby.emplace(*index);
        }
    }

    /// Calls `visit(k)` for each segment whose rectangle overlaps that of the segment `i` of `others`, in path order.
    template <typename Visit>
    void ForEachAt(std::vector<TPoint<double>> const & others, std::size_t i, Visit const & visit)
    {
        CBoundingRect<double> const rect(others[i], others[i + 1]);
        if (!m_Nearby)
        {
            ForEachSegmentIn(rect, m_Points, nullptr, visit);
            return;
        }
        if (i / SegmentsInBlock != m_Block)
        {
            m_Block = i / SegmentsInBlock;
            LookUp(others, i);
        }
        m_Nearby->Search([&rect](CBoundingRect<double> const & r) { return rect.Overlaps(r); }, visit);
    }

private:
    void LookUp(std::vector<TPoint<double>> const & others, std::size_t i)
    {
        CBoundingRect<double> around;
        for (std::size_t const end = std::min((m_Block + 1) * SegmentsInBlock + 1, others.size()); i < end; ++i)
        {
            around.Include(others[i]);
        }
        m_Nearby->LookUp(around);
    }

    std::vector<TPoint<double>> const & m_Points;
    std::optional<CNearbyPieces> m_Nearby;
    std::size_t m_Block = static_cast<std::size_t>(-1);
};

} // namespace

CPathObjectBase::EPathSplitResult CPathObjectPolyline::DetermineSplitPositions(CPathObjectPolyline const & other,
                                                                               SplitPositionList & mine,
                                                                               SplitPositionList & theirs) const
{
    auto const toSplitPoint = [](TPoint<double> const & p) { return SplitPoint(p.x, p.y); };
    bool const isWorthAnIndex = m_Points.size() * other.m_Points.size() >= MinPairsForIndex;
    auto const visitPair = [&](std::size_t i, std::size_t k, SplitEntry*& entryOfS)
    {
        PointIterator const s = m_Points.begin() + static_cast<std::ptrdiff_t>(i);
        PointIterator const t = other.m_Points.begin() + static_cast<std::ptrdiff_t>(k);
        TPoint<double> first;
        TPoint<double> second;
        if (!IntersectSegments(s[0], s[1], t[0], t[1], false, false, first, second))
        {
            return;
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
    };
    if (m_BoundingRect.Overlaps(other.m_BoundingRect))
    {
        CNearbySegments nearby(other.m_Points, other.FindSegmentIndex(isWorthAnIndex));
        ForEachSegmentIn(other.m_BoundingRect, m_Points, FindSegmentIndex(false),
                         [&](std::size_t i)
                         {
                             SplitEntry* entryOfS = nullptr;
                             nearby.ForEachAt(m_Points, i, [&](std::size_t k) { visitPair(i, k, entryOfS); });
                         });
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
    m_Points.insert(m_Points.end(), first, last);
    for (; first != last; ++first)
    {
        m_BoundingRect.Include(*first);
    }
    m_SegmentIndex.Clear();
}

template <typename Make>
void CPathObjectPolyline::CutInto(SplitPositionList const & positions, std::vector<SplitPiece> & pieces,
                                  Make const & make) const
{
    if (positions.empty())
    {
        return;
    }
    PointIterator cur = m_Points.begin(); // the first vertex that no piece holds yet
    SplitPoint last;                      // the cut last handled
    bool hasLast = false;
    bool lastAtVertex = false;

    // from the last cut, if it is between vertices, along those before `behind`, to the cut `to` if there is one
    auto const addPiece = [&](PointIterator behind, SplitPoint const* to)
    {
        std::unique_ptr<CPathObjectPolyline> piece(make());
        piece->SetUserInfo(CloneUserInfo());
        bool const beginsBetween = hasLast && !lastAtVertex;
        piece->m_Points.reserve(static_cast<std::size_t>(behind - cur) + (beginsBetween ? 1 : 0) +
                                (to != nullptr ? 1 : 0));
        auto const addCut = [&](SplitPoint const & cut)
        {
            piece->m_Points.emplace_back(cut.x, cut.y);
            piece->m_BoundingRect.Include(cut);
        };
        if (beginsBetween)
        {
            addCut(last);
        }
        piece->AppendVertexRange(cur, behind);
        if (to != nullptr)
        {
            addCut(*to);
        }
        if (piece->m_Points.size() > 1)
        {
            int const flags = (hasLast ? 1 : 0) | (lastAtVertex ? 2 : 0);
            pieces.emplace_back(piece.get(), static_cast<std::int8_t>(flags));
            piece.release();
        }
    };
    pieces.reserve(pieces.size() + positions.size() + 1); // mostly one cut a segment
    for (SplitEntry const & entry : positions)
    {
        auto const [start, end] = entry.first;
        SplitPoints const & cuts = entry.second;
        for (std::size_t i = 0; i < cuts.size(); ++i)
        {
            SplitPoint const & p = cuts[i];
            // a repeat of the last cut on the same vertex is a cut of its own
            bool const isAtVertex = p == *start && (i == 0 || !(p == last));
            if (!isAtVertex)
            {
                addPiece(end, &p);
                cur = end;
            }
            else if (start != m_Points.begin())
            {
                addPiece(end, nullptr);
                cur = start;
            }
            lastAtVertex = isAtVertex;
            hasLast = true;
            last = p;
        }
    }
    addPiece(m_Points.end(), nullptr);
}

void CPathObjectPolyline::DoSplits(SplitPositionList const & positions, std::vector<SplitPiece> & pieces) const
{
    CutInto(positions, pieces, [] { return new CPathObjectPolyline; });
}

void CPolylineInternals::DoSplits(CPathObjectPolyline const & polyline, SplitPositionList const & positions,
                                  std::vector<SplitPiece> & pieces, std::pmr::memory_resource & memory)
{
    polyline.CutInto(positions, pieces, [&] { return new (memory) CBorrowingPolyline; });
}

std::unique_ptr<CPathObjectPolyline> CPolylineInternals::TakeOver(CPathObjectPolyline & polyline)
{
    auto taken = std::make_unique<CPathObjectPolyline>();
    std::swap(taken->m_Points, polyline.m_Points);
    taken->m_BoundingRect = polyline.m_BoundingRect;
    return taken;
}

} // namespace geometry
