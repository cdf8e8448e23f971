// Small helpers of the polygon operations, and the one door through which they reach what a polygon keeps private.
#pragma once

#include <algorithm>
#include <memory>
#include <vector>

#include <geometry/numeric/self_destructing_container.h>
#include <geometry/polygon/polygon.h>

namespace geometry
{

using PolygonVector = std::vector<CPolygon*>;
/// Owns what it holds: the working vectors of the operations, so that an exception leaks nothing.
using OwningPolygonVector = SelfDestructingContainer<PolygonVector>;
/// The polygons that an operation on many takes; not owned.
using PolygonRange = std::vector<CPolygon const*>;

/// Deletes every non-null element and empties the vector, keeping its capacity.
inline void DeletePolygons(PolygonVector & polygons)
{
    for (CPolygon* polygon : polygons)
    {
        delete polygon;
    }
    polygons.clear();
}

/// Hands `polygon` over to the end of `polygons`.
inline void PushPolygon(PolygonVector & polygons, std::unique_ptr<CPolygon> polygon)
{
    polygons.push_back(polygon.get());
    polygon.release();
}

/// Moves all of `source` to the end of `target`; `source` owns nothing afterwards.
inline void AppendPolygons(PolygonVector & target, PolygonVector & source)
{
    target.insert(target.end(), source.begin(), source.end());
    source.clear();
}

/// Takes the polygon at `index` out of the vector, which closes up; the order of the rest stays.
inline std::unique_ptr<CPolygon> TakePolygon(PolygonVector & polygons, std::size_t index)
{
    std::unique_ptr<CPolygon> polygon(polygons[index]);
    polygons.erase(polygons.begin() + static_cast<std::ptrdiff_t>(index));
    return polygon;
}

/// Moves the polygon at `index` of `source` to the end of `target`, which may be `source` itself.
inline void MovePolygon(PolygonVector & source, std::size_t index, PolygonVector & target)
{
    CPolygon* const polygon = source[index];
    target.push_back(polygon);
    source.erase(source.begin() + static_cast<std::ptrdiff_t>(index));
}

/// An object of the outline, or of a hole, has a user info.
bool HasUserInfo(CPolygon const & polygon);

/// Finds polygons by rectangle and owns none of them.
struct TBorrowedPolygons
{
    TBorrowedPolygons() = default;
    TBorrowedPolygons(TBorrowedPolygons const &) = delete;
    TBorrowedPolygons & operator=(TBorrowedPolygons const &) = delete;
    ~TBorrowedPolygons() { hash.Clear(); }

