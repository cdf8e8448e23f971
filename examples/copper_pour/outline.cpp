// Pieces whose ends meet belong to one ring. The library chains the pieces of a ring, whatever their order and
// direction, and tells the rings apart into outlines and the holes in them.

#include "outline.h"

#include "arc_geometry.h"
#include "s_expression.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <utility>

namespace copper_pour
{
namespace
{

using geometry::CPathObjectArc;
using geometry::CPathObjectBase;
using geometry::CPathObjectPolyline;
using geometry::CPolygon;
using CObjects = SelfDestructingContainer<std::vector<CPathObjectBase*>>;

[[noreturn]] void Refuse(COutlinePiece const & piece, CPoint const & at, char const* reason)
{
    char text[160];
    std::snprintf(text, sizeof(text), "line %zu: the outline %s at (%.6f, %.6f) mm", piece.line, reason,
                  at.x / NanometresPerMillimetre, at.y / NanometresPerMillimetre);
    throw CBoardError(text);
}

/// The ends that were seen so far, in squares of the side `SnapDistance`.
class CEnds
{
public:
    /// The number of the end at or near `point`, which moves there.
    std::size_t Find(CPoint & point)
    {
        CSquare const square(static_cast<long>(std::floor(point.x / SnapDistance)),
                             static_cast<long>(std::floor(point.y / SnapDistance)));
        for (long dx = -1; dx <= 1; ++dx)
        {
            for (long dy = -1; dy <= 1; ++dy)
            {
                auto const [first, last] = m_Squares.equal_range(CSquare(square.first + dx, square.second + dy));
                for (auto found = first; found != last; ++found)
                {
                    if (Distance(found->second.first, point) > SnapDistance) continue;
                    point = found->second.first;
                    return found->second.second;
                }
            }
        }
        m_Squares.emplace(square, std::make_pair(point, m_Squares.size()));
        return m_Squares.size() - 1;
    }

private:
    using CSquare = std::pair<long, long>;
    std::multimap<CSquare, std::pair<CPoint, std::size_t>> m_Squares;
};

std::unique_ptr<CPathObjectBase> MakeObject(COutlinePiece const & piece)
{
    switch (piece.kind)
    {
    case COutlinePiece::EKind::eCircle:
        return std::make_unique<CPathObjectArc>(piece.centre, Distance(piece.centre, piece.start));
    case COutlinePiece::EKind::eArc:
        return std::make_unique<CPathObjectArc>(
            piece.start, piece.end, EquidistantNear(piece.centre, piece.start, piece.end), piece.isCounterClockwise);
    case COutlinePiece::EKind::eSegment:
        break;
    }
    return std::make_unique<CPathObjectPolyline>(piece.start, piece.end);
}

void Push(CObjects & objects, std::unique_ptr<CPathObjectBase> object)
{
    objects.push_back(object.get());
    object.release();
}

std::unique_ptr<CPolygon> MakeRing(CObjects & objects, COutlinePiece const & piece)
{
    if (!CPolygon::SortPathObjectsForProperPolygonCreation(objects)) Refuse(piece, piece.start, "doesn't close");
    auto ring = std::make_unique<CPolygon>(objects.begin(), objects.end());
    objects.clear(); // now the polygon's
    return ring;
}

/// The pieces grouped into rings by their ends.
class CRings
{
public:
    explicit CRings(std::vector<COutlinePiece> pieces)
    {
        CEnds ends;
        for (COutlinePiece & piece : pieces)
        {
            if (piece.kind != COutlinePiece::EKind::eCircle)
            {
                CEndsOfPiece const both = {ends.Find(piece.start), ends.Find(piece.end)};
                if (both.first == both.second) continue; // shorter than a gap
                m_AtEnd.resize(std::max({m_AtEnd.size(), both.first + 1, both.second + 1}));
                m_AtEnd[both.first].push_back(m_Pieces.size());
                m_AtEnd[both.second].push_back(m_Pieces.size());
                m_Ends.push_back(both);
            }
            else
            {
                m_Ends.emplace_back();
            }
            m_Pieces.push_back(piece);
        }
    }

    svg::CPolygons Make()
    {
        svg::CPolygons rings;
        std::vector<bool> isUsed(m_Pieces.size(), false);
        for (std::size_t first = 0; first < m_Pieces.size(); ++first)
        {
            CObjects objects;
            for (std::vector<std::size_t> open(1, first); !open.empty();)
            {
                std::size_t const i = open.back();
                open.pop_back();
                if (isUsed[i]) continue;
                isUsed[i] = true;
                Push(objects, MakeObject(m_Pieces[i]));
                AddNeighbours(i, open);
            }
            if (!objects.empty()) rings.push_back(MakeRing(objects, m_Pieces[first]));
        }
        return rings;
    }

private:
    using CEndsOfPiece = std::pair<std::size_t, std::size_t>;

    void AddNeighbours(std::size_t i, std::vector<std::size_t> & open) const
    {
        COutlinePiece const & piece = m_Pieces[i];
        if (piece.kind == COutlinePiece::EKind::eCircle) return;
        for (bool const isStart : {true, false})
        {
            auto const & there = m_AtEnd[isStart ? m_Ends[i].first : m_Ends[i].second];
            CPoint const & at = isStart ? piece.start : piece.end;
            if (there.size() < 2) Refuse(piece, at, "is left open");
            if (there.size() > 2) Refuse(piece, at, "branches");
            open.insert(open.end(), there.begin(), there.end());
        }
    }

    std::vector<COutlinePiece> m_Pieces;
    std::vector<CEndsOfPiece> m_Ends;
    std::vector<std::vector<std::size_t>> m_AtEnd; ///< of each end, the pieces that begin or end there
};

} // namespace

svg::CPolygons MakeBoardArea(std::vector<COutlinePiece> pieces)
{
    svg::CPolygons rings = CRings(std::move(pieces)).Make();
    if (rings.empty()) throw CBoardError("the board has no outline: nothing lies on Edge.Cuts");
    SelfDestructingContainer<std::vector<CPolygon*>> all, outlines, holes, extra;
    all.reserve(rings.size());
    for (auto & ring : rings)
    {
        all.push_back(ring.release());
    }
    CPolygon::SplitPolygonsInOutlinesAndHoles(all, outlines, holes);
    svg::CPolygons area;
    for (CPolygon const* hole : holes)
    {
        // larger outlines come first: the last one around the hole is the closest
        for (std::size_t i = outlines.size(); i-- > 0;)
        {
            if (!outlines[i]->PolygonInPolygon(*hole)) continue;
            outlines[i]->AddHole(hole, nullptr, nullptr, extra);
            svg::TakeOver(extra, area);
            break;
        }
    }
    svg::TakeOver(outlines, area);
    return area;
}

} // namespace copper_pour
