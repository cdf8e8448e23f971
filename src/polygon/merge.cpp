// Merging grows one polygon at a time: it takes a polygon out of the group, unites every other that reaches it with it,
// and goes on until none does. The clipper unites outlines; what is left of the holes of both is worked out by
// subtraction and put back, and solid pieces that then stand free in a hole go on as polygons of their own.
#include "polygon/merge.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include <geometry/thread/thread.h>

#include "polygon/area.h"
#include "polygon/folding.h"
#include "polygon/target_holes.h"
#include "polygon/waiting_polygons.h"
#include "proof/inside.h"

namespace geometry
{

namespace
{

bool IsAnswer(EClipResult r)
{
    return r == Clipper::eClipResultReady || r == Clipper::eClipSubjectInsideClip ||
           r == Clipper::eClipClipInsideSubject;
}

/// Never so where `a` contains `b`.
bool IsSmaller(CPolygon const* a, CPolygon const* b)
{
    CBoundingRect<double> const & rectA = a->GetBoundingRect();
    CBoundingRect<double> const & rectB = b->GetBoundingRect();
    double const areaA = RectArea(rectA);
    double const areaB = RectArea(rectB);
    bool const isSameRect = areaA == areaB && rectA.minX == rectB.minX && rectA.minY == rectB.minY;
    return isSameRect ? AreaOf(*a) < AreaOf(*b) : areaA < areaB;
}

/// One call of `DoMergeCore`. Every live polygon of the group stands in exactly one of `m_Waiting`, `m_Pending`,
/// `m_Retest` and the result, whose last one, the target, is the one that grows.
class CMerger
{
public:
    CMerger(PolygonVector & group, PolygonVector & result, Clipper & clipper, EMergeOrder order, EMergeStop stop)
        : m_Result(result), m_Clipper(clipper), m_Order(order), m_Stop(stop)
    {
        for (CPolygon const* polygon : group)
        {
            m_IslandLimit += 16 * (1 + polygon->GetHoles().size());
        }
        m_Waiting.AddAll(group);
    }

    MergeOutcome Run();

private:
    static constexpr std::size_t NoHole = static_cast<std::size_t>(-1);
    static constexpr std::size_t ManyHoles = 100;

    /// A hole of the target that doesn't stay as it was, and how many of the pieces are what is left of it.
    struct TReachedHole
    {
        std::size_t index;
        std::size_t pieceCount;
    };

    /// A candidate on its way into the target.
    struct Candidate
    {
        bool holesStay = false;     ///< no hole has to do with this merge: the target keeps its own
        bool hadHoles = false;      ///< the target, before
        bool changed = false;       ///< the target covers new area, or lost some of its holes
        OwningPolygonVector merged; ///< outlines of the union, if they cross
        std::optional<std::vector<std::size_t>> nearHoles; ///< of the target, if they were looked up already
        OwningPolygonVector holes;                         ///< what is left of those of the candidate
        std::vector<TReachedHole> reached;                 ///< of the target, ascending
        OwningPolygonVector pieces;                        ///< what is left of these, one after the other
        std::size_t firstLost = NoHole; ///< of the target: this one and those behind it can't be kept
        CPolygon::EPolygonWinding winding = CPolygon::eWindingUnknown; ///< of the target, before
        OwningPolygonVector islands; ///< solid parts that stand apart from the target afterwards
    };

