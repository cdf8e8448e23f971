// A tile takes its part of the subject, unites what is to be subtracted there and subtracts it.
//
//   |<--------- search rectangle ---------->|   Neighbouring work rectangles overlap, so that the closing merge joins
//   |    |<------ work rectangle ------>|   |   areas that overlap rather than touch. What is subtracted reaches
//   |    |   |<-- cut rectangle -->|    |   |   beyond the work rectangle: its edges stay clear of that one's.
#include "polygon/subtract_tile.h"

#include "polygon/merge.h"
#include "polygon/outline_builder.h"

namespace geometry
{

namespace
{

constexpr double CutMargin = 0.1;    // around the cell
constexpr double WorkMargin = 0.2;   // around the cut rectangle
constexpr double SearchMargin = 2.0; // around the work rectangle

std::unique_ptr<CPolygon> MakeRectangle(CBoundingRect<double> const & rect)
{
    OwnedPathObjects objects;
    objects.push_back(MakeRectangleOutline(rect));
    return MakePolygonFrom(std::move(objects));
}

} // namespace

CSubtractTile::CSubtractTile(CBoundingRect<double> cell) : m_Core(cell)
{
    m_Core.minX += CutMargin + WorkMargin;
    m_Core.minY += CutMargin + WorkMargin;
    m_Core.maxX -= CutMargin + WorkMargin;
    m_Core.maxY -= CutMargin + WorkMargin;
    cell.Inflate(CutMargin);
    m_CutRect = MakeRectangle(cell);
    cell.Inflate(WorkMargin);
    m_WorkRect = MakeRectangle(cell);
    cell.Inflate(SearchMargin);
    m_SearchRect = MakeRectangle(cell);
}

void CSubtractTile::Process(CPolygon const & subject, CPolygon::PolygonHash const & cutters, Clipper & clipper)
{
    if (!Subtract(subject, cutters, clipper))
    {
        // the area stays with the subject, as if nothing was to subtract here
        m_CutRect.reset();
        m_WorkRect.reset();
        m_SearchRect.reset();
        DeletePolygons(m_Pieces);
    }
    SplitOffIslands(m_Pieces, m_Islands);
    for (std::size_t i = m_Islands.size(); i-- > 0;)
    {
        if (!m_Core.ContainsRect(m_Islands[i]->GetBoundingRect()))
        {
            MovePolygon(m_Islands, i, m_BorderIslands);
        }
    }
}

bool CSubtractTile::Subtract(CPolygon const & subject, CPolygon::PolygonHash const & cutters, Clipper & clipper)
{
    std::vector<CPolygon*> near;
    cutters.GetObjectsInRect(m_SearchRect->GetBoundingRect(), near);
    if (near.empty())
    {
        return false;
    }
    subject.IntersectPolygon(m_Pieces, *m_WorkRect);
    if (m_Pieces.empty())
    {
        return false;
    }
    // holes are subtracted like everything else
    OwningPolygonVector cut;
    for (CPolygon* piece : m_Pieces)
    {
        CPolygonInternals::TakeHoles(*piece, cut);
    }
    for (CPolygon const* cutter : near)
    {
        OwningPolygonVector parts;
        m_SearchRect->IntersectPolygon(parts, *cutter);
        cut.insert(cut.begin(), parts.begin(), parts.end());
        parts.clear();
    }
    if (cut.size() < 2)
    {
        return !cut.empty() &&
               SubtractPolygonRange(m_Pieces, PolygonRange(cut.begin(), cut.end()), clipper) != Clipper::eClipFailed;
    }
    OwningPolygonVector merged;
    EClipResult const r = MergePolygonRange(*cut[0], merged, PolygonRange(cut.begin() + 1, cut.end()), clipper);
    return r != Clipper::eClipFailed &&
           SubtractPolygonRange(m_Pieces, PolygonRange(merged.begin(), merged.end()), clipper) != Clipper::eClipFailed;
}

} // namespace geometry
