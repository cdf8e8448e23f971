// A tile takes its part of the subject, unites what is to be subtracted there and subtracts it.
//
//   |<--------- search rectangle ---------->|   Neighbouring work rectangles overlap, so that the closing merge joins
//   |    |<------ work rectangle ------>|   |   areas that overlap rather than touch. What is subtracted reaches
//   |    |   |<-- cut rectangle -->|    |   |   beyond the work rectangle: its edges stay clear of that one's.
#include "polygon/subtract_tile.h"

#include <algorithm>
#include <cmath>

#include "arc/as_arc.h"
#include "arc/probe_abscissas.h"
#include "clip/clear_samples.h"
#include "numeric/chain_index.h"
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

/// What the clipper, asked for the intersection, would find out by three steps: no object of the polygon comes near the
/// rectangle, and neither of the two places that it looks at on the lower and the left side lies in the polygon. That
/// on the left side never does.
bool LiesWithin(CPolygon const & polygon, CPolygon const & rectangle)
{
    CBoundingRect<double> const & outer = rectangle.GetBoundingRect();
    CBoundingRect<double> const & inner = polygon.GetBoundingRect();
    double const room = 1.0 + 1e-6 * ((outer.maxX - outer.minX) + (outer.maxY - outer.minY));
    double const largest =
        std::max({std::fabs(outer.minX), std::fabs(outer.minY), std::fabs(outer.maxX), std::fabs(outer.maxY)});
    auto const & outline = polygon.GetOutline();
    bool const isApart = inner.minX - outer.minX > room && inner.minY - outer.minY > room &&
                         outer.maxX - inner.maxX > room && outer.maxY - inner.maxY > room && largest < 1e12;
    auto const isOrdinary = [](CPathObjectBase const* object)
    {
        CPathObjectArc const* const arc = AsArc(*object);
        return object->IsValid() && object->GetUserInfo() == nullptr && (arc == nullptr || IsSteadyArc(*arc));
    };
    return isApart && polygon.GetHoles().empty() && std::all_of(outline.begin(), outline.end(), isOrdinary) &&
           !CPolygonInternals::IsProbeCountOdd(polygon,
                                               SampleOfSegment({outer.minX, outer.minY}, {outer.maxX, outer.minY}));
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

void CSubtractTile::Process(CPolygon const & subject, TCutters const & cutters, Clipper & clipper)
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

/// No other tile finds it.
bool CSubtractTile::IsAloneWith(CPolygon const & cutter) const
{
    constexpr double largest = 1e9;             // the hash knows coordinates of 32 bits
    constexpr double room = SearchMargin + 4.0; // in whole numbers
    CBoundingRect<double> const & rect = cutter.GetBoundingRect();
    return rect.minX - m_Core.minX > room && rect.minY - m_Core.minY > room && m_Core.maxX - rect.maxX > room &&
           m_Core.maxY - rect.maxY > room && m_Core.minX > -largest && m_Core.minY > -largest &&
           m_Core.maxX < largest && m_Core.maxY < largest;
}

bool CSubtractTile::Subtract(CPolygon const & subject, TCutters const & cutters, Clipper & clipper)
{
    std::vector<CPolygon*> near;
    cutters.hash.GetObjectsInRect(m_SearchRect->GetBoundingRect(), near);
    if (near.empty())
    {
        return false;
    }
    if (CPolygonInternals::HasFacts(subject))
    {
        IntersectWithSolid(subject, m_Pieces, *m_WorkRect, clipper);
    }
    else
    {
        subject.IntersectPolygon(m_Pieces, *m_WorkRect);
    }
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
    for (CPolygon* cutter : near)
    {
        OwningPolygonVector parts;
        if (IsIndexUsed(true) && LiesWithin(*cutter, *m_SearchRect))
        {
            bool const isTaken = cutters.areUsedUp && IsAloneWith(*cutter);
            PushPolygon(parts, isTaken ? CPolygonInternals::TakeOutline(*cutter) : std::make_unique<CPolygon>(*cutter));
        }
        else if (IsIndexUsed(true) && cutter->GetHoles().empty())
        {
            IntersectWithSolid(*m_SearchRect, parts, *cutter, clipper);
        }
        else
        {
            m_SearchRect->IntersectPolygon(parts, *cutter);
        }
        cut.insert(cut.begin(), parts.begin(), parts.end());
        parts.clear();
    }
    if (cut.size() < 2)
    {
        return !cut.empty() &&
               SubtractPolygonRange(m_Pieces, PolygonRange(cut.begin(), cut.end()), clipper) != Clipper::eClipFailed;
    }
    OwningPolygonVector merged;
    EClipResult const r = MergeAll(cut, merged, clipper);
    return r != Clipper::eClipFailed &&
           SubtractPolygonRange(m_Pieces, PolygonRange(merged.begin(), merged.end()), clipper) != Clipper::eClipFailed;
}

} // namespace geometry