    std::size_t FindNext() const;
    void GrowTarget();
    void TryCandidate(CWaitingPolygons & scan, std::size_t place);
    EClipResult RunUnion(CPolygon & polygon, Candidate & candidate);
    void KeepHolesOfCandidate(CPolygon const & polygon, Candidate & candidate);
    bool KeepHolesOfTarget(CPolygon const & polygon, EClipResult r, Candidate & candidate);
    EClipResult SubtractFromHole(CPolygon const & hole, CPolygon const & solid, OwningPolygonVector & pieces,
                                 Candidate & candidate);
    bool LiesInSolid(CPolygon const & piece, CPolygon const & polygon);
    void Absorb(std::unique_ptr<CPolygon> polygon, EClipResult r, Candidate & candidate);
    void TakeOverUnion(OwningPolygonVector & merged, OwningPolygonVector & apart);
    void KeepHolesWithin(PolygonVector & holes) const;
    void EditHoles(Candidate & candidate);
    void FreeIslands(Candidate & candidate);
    void DealOutHoles(Candidate & candidate);
    void UpdateHoles(Candidate & candidate);
    void ReleaseIslands(CWaitingPolygons & scan, OwningPolygonVector & islands, std::size_t holes);
    void TurnHoles();
    void DropGaps();
    void OfferAgain(CWaitingPolygons & from, std::size_t start, CBoundingRect<double> const & box);

    bool IsStopped() const { return m_Stop == EMergeStop::eWhenAsked && this_thread::cancellation_requested(); }
    CPolygon & Target() const { return *m_Result.back(); }

