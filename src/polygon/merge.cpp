// Merging grows one polygon at a time: it takes a polygon out of the group, unites every other that reaches it with it,
// and goes on until none does. The clipper unites outlines; what is left of the holes of both is worked out by
// subtraction and put back, and solid pieces that then stand free in a hole go on as polygons of their own.
#include "polygon/merge.h"

#include <algorithm>
#include <cmath>

#include <geometry/thread/thread.h>

#include "polygon/area.h"
#include "polygon/folding.h"

namespace geometry
{

namespace
{

bool IsAnswer(EClipResult r)
{
    return r == Clipper::eClipResultReady || r == Clipper::eClipSubjectInsideClip ||
           r == Clipper::eClipClipInsideSubject;
}

/// A ring of a union that is nowhere wider than `shift`.
bool IsThinnerThan(CPolygon const & ring, double shift)
{
    return AreaOf(ring) <= shift * LengthOf(ring);
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

/// One call of `DoMergeCore`. Every live polygon of the group stands in exactly one of the group, `m_Pending`,
/// `m_Retest` and the result, whose last one, the target, is the one that grows.
class CMerger
{
public:
    CMerger(PolygonVector & group, PolygonVector & result, Clipper & clipper, EMergeOrder order, EMergeStop stop)
        : m_Group(group), m_Result(result), m_Clipper(clipper), m_Order(order), m_Stop(stop)
    {
        for (CPolygon const* polygon : group)
        {
            m_IslandLimit += 16 * (1 + polygon->GetHoles().size());
        }
    }

    MergeOutcome Run();

private:
    /// A candidate on its way into the target.
    struct Candidate
    {
        bool holesStay = false;         ///< no hole has to do with this merge: the target keeps its own in their place
        bool hadHoles = false;          ///< the target, before
        bool changed = false;           ///< the target covers new area, or lost some of its holes
        OwningPolygonVector merged;     ///< outlines of the union, if they cross
        OwningPolygonVector holes;      ///< what is left of the holes of both
        std::vector<bool> isOutOfReach; ///< of each of them: a hole of the target that stays as it was
        CPolygon::EPolygonWinding winding = CPolygon::eWindingUnknown; ///< of the target, before
        OwningPolygonVector islands; ///< solid parts that stand apart from the target afterwards
    };

    void GrowTarget();
    void TryCandidate(PolygonVector & scan, std::size_t index);
    EClipResult RunUnion(CPolygon const & candidate, OwningPolygonVector & merged);
    void KeepHolesOfCandidate(CPolygon const & polygon, Candidate & candidate);
    bool KeepHolesOfTarget(CPolygon const & polygon, EClipResult r, Candidate & candidate);
    EClipResult SubtractFromHole(CPolygon const & hole, CPolygon const & solid, OwningPolygonVector & pieces,
                                 Candidate & candidate);
    bool LiesInSolid(CPolygon const & piece, CPolygon const & polygon);
    void Absorb(PolygonVector & scan, std::size_t index, EClipResult r, Candidate & candidate);
    void TakeOverUnion(OwningPolygonVector & merged, OwningPolygonVector & apart);
    void PutHolesBack(Candidate & candidate);
    void ReleaseIslands(PolygonVector & scan, OwningPolygonVector & islands);
    void TurnHoles();
    void DropGaps();
    void OfferAgain(PolygonVector & from, std::size_t start, CBoundingRect<double> const & box);

    bool IsStopped() const { return m_Stop == EMergeStop::eWhenAsked && this_thread::cancellation_requested(); }
    CPolygon & Target() const { return *m_Result.back(); }

    PolygonVector & m_Group;
    PolygonVector & m_Result;
    Clipper & m_Clipper;
    EMergeOrder m_Order;
    EMergeStop m_Stop;
    OwningPolygonVector m_Pending; ///< what the present pass goes through, from the second pass on
    OwningPolygonVector m_Retest;  ///< passed over, but the target grew towards them since
    double m_TargetArea = -1.0;    ///< of its outline; negative if not known
    MergeOutcome m_Outcome;
    std::size_t m_IslandCount = 0;
    /// Far beyond what holes that don't overlap can set free: where it is passed, islands aren't merged any more, so
    /// that a polygon whose holes overlap can't free the same one for ever.
    std::size_t m_IslandLimit = 1000;
};

MergeOutcome CMerger::Run()
{
    while (!m_Group.empty() && !IsStopped())
    {
        std::size_t const next =
            m_Order == EMergeOrder::eLastFirst
                ? m_Group.size() - 1
                : static_cast<std::size_t>(std::max_element(m_Group.begin(), m_Group.end(), IsSmaller) -
                                           m_Group.begin());
        MovePolygon(m_Group, next, m_Result);
        m_Clipper.ForgetLargestShift();
        m_TargetArea = -1.0;
        GrowTarget();
    }
    AppendPolygons(m_Result, m_Group);
    return m_Outcome;
}

/// Passes over what waits, until the target has met all that it reaches.
void CMerger::GrowTarget()
{
    for (PolygonVector* scan = &m_Group; !scan->empty(); scan = &m_Pending)
    {
        for (std::size_t i = scan->size(); i > 0 && !scan->empty() && !IsStopped();)
        {
            i = std::min(i, scan->size()) - 1;
            TryCandidate(*scan, i);
        }
        AppendPolygons(m_Group, m_Pending);
        AppendPolygons(m_Pending, m_Retest);
    }
    TurnHoles();
    DropGaps();
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

void CMerger::TryCandidate(PolygonVector & scan, std::size_t index)
{
    CPolygon const & polygon = *scan[index];
    CBoundingRect<double> const box = polygon.GetBoundingRect();
    if (!Target().GetBoundingRect().Overlaps(box))
    {
        return;
    }
    Candidate candidate;
    candidate.winding = CPolygonInternals::GetWindingDirection(Target());
    EClipResult const r = RunUnion(polygon, candidate.merged);
    if (!IsAnswer(r))
    {
        m_Outcome.code = r == Clipper::eClipFailed || m_Outcome.code == Clipper::eClipFailed ? r : m_Outcome.code;
        return;
    }
    candidate.changed = r == Clipper::eClipResultReady;
    candidate.hadHoles = !Target().GetHoles().empty();
    KeepHolesOfCandidate(polygon, candidate);
    if (!KeepHolesOfTarget(polygon, r, candidate))
    {
        MovePolygon(scan, index, scan); // an island in a hole: nothing changed
        return;
    }
    Absorb(scan, index, r, candidate);
    PutHolesBack(candidate);
    ReleaseIslands(scan, candidate.islands);
    if (candidate.changed)
    {
        OfferAgain(scan, index, box); // from here on stands what was passed over
        if (&scan == &m_Pending)
        {
            OfferAgain(m_Group, 0, box);
        }
    }
}

/// The union of the outlines of target and candidate. `eClipSeparate` stands also for outlines that meet in single
/// points only.
EClipResult CMerger::RunUnion(CPolygon const & candidate, OwningPolygonVector & merged)
{
    m_Clipper.SetOperation(Clipper::eClipUnion);
    EClipResult r = candidate.GetHoles().empty() ? RunFoldedClip(m_Clipper, candidate, Target())
                                                 : m_Clipper.RunClip(candidate, Target());
    if (r == Clipper::eClipResultReady && IsFolded(m_Clipper))
    {
        if (IsClearOfPointContact(m_Clipper, candidate))
        {
            m_Clipper.TakeResultPolygons(merged);
            m_TargetArea = -1.0;
            return r;
        }
        r = m_Clipper.RunClip(candidate, Target());
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
    if (merged.empty() || IsPointContact(merged, candidate, Target(), area))
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
    for (CPolygon const* hole : polygon.GetHoles())
    {
        OwningPolygonVector pieces;
        if (SubtractFromHole(*hole, Target(), pieces, candidate) == Clipper::eClipFailed)
        {
            return;
        }
        AppendPolygons(candidate.holes, pieces);
    }
}

/// False if the candidate is an island in a hole of the target, so that nothing is to merge. The target keeps its holes
/// until then. Holes that come out as they were stay the objects that they are; if all do, they stay in their place.
bool CMerger::KeepHolesOfTarget(CPolygon const & polygon, EClipResult r, Candidate & candidate)
{
    std::vector<CPolygon*> const & holes = Target().GetHoles();
    std::vector<bool> isReached(holes.size(), false);
    OwningPolygonVector kept; // null for a hole that stays as it was
    for (std::size_t i = 0; i < holes.size(); ++i)
    {
        CPolygon* const hole = holes[i];
        if (!hole->GetBoundingRect().Overlaps(polygon.GetBoundingRect()))
        {
            kept.push_back(nullptr);
            continue;
        }
        OwningPolygonVector pieces;
        CPolygonInternals::TurnHole(*hole, candidate.winding);
        EClipResult const v = SubtractFromHole(*hole, polygon, pieces, candidate);
        if (v == Clipper::eClipFailed)
        {
            break;
        }
        if (r == Clipper::eClipClipInsideSubject && v == r && polygon.GetHoles().empty())
        {
            return false;
        }
        if ((v == Clipper::eClipSeparate || v == Clipper::eClipRetry) && pieces.size() == 1)
        {
            kept.push_back(nullptr);
            continue;
        }
        isReached[i] = true;
        for (CPolygon*& piece : pieces)
        {
            if (!polygon.PolygonInPolygon(*piece) || !LiesInSolid(*piece, polygon))
            {
                kept.push_back(piece);
                piece = nullptr;
            }
        }
    }
    bool const onlyGrows =
        r == Clipper::eClipClipInsideSubject || (r == Clipper::eClipResultReady && candidate.merged.size() == 1);
    bool const isEachAsItWas =
        kept.size() == holes.size() && std::find(isReached.begin(), isReached.end(), true) == isReached.end();
    if (onlyGrows && isEachAsItWas && polygon.GetHoles().empty())
    {
        candidate.holesStay = true;
        return true;
    }
    OwningPolygonVector old;
    CPolygonInternals::TakeHoles(Target(), old);
    candidate.holes.reserve(candidate.holes.size() + kept.size());
    std::size_t next = 0;
    for (CPolygon*& piece : kept)
    {
        while (piece == nullptr && isReached[next])
        {
            ++next;
        }
        candidate.isOutOfReach.resize(candidate.holes.size(), false);
        candidate.isOutOfReach.push_back(piece == nullptr);
        CPolygon*& source = piece == nullptr ? old[next++] : piece;
        candidate.holes.push_back(source);
        source = nullptr;
    }
    return true;
}

/// A piece of a hole within the outline of `polygon` may fill the place of one of its holes, which is kept already.
bool CMerger::LiesInSolid(CPolygon const & piece, CPolygon const & polygon)
{
    m_Clipper.SetOperation(Clipper::eClipDifference);
    return m_Clipper.RunClip(piece, polygon) == Clipper::eClipClipInsideSubject;
}

/// Makes the candidate at `index` part of the target, which loses its holes; they are put back later.
void CMerger::Absorb(PolygonVector & scan, std::size_t index, EClipResult r, Candidate & candidate)
{
    CPolygonInternals::DeleteHoles(*scan[index]);
    std::unique_ptr<CPolygon> polygon = TakePolygon(scan, index);
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

/// Gives the holes to the innermost polygons around them. Solid pieces within the holes stand free from now on.
void CMerger::PutHolesBack(Candidate & candidate)
{
    for (CPolygon* hole : candidate.holes)
    {
        CPolygonInternals::TakeHoles(*hole, candidate.islands);
    }
    if (!candidate.islands.empty())
    {
        for (std::size_t i = 0; i < candidate.isOutOfReach.size(); ++i)
        {
            if (candidate.isOutOfReach[i])
            {
                CPolygonInternals::TurnHole(*candidate.holes[i], candidate.winding);
            }
        }
        PolygonVector owners(candidate.islands);
        owners.push_back(&Target());
        AttachHolesToPolygons(owners, candidate.holes);
        return;
    }
    for (std::size_t i = 0; i < candidate.holes.size(); ++i)
    {
        CPolygon*& hole = candidate.holes[i];
        if (i < candidate.isOutOfReach.size() && candidate.isOutOfReach[i])
        {
            CPolygonInternals::AddUnturnedHole(Target(), *hole);
            hole = nullptr;
        }
        else if (Target().PolygonInPolygon(*hole) || Encloses(Target(), *hole))
        {
            CPolygonInternals::AddAsHole(Target(), *hole);
            hole = nullptr;
        }
    }
}

/// Islands take part like any other polygon.
void CMerger::ReleaseIslands(PolygonVector & scan, OwningPolygonVector & islands)
{
    m_IslandCount += islands.size();
    if (m_IslandCount <= m_IslandLimit)
    {
        AppendPolygons(scan, islands);
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
void CMerger::OfferAgain(PolygonVector & from, std::size_t start, CBoundingRect<double> const & box)
{
    constexpr std::size_t ahead = 16;
    for (std::size_t j = from.size(); j-- > start;)
    {
        if (j >= start + ahead)
        {
            __builtin_prefetch(&from[j - ahead]->GetBoundingRect()); // they lie anywhere, and most of them apart
        }
        if (box.Overlaps(from[j]->GetBoundingRect()))
        {
            MovePolygon(from, j, m_Retest);
        }
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
