// Adding a hole: it must stay disjoint from the holes that are there. Holes that it touches are united with it, and
// what the union encloses without covering it is solid area again, which comes back as polygons of its own.
#include <set>

#include "polygon/area.h"
#include "polygon/booleans.h"

namespace geometry
{

std::unique_ptr<CPolygon> SplitResultInOutlineAndRest(PolygonVector & rest, PolygonVector & input)
{
    std::unique_ptr<CPolygon> outer;
    rest.reserve(rest.size() + input.size());
    for (CPolygon*& element : input)
    {
        std::unique_ptr<CPolygon> polygon(element);
        element = nullptr;
        if (polygon->GetOutline().empty())
        {
            continue;
        }
        if (outer == nullptr || polygon->PolygonInPolygon(*outer))
        {
            outer.swap(polygon);
        }
        if (polygon != nullptr)
        {
            rest.push_back(polygon.release());
        }
    }
    input.clear();
    return outer;
}

namespace
{

/// Subtracts `hole` from every polygon of `polygons`.
void CutOut(PolygonVector & polygons, CPolygon const & hole)
{
    for (std::size_t i = polygons.size(); i-- > 0;)
    {
        OwningPolygonVector pieces;
        polygons[i]->SubtractPolygon(pieces, hole);
        TakePolygon(polygons, i);
        AppendPolygons(polygons, pieces);
    }
}

/// One hole on its way into the holes of a polygon.
class CHoleAdder
{
public:
    CHoleAdder(CPolygon::PolygonHash & holes, CPolygon & hole, Clipper & clipper, PolygonVector & extra)
        : m_Holes(holes), m_Hole(hole), m_Clipper(clipper), m_Extra(extra)
    {
    }

    void UniteWithTouchedHoles();
    void CutHolesOutOfExtra();
    /// Parts of the grown hole that only touch it.
    PolygonVector & GetApart() { return m_Apart; }

private:
    void UniteWith(CPolygon* present);
    void DeleteHole(CPolygon* present);

    CPolygon::PolygonHash & m_Holes;
    CPolygon & m_Hole; ///< the new hole as it grows; emptied when a present hole covers it
    Clipper & m_Clipper;
    PolygonVector & m_Extra; ///< solid area that the new hole encloses
    OwningPolygonVector m_Apart;
};

void CHoleAdder::UniteWithTouchedHoles()
{
    std::vector<CPolygon*> near;
    m_Holes.GetObjectsInRect(m_Hole.GetBoundingRect(), near);
    for (CPolygon* present : near)
    {
        if (m_Hole.GetOutline().empty())
        {
            return;
        }
        EClipResult r = Clipper::eClipSeparate;
        if (present->GetBoundingRect().Overlaps(m_Hole.GetBoundingRect()))
        {
            m_Clipper.SetOperation(Clipper::eClipUnion);
            r = m_Clipper.RunClip(m_Hole, *present);
        }
        if (r == Clipper::eClipResultReady)
        {
            UniteWith(present);
        }
        else if (r == Clipper::eClipSubjectInsideClip)
        {
            CutOut(m_Extra, *present);
            DeleteHole(present);
        }
        else if (r == Clipper::eClipClipInsideSubject)
        {
            m_Hole.clear(true);
        }
    }
}

/// The outlines cross: the union, as the clipper has it, takes the place of both.
void CHoleAdder::UniteWith(CPolygon* present)
{
    OwningPolygonVector merged;
    m_Clipper.TakeResultPolygons(merged);
    double area = AreaOf(*present);
    if (merged.empty() || IsPointContact(merged, m_Hole, *present, area))
    {
        return;
    }
    CutOut(m_Extra, *present);
    OwningPolygonVector rest;
    std::unique_ptr<CPolygon> outer;
    if (merged.size() == 1)
    {
        outer = TakePolygon(merged, 0);
    }
    else
    {
        outer = SplitResultInOutlineAndRest(rest, merged);
    }
    if (outer != nullptr)
    {
        auto const & objects = outer->GetOutline();
        CPolygonInternals::InitializeWithClones(m_Hole, {objects.begin(), objects.end()});
        DeleteHole(present);
        for (CPolygon*& ring : rest)
        {
            // one that stands apart is a part of the hole that touches the rest of it
            (Encloses(m_Hole, *ring) ? m_Extra : m_Apart).push_back(ring);
            ring = nullptr;
        }
    }
}

/// The solid area may contain holes that the new one doesn't touch: they are cut out of it, and go if the new hole
/// surrounds them.
void CHoleAdder::CutHolesOutOfExtra()
{
    std::set<CPolygon*> touched; // the order of addresses decides nothing: each is judged by itself
    for (std::size_t i = m_Extra.size(); i-- > 0;)
    {
        std::vector<CPolygon*> near;
        m_Holes.GetObjectsInRect(m_Extra[i]->GetBoundingRect(), near);
        if (!near.empty())
        {
            OwningPolygonVector pieces;
            SubtractPolygons(*m_Extra[i], pieces, PolygonRange(near.begin(), near.end()));
            TakePolygon(m_Extra, i);
            AppendPolygons(m_Extra, pieces);
            touched.insert(near.begin(), near.end());
        }
    }
    for (CPolygon* present : touched)
    {
        if (m_Hole.PolygonInPolygon(*present))
        {
            DeleteHole(present);
        }
    }
}

void CHoleAdder::DeleteHole(CPolygon* present)
{
    delete m_Holes.Remove(present);
    m_Holes.RecalculateCellRange();
}

} // namespace

void CPolygon::AddHole(CPolygon const* const hole, CPolygonClipBase<double>* clipper, CPolygon const* const clipped,
                       std::vector<CPolygon*> & extra)
{
    extra.clear();
    if (hole == nullptr)
    {
        return;
    }
    auto copy = std::make_unique<CPolygon>();
    copy->InitializeWithClones({hole->m_Outline.begin(), hole->m_Outline.end()});
    if (clipped == nullptr || clipped->m_BoundingRect.Overlaps(hole->m_BoundingRect))
    {
        std::unique_ptr<Clipper> const ownClipper(clipper == nullptr ? CreateClipper() : nullptr);
        CHoleAdder adder(m_Holes, *copy, clipper == nullptr ? *ownClipper : *clipper, extra);
        adder.UniteWithTouchedHoles();
        if (!copy->m_Outline.empty() && !extra.empty())
        {
            adder.CutHolesOutOfExtra();
        }
        for (CPolygon*& part : adder.GetApart())
        {
            CPolygonInternals::AddAsHole(*this, *part);
            part = nullptr;
        }
    }
    if (!copy->m_Outline.empty())
    {
        SetCorrectHoleWinding(*copy);
        m_Holes.AddNew(copy.get());
        copy.release();
    }
}

} // namespace geometry