    PolygonVector & m_Result;
    Clipper & m_Clipper;
    EMergeOrder m_Order;
    EMergeStop m_Stop;
    CWaitingPolygons m_Waiting;
    CWaitingPolygons m_Pending; ///< what the present pass goes through, from the second pass on
    CWaitingPolygons m_Retest;  ///< passed over, but the target grew towards them since
    CTargetHoles m_Holes;       ///< of the target, which has none itself as long as it grows
    double m_TargetArea = -1.0; ///< of its outline; negative if not known
    MergeOutcome m_Outcome;
    std::size_t m_IslandCount = 0;
    /// Far beyond what holes that don't overlap can set free: where it is passed, islands aren't merged any more, so
    /// that a polygon whose holes overlap can't free the same one for ever.
    std::size_t m_IslandLimit = 1000;
};

MergeOutcome CMerger::Run()
{
    while (!m_Waiting.IsEmpty() && !IsStopped())
    {
        m_Waiting.Tidy();
        PushPolygon(m_Result, m_Waiting.Take(FindNext()));
        m_Clipper.ForgetLargestShift();
        m_TargetArea = -1.0;
        m_Holes.TakeFrom(Target());
        GrowTarget();
        m_Holes.GiveBackTo(Target());
        TurnHoles();
        DropGaps();
    }
    m_Waiting.TakeAll(m_Result);
    return m_Outcome;
}

/// The place of the next target: of several largest ones the first.
std::size_t CMerger::FindNext() const
{
    std::size_t const end = m_Waiting.GetEnd();
    if (m_Order == EMergeOrder::eLastFirst)
    {
        std::size_t last = end;
        while (m_Waiting.At(--last) == nullptr)
        {
        }
        return last;
    }
    std::size_t largest = end;
    for (std::size_t place = 0; place < end; ++place)
    {
        CPolygon const* const polygon = m_Waiting.At(place);
        if (polygon != nullptr && (largest == end || IsSmaller(m_Waiting.At(largest), polygon)))
        {
            largest = place;
        }
    }
    return largest;
}

/// Passes over what waits, until the target has met all that it reaches.
void CMerger::GrowTarget()
{
    for (CWaitingPolygons* scan = &m_Waiting; !scan->IsEmpty(); scan = &m_Pending)
    {
        for (std::size_t place = scan->GetEnd(); place-- > 0 && !IsStopped();)
        {
            if (scan->At(place) != nullptr)
            {
                TryCandidate(*scan, place);
            }
        }
        m_Waiting.AddAll(m_Pending);
        m_Pending.AddAll(m_Retest);
    }
}

/// Holes that no candidate came near may wind along an outline that was turned round.
void CMerger::TurnHoles()
{
    CPolygon::EPolygonWinding const winding = CPolygonInternals::GetWindingDirection(Target());
    for (CPolygon* hole : Target().GetHoles())
    {
        CPolygonInternals::TurnHole(*hole, winding);
    }
}

void CMerger::TryCandidate(CWaitingPolygons & scan, std::size_t place)
{
    CPolygon & polygon = *scan.At(place);
    CBoundingRect<double> const box = polygon.GetBoundingRect();
    if (!Target().GetBoundingRect().Overlaps(box))
    {
        return;
    }
    Candidate candidate;
    candidate.winding = CPolygonInternals::GetWindingDirection(Target());
    EClipResult const r = RunUnion(polygon, candidate);
    if (!IsAnswer(r))
    {
        m_Outcome.code = r == Clipper::eClipFailed || m_Outcome.code == Clipper::eClipFailed ? r : m_Outcome.code;
        return;
    }
    candidate.changed = r == Clipper::eClipResultReady;
    candidate.hadHoles = !m_Holes.IsEmpty();
    KeepHolesOfCandidate(polygon, candidate);
    if (!KeepHolesOfTarget(polygon, r, candidate))
    {
        scan.Add(scan.Take(place)); // an island in a hole: nothing changed
        return;
    }
    std::size_t const holes = polygon.GetHoles().size() + m_Holes.GetAll().size();
    Absorb(scan.Take(place), r, candidate);
    UpdateHoles(candidate);
    ReleaseIslands(scan, candidate.islands, holes);
    if (candidate.changed)
    {
        OfferAgain(scan, place, box); // from here on stands what was passed over
        if (&scan == &m_Pending)
        {
            OfferAgain(m_Waiting, 0, box);
        }
    }
}

/// The union of the outlines of target and candidate. `eClipSeparate` stands also for outlines that meet in single
/// points only. The polygon may be left without its outline, if no hole of the target is to be compared with it.
EClipResult CMerger::RunUnion(CPolygon & polygon, Candidate & candidate)
{
    OwningPolygonVector & merged = candidate.merged;
    m_Clipper.SetOperation(Clipper::eClipUnion);
    EClipResult r =
        polygon.GetHoles().empty() ? RunFoldedClip(m_Clipper, polygon, Target()) : m_Clipper.RunClip(polygon, Target());
    if (r == Clipper::eClipResultReady && IsFolded(m_Clipper))
    {
        if (IsClearOfPointContact(m_Clipper, polygon))
        {
            candidate.nearHoles = m_Holes.FindOverlapping(polygon.GetBoundingRect());
            if (candidate.nearHoles->empty())
            {
                TakeResultPolygons(m_Clipper, merged, polygon);
            }
            else
            {
                m_Clipper.TakeResultPolygons(merged);
            }
            m_TargetArea = -1.0;
            return r;
        }
        r = m_Clipper.RunClip(polygon, Target());
    }
    if (r != Clipper::eClipResultReady)
    {
        return r;
    }
    m_Clipper.TakeResultPolygons(merged);
    for (std::size_t i = merged.size(); i-- > 0;)
    {
        if (merged[i]->GetOutline().empty())
        {
            TakePolygon(merged, i);
        }
    }
    double area = m_TargetArea < 0.0 ? AreaOf(Target()) : m_TargetArea;
    m_TargetArea = -1.0;
    if (merged.empty() || IsPointContact(merged, polygon, Target(), area))
    {
        return Clipper::eClipSeparate;
    }
    m_TargetArea = merged.size() == 1 ? area : -1.0;
    return r;
}

/// What of a hole survives `solid`. A failure loses the hole.
EClipResult CMerger::SubtractFromHole(CPolygon const & hole, CPolygon const & solid, OwningPolygonVector & pieces,
                                      Candidate & candidate)
{
    PushPolygon(pieces, std::make_unique<CPolygon>(hole));
    EClipResult const r = SubtractPolygonRange(pieces, PolygonRange(1, &solid), m_Clipper);
    if (r == Clipper::eClipFailed)
    {
        m_Outcome.code = r;
        m_Outcome.lostHoles = true;
    }
    candidate.changed = candidate.changed || r == Clipper::eClipResultReady;
    return r;
}

void CMerger::KeepHolesOfCandidate(CPolygon const & polygon, Candidate & candidate)
{
    if (polygon.GetHoles().empty())
    {
        return;
    }
    m_Holes.GiveBackTo(Target()); // they are what may be left of a hole of the candidate
    for (CPolygon const* hole : polygon.GetHoles())
    {
        OwningPolygonVector pieces;
        if (SubtractFromHole(*hole, Target(), pieces, candidate) == Clipper::eClipFailed)
        {
            break;
        }
        AppendPolygons(candidate.holes, pieces);
    }
    m_Holes.TakeFrom(Target());
}

/// False if the candidate is an island in a hole of the target, so that nothing is to merge. The target keeps its holes
/// until then. Holes that come out as they were stay the objects that they are.
bool CMerger::KeepHolesOfTarget(CPolygon const & polygon, EClipResult r, Candidate & candidate)
{
    if (!candidate.nearHoles)
    {
        candidate.nearHoles = m_Holes.FindOverlapping(polygon.GetBoundingRect());
    }
    for (std::size_t const index : *candidate.nearHoles)
    {
        CPolygon & hole = *m_Holes.GetAll()[index];
        OwningPolygonVector pieces;
        CPolygonInternals::TurnHole(hole, candidate.winding);
        EClipResult const v = SubtractFromHole(hole, polygon, pieces, candidate);
        if (v == Clipper::eClipFailed)
        {
            candidate.firstLost = index;
            break;
        }
        if (r == Clipper::eClipClipInsideSubject && v == r && polygon.GetHoles().empty())
        {
            return false;
        }
        if ((v == Clipper::eClipSeparate || v == Clipper::eClipRetry) && pieces.size() == 1)
        {
            continue;
        }
        std::size_t const before = candidate.pieces.size();
        for (CPolygon*& piece : pieces)
        {
            if (!polygon.PolygonInPolygon(*piece) || !LiesInSolid(*piece, polygon))
            {
                candidate.pieces.push_back(piece);
                piece = nullptr;
            }
        }
        candidate.reached.push_back({index, candidate.pieces.size() - before});
    }
    bool const onlyGrows =
        r == Clipper::eClipClipInsideSubject || (r == Clipper::eClipResultReady && candidate.merged.size() == 1);
    candidate.holesStay =
        onlyGrows && candidate.reached.empty() && candidate.firstLost == NoHole && polygon.GetHoles().empty();
    return true;
}

/// A piece of a hole within the outline of `polygon` may fill the place of one of its holes, which is kept already.
bool CMerger::LiesInSolid(CPolygon const & piece, CPolygon const & polygon)
{
    m_Clipper.SetOperation(Clipper::eClipDifference);
    return m_Clipper.RunClip(piece, polygon) == Clipper::eClipClipInsideSubject;
}

/// Makes a candidate part of the target, which loses its holes; they are put back later.
void CMerger::Absorb(std::unique_ptr<CPolygon> polygon, EClipResult r, Candidate & candidate)
{
    CPolygonInternals::DeleteHoles(*polygon);
    EClipResult & code = m_Outcome.code;
    if (r == Clipper::eClipResultReady)
    {
        TakeOverUnion(candidate.merged, candidate.islands);
        code = r;
        return;
    }
    if (r == Clipper::eClipSubjectInsideClip)
    {
        CPolygon* const swallowed = m_Result.back();
        m_Result.back() = polygon.release();
        polygon.reset(swallowed);
        m_TargetArea = -1.0;
    }
    bool const hasGrown = r == Clipper::eClipSubjectInsideClip ||
                          (candidate.hadHoles && !candidate.holesStay); // a hole may have been covered as a whole
    m_Outcome.mayHaveMissed = m_Outcome.mayHaveMissed || (hasGrown && !candidate.changed);
    code = code == Clipper::eClipFailed ? r : code;
}

/// Makes one outline of the union that of the target. The others are areas that the union encloses, its holes, or
/// solid parts that only touch the target: they go to `apart`.
void CMerger::TakeOverUnion(OwningPolygonVector & merged, OwningPolygonVector & apart)
{
    if (merged.size() == 1)
    {
        CPolygonInternals::TakeOverOutline(Target(), *merged.front());
        return;
    }
    OwningPolygonVector rest;
    PushPolygon(merged, SplitResultInOutlineAndRest(rest, merged)); // which empties `merged`
    AppendPolygons(merged, rest);
    NestRings(merged);
    auto const outer = std::max_element(merged.begin(), merged.end(), IsSmaller);
    std::unique_ptr<CPolygon> const target = TakePolygon(merged, static_cast<std::size_t>(outer - merged.begin()));
    CPolygonInternals::TakeOverPolygon(Target(), *target);
    AppendPolygons(apart, merged);
}

/// Deletes those of `holes` that don't lie in the target, or bound nothing, leaving null, and turns the others.
void CMerger::KeepHolesWithin(PolygonVector & holes) const
{
    for (CPolygon*& hole : holes)
    {
        if (!IsWithoutWidth(*hole) && (Target().PolygonInPolygon(*hole) || Encloses(Target(), *hole) ||
                                       LiesClearlyIn(*hole, Target()).value_or(false)))
        {
            CPolygonInternals::TurnHole(*hole, CPolygonInternals::GetWindingDirection(Target()));
        }
        else
        {
            delete hole;
            hole = nullptr;
        }
    }
}

/// Puts the holes of the candidate before those of the target, and what is left of these, nulls left out, in their
/// place.
void CMerger::EditHoles(Candidate & candidate)
{
    if (candidate.firstLost != NoHole)
    {
        m_Holes.DeleteFrom(candidate.firstLost);
    }
    for (std::size_t i = candidate.reached.size(); i-- > 0;)
    {
        PolygonVector & all = candidate.pieces;
        auto const first = all.end() - static_cast<std::ptrdiff_t>(candidate.reached[i].pieceCount);
        OwningPolygonVector pieces;
        std::copy_if(first, all.end(), std::back_inserter(pieces),
                     [](CPolygon const* piece) { return piece != nullptr; });
        all.erase(first, all.end());
        m_Holes.Replace(candidate.reached[i].index, pieces);
    }
    auto & holes = candidate.holes;
    holes.erase(std::remove(holes.begin(), holes.end(), nullptr), holes.end());
    m_Holes.PutInFront(holes);
}

/// Solid pieces within the holes stand free from now on.
void CMerger::FreeIslands(Candidate & candidate)
{
    auto const freeIn = [&](CPolygon* hole) { CPolygonInternals::TakeHoles(*hole, candidate.islands); };
    std::for_each(candidate.holes.begin(), candidate.holes.end(), freeIn);
    auto piece = candidate.pieces.begin();
    std::size_t index = 0;
    auto const freeUpTo = [&](std::size_t end)
    {
        for (; m_Holes.HasNested() && index < end; ++index)
        {
            freeIn(m_Holes.GetAll()[index]);
        }
        index = end + 1;
    };
    for (TReachedHole const & reached : candidate.reached)
    {
        freeUpTo(reached.index);
        auto const end = piece + static_cast<std::ptrdiff_t>(reached.pieceCount);
        std::for_each(piece, end, freeIn);
        piece = end;
    }
    freeUpTo(std::min(candidate.firstLost, m_Holes.GetAll().size()));
}

/// Gives the holes to the innermost ones of the target and the islands around them.
void CMerger::DealOutHoles(Candidate & candidate)
{
    PolygonVector changed(candidate.holes);
    changed.insert(changed.end(), candidate.pieces.begin(), candidate.pieces.end());
    EditHoles(candidate);
    for (CPolygon* hole : m_Holes.GetAll())
    {
        if (std::find(changed.begin(), changed.end(), hole) == changed.end())
        {
            CPolygonInternals::TurnHole(*hole, candidate.winding);
        }
    }
    PolygonVector owners(candidate.islands);
    owners.push_back(&Target());
    OwningPolygonVector holes;
    m_Holes.TakeAll(holes);
    AttachHolesToPolygons(owners, holes);
    m_Holes.TakeFrom(Target());
}

/// Takes the step that the candidate has made into the holes of the target.
void CMerger::UpdateHoles(Candidate & candidate)
{
    if (candidate.holesStay)
    {
        return;
    }
    FreeIslands(candidate);
    if (!candidate.islands.empty())
    {
        DealOutHoles(candidate);
        return;
    }
    KeepHolesWithin(candidate.holes);
    KeepHolesWithin(candidate.pieces);
    EditHoles(candidate);
    OwningPolygonVector rings; // that the union encloses
    CPolygonInternals::TakeHoles(Target(), rings);
    m_Holes.PutInFront(rings);
}

/// Islands take part like any other polygon. They come from two that had `holes` in all: many more, and it is because
/// these overlap. Such islands stay by themselves, since they would come back with twice as many each time.
void CMerger::ReleaseIslands(CWaitingPolygons & scan, OwningPolygonVector & islands, std::size_t holes)
{
    std::size_t islandHoles = 0;
    for (CPolygon const* island : islands)
    {
        islandHoles += island->GetHoles().size();
    }
    m_IslandCount += islands.size();
    if (m_IslandCount <= m_IslandLimit && islandHoles <= holes + holes / 2 + ManyHoles)
    {
        scan.AddAll(islands);
    }
    else
    {
        m_Result.insert(m_Result.end() - 1, islands.begin(), islands.end());
        islands.clear();
    }
}

/// Holes no wider than the clipper moved an operand are the gaps that the move has opened.
void CMerger::DropGaps()
{
    double const shift = m_Clipper.GetLargestShift();
    PolygonVector const holes = Target().GetHoles();
    for (CPolygon* hole : holes)
    {
        if (shift > 0.0 && IsThinnerThan(*hole, shift))
        {
            delete CPolygonInternals::HolesOf(Target()).Remove(hole);
            CPolygonInternals::HolesOf(Target()).RecalculateCellRange();
        }
    }
}

/// What was passed over may reach the target where it grew, within `box`.
void CMerger::OfferAgain(CWaitingPolygons & from, std::size_t start, CBoundingRect<double> const & box)
{
    std::vector<std::size_t> const places = from.FindOverlapping(box, start);
    for (std::size_t i = places.size(); i-- > 0;)
    {
        m_Retest.Add(from.Take(places[i]));
    }
}

} // namespace

MergeOutcome DoMergeCore(PolygonVector & group, PolygonVector & result, Clipper & clipper, EMergeOrder order,
                         EMergeStop stop)
{
    return CMerger(group, result, clipper, order, stop).Run();
}

MergeOutcome MergeCompletely(PolygonVector & group, PolygonVector & result, Clipper & clipper, EMergeOrder order,
                             EMergeStop stop)
{
    MergeOutcome total;
    for (bool isDone = false; !isDone;)
    {
        std::size_t const count = group.size();
        OwningPolygonVector merged;
        MergeOutcome const outcome = DoMergeCore(group, merged, clipper, order, stop);
        isDone = !outcome.mayHaveMissed || (order == EMergeOrder::eLargestFirst && merged.size() >= count);
        AppendPolygons(isDone ? result : group, merged);
        total = MergeOutcome{outcome.code, outcome.mayHaveMissed, total.lostHoles || outcome.lostHoles};
        order = EMergeOrder::eLargestFirst;
    }
    return total;
}

} // namespace geometry
