#include "polygon/target_holes.h"

#include "numeric/overlap.h"

namespace geometry
{

void CTargetHoles::TakeFrom(CPolygon & target)
{
    OwningPolygonVector holes;
    CPolygonInternals::TakeHoles(target, holes);
    m_HasNested = false;
    Insert(0, holes);
}

void CTargetHoles::GiveBackTo(CPolygon & target)
{
    for (CPolygon*& hole : m_Holes)
    {
        CPolygonInternals::AddUnturnedHole(target, *hole);
        hole = nullptr;
    }
    m_Holes.clear();
    m_Rects.clear();
}

void CTargetHoles::TakeAll(PolygonVector & holes)
{
    AppendPolygons(holes, m_Holes);
    m_Rects.clear();
}

std::vector<std::size_t> CTargetHoles::FindOverlapping(CBoundingRect<double> const & box) const
{
    std::vector<std::size_t> found;
    CBoundingRect<double> const roomy = WithToleranceRoom(box);
    std::size_t const count = m_Rects.size();
    CBoundingRect<double> const* const rects = m_Rects.data();
    for (std::size_t i = 0; i < count; ++i)
    {
        if (OverlapPlainly(roomy, rects[i]) && rects[i].Overlaps(box))
        {
            found.push_back(i);
        }
    }
    return found;
}

void CTargetHoles::PutInFront(PolygonVector & holes)
{
    Insert(0, holes);
}

void CTargetHoles::Replace(std::size_t index, PolygonVector & pieces)
{
    if (pieces.size() == 1)
    {
        std::swap(m_Holes[index], pieces.front());
        m_Rects[index] = m_Holes[index]->GetBoundingRect();
        DeletePolygons(pieces);
        return;
    }
    TakePolygon(m_Holes, index);
    m_Rects.erase(m_Rects.begin() + static_cast<std::ptrdiff_t>(index));
    Insert(index, pieces);
}

void CTargetHoles::DeleteFrom(std::size_t index)
{
    while (m_Holes.size() > index)
    {
        TakePolygon(m_Holes, m_Holes.size() - 1);
        m_Rects.pop_back();
    }
}

void CTargetHoles::Insert(std::size_t index, PolygonVector & holes)
{
    std::vector<CBoundingRect<double>> rects;
    for (CPolygon const* hole : holes)
    {
        rects.push_back(hole->GetBoundingRect());
        m_HasNested = m_HasNested || !hole->GetHoles().empty();
    }
    auto const at = static_cast<std::ptrdiff_t>(index);
    m_Rects.insert(m_Rects.begin() + at, rects.begin(), rects.end());
    m_Holes.insert(m_Holes.begin() + at, holes.begin(), holes.end());
    holes.clear();
}

} // namespace geometry