    CPolygon::PolygonHash hash;
};

/// Access for the operations of this library that work on polygons from outside the class.
struct CPolygonInternals
{
    static CPolygon::EPolygonWinding GetWindingDirection(CPolygon const & polygon)
    {
        return polygon.GetWindingDirection();
    }
    static void InitializeWithClones(CPolygon & polygon, std::vector<CPathObjectBase const*> const & objects)
    {
        polygon.InitializeWithClones(objects);
    }
    static void InitializeWithPolygon(CPolygon & polygon, CPolygon const & other)
    {
        polygon.InitializeWithPolygon(other);
    }
    /// For those who change the shape of objects in an outline.
    static void ClearOutlineCache(CPolygon & polygon)
    {
        polygon.ClearOutlineCache();
        polygon.m_Facts.reset();
    }
    /// For results that leave the library: the facts have served.
    static void ForgetFacts(PolygonVector const & polygons)
    {
        for (CPolygon* polygon : polygons)
        {
            polygon->m_Facts.reset();
        }
    }
    static COutlineIndex const* FindOutlineIndex(CPolygon const & polygon, bool isWorthIt)
    {
        return polygon.FindOutlineIndex(isWorthIt);
    }
    /// Gives `polygon` the outline of `source`: clones, or, where there is no user info to be cloned, the objects
    /// themselves. The holes stay, and may wind along it.
    static void TakeOverOutline(CPolygon & polygon, CPolygon & source)
    {
        auto const & objects = source.m_Outline;
        bool const hasUserInfo =
            source.m_Facts == nullptr && // a clip that went by them left none in
            std::any_of(objects.begin(), objects.end(),
                        [](CPathObjectBase const* object) { return object->GetUserInfo() != nullptr; });
        CPolygon clones;
        if (hasUserInfo)
        {
            clones.InitializeWithClones({objects.begin(), objects.end()});
        }
        CPolygon & fresh = hasUserInfo ? clones : source;
        polygon.ClearOutlineCache();
        fresh.ClearOutlineCache();
        polygon.m_Outline.swap(fresh.m_Outline);
        polygon.m_Facts.swap(fresh.m_Facts);
        polygon.m_BoundingRect = fresh.m_BoundingRect;
        polygon.m_WindingDirection = fresh.m_WindingDirection;
        fresh.m_WindingDirection = CPolygon::eWindingUnknown;
    }
    /// A polygon without holes that is what `source` was; that keeps its rectangle, which others may be looking at.
    static std::unique_ptr<CPolygon> TakeOutline(CPolygon & source)
    {
        auto polygon = std::make_unique<CPolygon>();
        source.ClearOutlineCache();
        AdoptOutline(*polygon, std::move(source.m_Outline), source.m_BoundingRect, source.m_WindingDirection, nullptr);
        source.m_Outline.clear();
        return polygon;
    }
    /// Turns a hole of `polygon` so that it winds against `winding`, that of an outline.
    static void TurnHole(CPolygon & hole, CPolygon::EPolygonWinding winding)
    {
        CPolygon::EPolygonWinding const wrong =
            winding == CPolygon::eWindingNegative ? CPolygon::eWindingNegative : CPolygon::eWindingPositive;
        if (hole.GetWindingDirection() == wrong)
        {
            hole.ReverseWindingDirection();
        }
    }
    /// Makes `polygon` what `source` is: a copy, or, where there is no user info to be cloned, `source` itself.
    static void TakeOverPolygon(CPolygon & polygon, CPolygon & source)
    {
        bool const isFolded = source.m_Facts != nullptr; // which leaves no user info in an outline
        auto const & holes = source.GetHoles();
        if (isFolded ? std::any_of(holes.begin(), holes.end(), [](CPolygon const* hole) { return HasUserInfo(*hole); })
                     : HasUserInfo(source))
        {
            polygon.InitializeWithPolygon(source);
            return;
        }
        polygon.DeleteHoles();
        TakeOverOutline(polygon, source);
        for (CPolygon* hole : holes)
        {
            polygon.m_Holes.AddNew(hole);
        }
        source.m_Holes.Clear();
    }
    static bool SubtractPolygonsCore(CPolygon const & polygon, PolygonVector & result, PolygonRange const & range,
                                     unsigned int workers)
    {
        return polygon.SubtractPolygonsCore(result, range, workers);
    }
    static void Reverse(CPolygon & polygon) { polygon.ReverseWindingDirection(); }
    static CPolygon::PathObjects & OutlineOf(CPolygon & polygon) { return polygon.m_Outline; }
    static void ClearOutline(CPolygon & polygon) { polygon.ClearOutline(); }
    /// Gives an empty polygon a closed outline with all that is known of it.
    static void AdoptOutline(CPolygon & polygon, CPolygon::PathObjects objects, CBoundingRect<double> const & rect,
                             CPolygon::EPolygonWinding winding, std::shared_ptr<COutlineFacts> facts)
    {
        polygon.m_Outline.swap(objects);
        polygon.m_BoundingRect = rect;
        polygon.m_WindingDirection = winding;
        polygon.m_Facts = std::move(facts);
    }
    /// What is known of the outline, found out if need be. There must be objects.
    static COutlineFacts const & CompleteFacts(CPolygon & polygon);
    static bool HasFacts(CPolygon const & polygon) { return polygon.m_Facts != nullptr; }
    /// The same, where it was found out before.
    static COutlineFacts & FactsOf(CPolygon & polygon) { return *polygon.m_Facts; }
    static COutlineFacts const & FactsOf(CPolygon const & polygon) { return *polygon.m_Facts; }
    /// The same, which then aren't kept with the polygon any more; null if there are none.
    static std::shared_ptr<COutlineFacts> TakeFacts(CPolygon & polygon) { return std::move(polygon.m_Facts); }
    static CPolygon::PolygonHash & HolesOf(CPolygon & polygon) { return polygon.m_Holes; }
    static bool IsProbeCountOdd(CPolygon const & polygon, TPoint<double> const & point)
    {
        return polygon.IsProbeCountOdd(point);
    }
    static void DeleteHoles(CPolygon & polygon) { polygon.DeleteHoles(); }
    /// Moves the holes to the end of `holes`.
    static void TakeHoles(CPolygon & polygon, PolygonVector & holes)
    {
        holes.insert(holes.end(), polygon.GetHoles().begin(), polygon.GetHoles().end());
        polygon.m_Holes.Clear();
    }
    /// Turns `hole` against the outline of `polygon`, which takes it over; if an exception leaves, it doesn't.
    static void AddAsHole(CPolygon & polygon, CPolygon & hole)
    {
        polygon.SetCorrectHoleWinding(hole);
        AddUnturnedHole(polygon, hole);
    }
    static void AddUnturnedHole(CPolygon & polygon, CPolygon & hole) { polygon.m_Holes.AddNew(&hole); }
    static bool HandleSubtractResultPolygons(CPolygon const & polygon, PolygonVector & result,
                                             PolygonVector const & pieces, CPolygon const & clip,
                                             CPolygonClipBase<double>* clipper)
    {
        return polygon.HandleSubtractResultPolygons(result, pieces, clip, clipper);
    }
};

} // namespace geometry
