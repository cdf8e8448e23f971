// The clipper knows outlines only: this layer turns its answers into polygons with holes. A polygon to take away may
// cross a piece (the clipper's outlines replace it, and its holes are carried over), lie in it (a new hole), or cover
// it; what survives inside the holes of the polygon taken away comes back as pieces of its own.
#include "polygon/booleans.h"

#include <algorithm>

#include <geometry/thread/thread.h>

#include "numeric/chain_index.h"
#include "polygon/area.h"
#include "polygon/folding.h"
#include "polygon/outline_facts.h"
#include "polygon/subtract_tiles.h"
#include "proof/inside.h"
#include "proof/proved.h"

namespace geometry
{

namespace
{

/// Calls `visit(i)` for each index from the last down to 0 until it answers false. If the vector shrank below the
/// index, the walk goes on from its new last element; what is appended meanwhile isn't visited.
template <typename Visit>
bool ForEachIndexDown(PolygonVector const & polygons, Visit visit)
{
    for (std::size_t i = polygons.size(); i > 0 && !polygons.empty();)
    {
        i = std::min(i, polygons.size()) - 1;
        if (!visit(i))
        {
            return false;
        }
    }
    return true;
}

EClipResult RunClipIfOverlapping(Clipper & clipper, Clipper::EClipOperation operation, CPolygon const & clip,
                                 CPolygon const & subject)
{
    if (!subject.GetBoundingRect().Overlaps(clip.GetBoundingRect()))
    {
        return Clipper::eClipSeparate;
    }
    clipper.SetOperation(operation);
    return clipper.RunClip(clip, subject);
}

/// The same for a polygon that its pieces replace.
EClipResult RunLastClipIfOverlapping(Clipper & clipper, CPolygon const & clip, CPolygon & subject)
{
    if (!clip.GetHoles().empty() || !subject.GetBoundingRect().Overlaps(clip.GetBoundingRect()))
    {
        return RunClipIfOverlapping(clipper, Clipper::eClipDifference, clip, subject);
    }
    clipper.SetOperation(Clipper::eClipDifference);
    return RunFoldedClip(clipper, clip, subject);
}

/// Moves `pieces`, outlines cut from `polygon` by `clip`, to `out`, with the holes of `polygon` carried over.
bool CarryHolesOver(CPolygon const & polygon, PolygonVector & out, OwningPolygonVector & pieces, CPolygon const & clip,
                    Clipper & clipper)
{
    PolygonVector const handedOver(pieces.begin(), pieces.end());
    out.reserve(handedOver.size());
    pieces.clear(); // `out` owns them from its first step on
    return CPolygonInternals::HandleSubtractResultPolygons(polygon, out, handedOver, clip, &clipper);
}

/// Replaces `work[index]` by `pieces`, outlines cut from it by `clip`, to which its holes are carried over.
bool ReplaceByPieces(PolygonVector & work, std::size_t index, OwningPolygonVector & pieces, CPolygon const & clip,
                     Clipper & clipper)
{
    OwningPolygonVector out;
    if (!CarryHolesOver(*work[index], out, pieces, clip, clipper))
    {
        return false;
    }
    TakePolygon(work, index);
    AppendPolygons(work, out);
    return true;
}

/// What of `polygon` lies within the holes of `clip` survives: it goes to the end of `work`.
void AppendPartsInHoles(PolygonVector & work, CPolygon const & polygon, CPolygon const & clip)
{
    for (CPolygon const* hole : clip.GetHoles())
    {
        OwningPolygonVector parts;
        std::unique_ptr<Clipper> const clipper(CreateClipper());
        bool const isSolid = IsIndexUsed(true) && hole->GetHoles().empty() && !HasUserInfo(polygon);
        if (isSolid ? IntersectWithSolid(polygon, parts, *hole, *clipper) : polygon.IntersectPolygon(parts, *hole))
        {
            AppendPolygons(work, parts);
        }
    }
}

/// Subtracts `clip` from `work[index]`. `code` is what has been achieved so far; the result what has been then.
EClipResult SubtractFromPolygon(PolygonVector & work, std::size_t index, CPolygon const & clip, Clipper & clipper,
                                EClipResult code)
{
    CPolygon & polygon = *work[index];
    EClipResult const r = RunLastClipIfOverlapping(clipper, clip, polygon);
    if (r == Clipper::eClipResultReady || r == Clipper::eClipSubjectInsideClip || r == Clipper::eClipClipInsideSubject)
    {
        AppendPartsInHoles(work, polygon, clip);
    }
    switch (r)
    {
    case Clipper::eClipResultReady:
    {
        OwningPolygonVector pieces;
        clipper.TakeResultPolygons(pieces);
        NestRings(pieces);
        return ReplaceByPieces(work, index, pieces, clip, clipper) ? Clipper::eClipResultReady : Clipper::eClipFailed;
    }
    case Clipper::eClipSubjectInsideClip:
        TakePolygon(work, index);
        break;
    case Clipper::eClipClipInsideSubject:
    {
        OwningPolygonVector extra;
        polygon.AddHole(&clip, &clipper, nullptr, extra);
        AppendPolygons(work, extra);
        break;
    }
    case Clipper::eClipFailed:
        return Clipper::eClipFailed;
    case Clipper::eClipSeparate:
    case Clipper::eClipRetry:
    case Clipper::eClipNothingToDo:
        break; // the polygon stays as it is
    }
    return code == Clipper::eClipFailed ? r : code;
}

} // namespace

EClipResult SubtractPolygonRange(PolygonVector & work, PolygonRange const & range, Clipper & clipper)
{
    if (range.empty())
    {
        return Clipper::eClipNothingToDo;
    }
    EClipResult code = Clipper::eClipFailed; // nothing achieved so far
    for (CPolygon const* clip : range)
    {
        if (this_thread::cancellation_requested())
        {
            break;
        }
        ForEachIndexDown(work,
                         [&](std::size_t i)
                         {
                             if (this_thread::cancellation_requested())
                             {
                                 return false;
                             }
                             code = SubtractFromPolygon(work, i, *clip, clipper, code);
                             return code != Clipper::eClipFailed;
                         });
        if (code == Clipper::eClipFailed)
        {
            break;
        }
    }
    if (code == Clipper::eClipFailed)
    {
        DeletePolygons(work);
    }
    return code;
}

namespace
{

/// Takes `hole` away from every polygon of `work`; pieces move to the end, a failed one is dropped.
void SubtractHoleFromAll(PolygonVector & work, CPolygon const* hole, Clipper & clipper)
{
    PolygonRange const range(1, hole);
    ForEachIndexDown(work,
                     [&](std::size_t j)
                     {
                         OwningPolygonVector pieces;
                         PushPolygon(pieces, TakePolygon(work, j));
                         if (SubtractPolygonRange(pieces, range, clipper) != Clipper::eClipFailed)
                         {
                             AppendPolygons(work, pieces);
                         }
                         return true;
                     });
}

/// Cuts `work[index]` down to its part in the outline of `clip`; codes as in `SubtractFromPolygon`.
EClipResult IntersectWithOutline(PolygonVector & work, std::size_t index, CPolygon const & clip, Clipper & clipper,
                                 EClipResult code)
{
    EClipResult const r = RunClipIfOverlapping(clipper, Clipper::eClipIntersection, clip, *work[index]);
    EClipResult const firstOf = code == Clipper::eClipFailed ? r : code;
    switch (r)
    {
    case Clipper::eClipResultReady:
    {
        OwningPolygonVector pieces;
        clipper.TakeResultPolygons(pieces);
        NestRings(pieces);
        return ReplaceByPieces(work, index, pieces, clip, clipper) ? Clipper::eClipResultReady : Clipper::eClipFailed;
    }
    case Clipper::eClipClipInsideSubject:
    {
        OwningPolygonVector pieces;
        PushPolygon(pieces, std::make_unique<CPolygon>(clip));
        return ReplaceByPieces(work, index, pieces, clip, clipper) ? firstOf : Clipper::eClipFailed;
    }
    case Clipper::eClipSeparate:
    case Clipper::eClipRetry:
        TakePolygon(work, index);
        return firstOf;
    case Clipper::eClipFailed:
        return Clipper::eClipFailed;
    case Clipper::eClipSubjectInsideClip:
    case Clipper::eClipNothingToDo:
        break; // the polygon stays
    }
    return firstOf;
}

} // namespace

EClipResult DoIntersectCore(PolygonVector & work, PolygonRange const & range, Clipper & clipper)
{
    if (range.empty())
    {
        return Clipper::eClipNothingToDo;
    }
    EClipResult code = Clipper::eClipFailed; // nothing achieved so far
    for (CPolygon const* clip : range)
    {
        bool const isDone = ForEachIndexDown(work,
                                             [&](std::size_t i)
                                             {
                                                 code = IntersectWithOutline(work, i, *clip, clipper, code);
                                                 if (code == Clipper::eClipFailed)
                                                 {
                                                     return false;
                                                 }
                                                 for (CPolygon const* hole : clip->GetHoles())
                                                 {
                                                     SubtractHoleFromAll(work, hole, clipper);
                                                 }
                                                 return true;
                                             });
        if (!isDone)
        {
            DeletePolygons(work);
            return Clipper::eClipFailed;
        }
    }
    return code;
}

namespace
{

/// So much of the polygon is near the clip that folding the rest of it gains little.
bool IsMostlyCovered(CPolygon const & polygon, CPolygon const & clip)
{
    CBoundingRect<double> const & r = polygon.GetBoundingRect();
    CBoundingRect<double> const & c = clip.GetBoundingRect();
    double const width = std::min(r.maxX, c.maxX) - std::max(r.minX, c.minX);
    double const height = std::min(r.maxY, c.maxY) - std::max(r.minY, c.minY);
    return width > 0.0 && height > 0.0 && width * height > 0.5 * (r.maxX - r.minX) * (r.maxY - r.minY);
}

/// What `SubtractPolygonRange` makes of a copy of `polygon`, of which only what stays is copied here. The clip has no
/// holes, and the polygon no user info.
bool SubtractSolid(CPolygon const & polygon, PolygonVector & result, CPolygon const & clip, Clipper & clipper)
{
    if (this_thread::cancellation_requested())
    {
        return false;
    }
    OwningPolygonVector pieces;
    switch (RunClipIfOverlapping(clipper, Clipper::eClipDifference, clip, polygon))
    {
    case Clipper::eClipResultReady:
        clipper.TakeResultPolygons(pieces);
        NestRings(pieces);
        return CarryHolesOver(polygon, result, pieces, clip, clipper);
    case Clipper::eClipSubjectInsideClip:
        return true;
    case Clipper::eClipClipInsideSubject:
        PushPolygon(result, std::make_unique<CPolygon>(polygon));
        result.front()->AddHole(&clip, &clipper, nullptr, pieces);
        AppendPolygons(result, pieces);
        return true;
    case Clipper::eClipFailed:
        return false;
    case Clipper::eClipSeparate:
    case Clipper::eClipRetry:
    case Clipper::eClipNothingToDo:
        break;
    }
    PushPolygon(result, std::make_unique<CPolygon>(polygon));
    return true;
}

} // namespace

// --- front ends ------------------------------------------------------------------------------------------------

namespace
{

/// `run` of two polygons, proved.
template <typename Run>
bool RunProvedPair(CReport::EOperation operation, CPolygon const & polygon, CPolygon const & other,
                   PolygonVector & result, CRegionJudge::Membership isMember, Run const & run)
{
    bool const isDone = RunProved({operation, {&polygon}, {&other}, isMember}, result,
                                  [&](PolygonRange const & first, PolygonRange const & second, PolygonVector & out)
                                  { return run(*first.front(), *second.front(), out); });
    CPolygonInternals::ForgetFacts(result);
    return isDone;
}

bool SubtractOne(CPolygon const & polygon, CPolygon const & other, PolygonVector & result)
{
    DeletePolygons(result);
    std::unique_ptr<Clipper> const clipper(CreateClipper());
    if (other.GetHoles().empty() && IsIndexUsed(true) && IsMostlyCovered(polygon, other) && !HasUserInfo(polygon))
    {
        return SubtractSolid(polygon, result, other, *clipper);
    }
    PushPolygon(result, std::make_unique<CPolygon>(polygon));
    return SubtractPolygonRange(result, PolygonRange(1, &other), *clipper) != Clipper::eClipFailed;
}

} // namespace

bool CPolygon::SubtractPolygon(std::vector<CPolygon*> & result, CPolygon const & other) const
{
    return RunProvedPair(
        CReport::eOperationSubtract, *this, other, result,
        [](std::size_t first, std::size_t second) { return first > 0 && second == 0; }, SubtractOne);
}

bool CPolygon::IntersectPolygon(std::vector<CPolygon*> & result, CPolygon const & other) const
{
    return RunProvedPair(
        CReport::eOperationIntersect, *this, other, result,
        [](std::size_t first, std::size_t second) { return first > 0 && second > 0; },
        [](CPolygon const & a, CPolygon const & b, PolygonVector & out)
        { return IntersectPolygonRange(a, out, PolygonRange(1, &b)); });
}

bool CPolygon::XORPolygon(std::vector<CPolygon*> & result, CPolygon const & other) const
{
    return RunProvedPair(
        CReport::eOperationXOR, *this, other, result,
        [](std::size_t first, std::size_t second) { return first != second; },
        [](CPolygon const & a, CPolygon const & b, PolygonVector & out)
        { return XORPolygonRange(a, out, PolygonRange(1, &b)); });
}

bool IntersectPolygonRange(CPolygon const & polygon, PolygonVector & result, PolygonRange const & range)
{
    std::unique_ptr<Clipper> const clipper(CreateClipper());
    bool const isSingle = range.size() == 1 && range.front()->GetHoles().empty();
    if (isSingle && IsIndexUsed(true) && !HasUserInfo(polygon) && !CPolygonInternals::HasFacts(polygon))
    {
        return IntersectWithSolid(polygon, result, *range.front(), *clipper); // takes no copy
    }
    DeletePolygons(result);
    PushPolygon(result, std::make_unique<CPolygon>(polygon));
    return DoIntersectCore(result, range, *clipper) != Clipper::eClipFailed;
}

bool IntersectWithSolid(CPolygon const & polygon, PolygonVector & result, CPolygon const & solid, Clipper & clipper)
{
    DeletePolygons(result);
    EClipResult const r = polygon.GetBoundingRect().Overlaps(solid.GetBoundingRect())
                              ? RunFoldedIntersection(clipper, solid, polygon)
                              : Clipper::eClipSeparate;
    OwningPolygonVector pieces;
    switch (r)
    {
    case Clipper::eClipResultReady:
        clipper.TakeResultPolygons(pieces);
        NestRings(pieces);
        break;
    case Clipper::eClipClipInsideSubject:
        PushPolygon(pieces, std::make_unique<CPolygon>(solid));
        break;
    case Clipper::eClipSeparate:
    case Clipper::eClipRetry:
        return true;
    case Clipper::eClipFailed:
        return false;
    case Clipper::eClipSubjectInsideClip:
    case Clipper::eClipNothingToDo:
        PushPolygon(result, std::make_unique<CPolygon>(polygon));
        return true;
    }
    return CarryHolesOver(polygon, result, pieces, solid, clipper);
}

bool XORPolygonRange(CPolygon const & polygon, PolygonVector & result, PolygonRange const & range)
{
    CPolygon const & other = *range.front();
    if (!polygon.GetBoundingRect().Overlaps(other.GetBoundingRect()))
    {
        DeletePolygons(result);
        PushPolygon(result, std::make_unique<CPolygon>(polygon));
        PushPolygon(result, std::make_unique<CPolygon>(other));
        return true;
    }
    std::unique_ptr<Clipper> const clipper(CreateClipper());
    DeletePolygons(result);
    PushPolygon(result, std::make_unique<CPolygon>(polygon));
    if (SubtractPolygonRange(result, range, *clipper) == Clipper::eClipFailed)
    {
        return false;
    }
    OwningPolygonVector otherPieces;
    PushPolygon(otherPieces, std::make_unique<CPolygon>(other));
    if (SubtractPolygonRange(otherPieces, PolygonRange(1, &polygon), *clipper) == Clipper::eClipFailed)
    {
        DeletePolygons(result);
        return false;
    }
    AppendPolygons(result, otherPieces);
    return true;
}

namespace
{

bool SubtractMany(CPolygon const & polygon, PolygonVector & result, PolygonRange const & range, unsigned int workers,
                  bool areUsedUp)
{
    std::unique_ptr<Clipper> const clipper(CreateClipper());
    if (this_thread::cancellation_requested())
    {
        return false;
    }
    if (range.size() >= CPolygon::m_GroupingAmount)
    {
        return SubtractInTiles(polygon, result, range, *clipper, workers, areUsedUp);
    }
    PushPolygon(result, std::make_unique<CPolygon>(polygon));
    return SubtractPolygonRange(result, range, *clipper) != Clipper::eClipFailed;
}

bool SubtractIfAny(CPolygon const & polygon, PolygonVector & result, PolygonRange const & range, bool areUsedUp)
{
    DeletePolygons(result);
    if (range.empty())
    {
        PushPolygon(result, std::make_unique<CPolygon>(polygon));
        return false;
    }
    return SubtractMany(polygon, result, range, 0, areUsedUp);
}

} // namespace

bool SubtractPolygons(CPolygon const & polygon, PolygonVector & result, PolygonRange const & range)
{
    return SubtractIfAny(polygon, result, range, false);
}

bool SubtractUsedUpPolygons(CPolygon const & polygon, PolygonVector & result, PolygonVector const & polygons)
{
    return SubtractIfAny(polygon, result, PolygonRange(polygons.begin(), polygons.end()), true);
}

bool CPolygon::SubtractPolygonsCore(std::vector<CPolygon*> & result, std::vector<CPolygon const*> const & polygons,
                                    unsigned int workers) const
{
    return SubtractMany(*this, result, polygons, workers, false);
}

// --- carrying the holes of a cut polygon over to its pieces ------------------------------------------------------

namespace
{

bool IsOnOutline(CPolygon const & polygon, TPoint<double> const & point)
{
    auto const & outline = polygon.GetOutline();
    if (CPolygonInternals::HasFacts(polygon) && IsInReach(polygon.GetBoundingRect()))
    {
        bool isOn = false;
        CPolygonInternals::FactsOf(polygon).VisitNear(polygon.GetBoundingRect(), point,
                                                      [&](std::size_t i)
                                                      {
                                                          isOn = outline[i]->IsPointOnPath(point.x, point.y);
                                                          return !isOn;
                                                      });
        return isOn;
    }
    return std::any_of(outline.begin(), outline.end(),
                       [&](CPathObjectBase const* object) { return object->IsPointOnPath(point.x, point.y); });
}

} // namespace

bool Encloses(CPolygon const & piece, CPolygon const & hole)
{
    if (piece.GetBoundingRect().ContainsRect(hole.GetBoundingRect()))
    {
        for (CPathObjectBase const* object : hole.GetOutline())
        {
            CPathObjectBase::Points points(1, object->GetInbetweenPoint());
            points.insert(points.end(), object->GetPointsBegin(), object->GetPointsEnd());
            for (TPoint<double> const & point : points)
            {
                if (!IsOnOutline(piece, point))
                {
                    return piece.PointInOutline(point.x, point.y);
                }
            }
        }
    }
    return piece.PolygonInPolygon(hole);
}

namespace
{

/// So far apart that not even rounding near zero lets the rectangles meet.
bool AreApart(CBoundingRect<double> a, CBoundingRect<double> const & b)
{
    constexpr double room = 1e-9; // of the size
    a.Inflate(room * (b.maxX - b.minX + (b.maxY - b.minY)));
    return !a.Overlaps(b);
}

/// False: nothing is left of a piece, in the sense of a failure.
bool SubtractHoleFromPieces(PolygonVector & result, CPolygon const & hole, Clipper & clipper)
{
    return ForEachIndexDown(result,
                            [&](std::size_t i)
                            {
                                if (!result[i]->GetBoundingRect().Overlaps(hole.GetBoundingRect()))
                                {
                                    return true;
                                }
                                OwningPolygonVector extra;
                                PushPolygon(extra, TakePolygon(result, i));
                                EClipResult const r = SubtractPolygonRange(extra, PolygonRange(1, &hole), clipper);
                                AppendPolygons(result, extra);
                                return r != Clipper::eClipFailed;
                            });
}

/// Adds the hole to those pieces that contain it: by their own account, or, if none does but one must, by clear points.
/// False if none does so either.
bool GiveHoleToPieces(PolygonVector & result, CPolygon const & hole, CPolygon const & clip, Clipper & clipper,
                      bool mustBeGiven)
{
    auto const giveTo = [&](auto const & encloses)
    {
        bool isGiven = false;
        ForEachIndexDown(result,
                         [&](std::size_t i)
                         {
                             if (encloses(*result[i]))
                             {
                                 OwningPolygonVector extra;
                                 result[i]->AddHole(&hole, &clipper, &clip, extra);
                                 AppendPolygons(result, extra);
                                 isGiven = true;
                             }
                             return true;
                         });
        return isGiven;
    };
    auto const enclosesByOwnAccount = [&](CPolygon const & piece)
    { return piece.GetBoundingRect().Overlaps(hole.GetBoundingRect()) && Encloses(piece, hole); };
    auto const enclosesClearly = [&](CPolygon const & piece) {
        return !AreApart(piece.GetBoundingRect(), hole.GetBoundingRect()) && LiesClearlyIn(hole, piece).value_or(false);
    };
    return giveTo(enclosesByOwnAccount) || (mustBeGiven && giveTo(enclosesClearly));
}

} // namespace

bool CPolygon::HandleSubtractResultPolygons(std::vector<CPolygon*> & result, std::vector<CPolygon*> const & pieces,
                                            CPolygon const & clip, CPolygonClipBase<double>* clipper) const
{
    bool const isDifference = clipper->GetOperation() == Clipper::eClipDifference;
    result.insert(result.end(), pieces.begin(), pieces.end());
    for (CPolygon const* hole : GetHoles())
    {
        // a hole that the clip may have cut is subtracted, an untouched one goes to the piece that contains it
        if (hole != nullptr && clip.m_BoundingRect.Overlaps(hole->m_BoundingRect))
        {
            if (!SubtractHoleFromPieces(result, *hole, *clipper))
            {
                DeletePolygons(result);
                return false;
            }
        }
        else if (hole != nullptr && !GiveHoleToPieces(result, *hole, clip, *clipper, isDifference) && isDifference &&
                 !IsWithoutWidth(*hole))
        {
            Report(CReport::eReasonLostHole, hole->m_BoundingRect);
        }
    }
    return true;
}

} // namespace geometry
