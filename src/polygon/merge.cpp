// Merging grows one polygon at a time: it takes a polygon out of the group, unites every other that reaches it with it,
// and goes on until none does. The clipper unites outlines; what is left of the holes of both is worked out by
// subtraction and put back, and solid pieces that then stand free in a hole go on as polygons of their own.
#include "polygon/merge.h"

#include <algorithm>
#include <cmath>

#include "polygon/area.h"

namespace geometry
{

namespace
{

bool IsAnswer(EClipResult r)
{
    return r == Clipper::eClipResultReady || r == Clipper::eClipSubjectInsideClip ||
           r == Clipper::eClipClipInsideSubject;
}

double AreaOf(CPolygon const & ring)
{
    return std::abs(SignedOutlineArea(ring.GetOutline()));
}

double LengthOf(CPolygon const & ring)
{
    double length = 0.0;
    for (CPathObjectBase const* object : ring.GetOutline())
    {
        length += object->CalculateLength();
    }
    return length;
}

/// A ring of a union that is nowhere wider than `shift`.
bool IsThinnerThan(CPolygon const & ring, double shift)
{
    return AreaOf(ring) <= shift * LengthOf(ring);
}

/// The rings of the union of `a` and `b` have all the area and all the length of both: these share neither area nor a
/// stretch of outline, but meet in single points. An outline that runs through such a point twice is hard on the next
/// clip, and nothing is gained by it.
bool IsPointContact(PolygonVector const & rings, CPolygon const & a, CPolygon const & b)
{
    auto const isSameSum = [&](auto measure)
    {
        double sum = 0.0;
        for (CPolygon const* ring : rings)
        {
            sum += measure(*ring);
        }
        double const expected = measure(a) + measure(b);
        return std::abs(sum - expected) <= 1e-10 * expected;
    };
    return isSameSum(AreaOf) && isSameSum(LengthOf);
}

/// One call of `DoMergeCore`. Every live polygon of the group stands in exactly one of the group, `m_Pending`,
/// `m_Retest` and the result, whose last one, the target, is the one that grows.
class CMerger
{
public:
    CMerger(PolygonVector & group, PolygonVector & result, Clipper & clipper)
        : m_Group(group), m_Result(result), m_Clipper(clipper)
    {
        std::size_t count = group.size();
        for (CPolygon const* polygon : group)
        {
            count += polygon->GetHoles().size();
        }
        m_IslandLimit += std::uint64_t{count} * count;
    }

    MergeOutcome Run();

private:
    /// A candidate on its way into the target.
    struct Candidate
    {
        bool changed = false;        ///< the target covers new area, or lost some of its holes
        OwningPolygonVector merged;  ///< outlines of the union, if they cross
        OwningPolygonVector holes;   ///< what is left of the holes of both
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
    void DropGaps();
    void OfferAgain(PolygonVector & from, std::size_t start, CBoundingRect<double> const & box);

    CPolygon & Target() const { return *m_Result.back(); }

    PolygonVector & m_Group;
    PolygonVector & m_Result;
    Clipper & m_Clipper;
    OwningPolygonVector m_Pending; ///< what the present pass goes through, from the second pass on
    OwningPolygonVector m_Retest;  ///< passed over, but the target grew towards them since
    MergeOutcome m_Outcome;
    std::uint64_t m_IslandCount = 0;
    /// Far beyond what holes that don't overlap can set free: where it is passed, islands aren't merged any more, so
    /// that a polygon whose holes overlap can't free the same one for ever.
    std::uint64_t m_IslandLimit = 1000;
};

MergeOutcome CMerger::Run()
{
    while (!m_Group.empty())
    {
        m_Result.push_back(m_Group.back());
        m_Group.pop_back();
        GrowTarget();
    }
    return m_Outcome;
}

/// Passes over what waits, until the target has met all that it reaches.
void CMerger::GrowTarget()
{
    for (PolygonVector* scan = &m_Group; !scan->empty(); scan = &m_Pending)
    {
        for (std::size_t i = scan->size(); i > 0 && !scan->empty();)
        {
            i = std::min(i, scan->size()) - 1;
            TryCandidate(*scan, i);
        }
        AppendPolygons(m_Group, m_Pending);
        AppendPolygons(m_Pending, m_Retest);
    }
    DropGaps();
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
    EClipResult const r = RunUnion(polygon, candidate.merged);
    if (!IsAnswer(r))
    {
        m_Outcome.code = r == Clipper::eClipFailed || m_Outcome.code == Clipper::eClipFailed ? r : m_Outcome.code;
        return;
    }
    candidate.changed = r == Clipper::eClipResultReady;
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
    EClipResult const r = m_Clipper.RunClip(candidate, Target());
    if (r != Clipper::eClipResultReady)
    {
        return r;
    }
    m_Clipper.GetResultPolygons(merged);
    for (std::size_t i = merged.size(); i-- > 0;)
    {
        if (merged[i]->GetOutline().empty())
        {
            TakePolygon(merged, i);
        }
    }
    return merged.empty() || IsPointContact(merged, candidate, Target()) ? Clipper::eClipSeparate : r;
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

/// False if the candidate is an island in a hole of the target, so that nothing is to merge.
bool CMerger::KeepHolesOfTarget(CPolygon const & polygon, EClipResult r, Candidate & candidate)
{
    for (CPolygon const* hole : Target().GetHoles())
    {
        OwningPolygonVector pieces;
        EClipResult const v = SubtractFromHole(*hole, polygon, pieces, candidate);
        if (v == Clipper::eClipFailed)
        {
            return true;
        }
        if (r == Clipper::eClipClipInsideSubject && v == r && polygon.GetHoles().empty())
        {
            return false;
        }
        for (CPolygon*& piece : pieces)
        {
            if (!polygon.PolygonInPolygon(*piece) || !LiesInSolid(*piece, polygon))
            {
                candidate.holes.push_back(piece);
                piece = nullptr;
            }
        }
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
    bool const hadHoles = !Target().GetHoles().empty();
    CPolygonInternals::DeleteHoles(*scan[index]);
    CPolygonInternals::DeleteHoles(Target());
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
    }
    bool const hasGrown = r == Clipper::eClipSubjectInsideClip || hadHoles; // a hole may have been covered as a whole
    m_Outcome.mayHaveMissed = m_Outcome.mayHaveMissed || (hasGrown && !candidate.changed);
    code = code == Clipper::eClipFailed ? r : code;
}

/// Makes one outline of the union that of the target. The others are areas that the union encloses, its holes, or
/// solid parts that only touch the target: they go to `apart`.
void CMerger::TakeOverUnion(OwningPolygonVector & merged, OwningPolygonVector & apart)
{
    if (merged.size() == 1)
    {
        auto const & outline = merged.front()->GetOutline();
        CPolygonInternals::InitializeWithClones(Target(), {outline.begin(), outline.end()});
        return;
    }
    OwningPolygonVector rest;
    std::unique_ptr<CPolygon> const outer = SplitResultInOutlineAndRest(rest, merged);
    OwningPolygonVector enclosed;
    PolygonVector all(rest);
    all.push_back(outer.get());
    for (std::size_t i = 0; i < all.size() - 1; ++i)
    {
        auto const count =
            std::count_if(all.begin(), all.end(),
                          [&](CPolygon const* other) { return other != all[i] && Encloses(*other, *all[i]); });
        (count % 2 == 0 ? apart : enclosed).push_back(all[i]);
        rest[i] = nullptr;
    }
    PolygonVector solids(apart);
    solids.push_back(outer.get());
    AttachHolesToPolygons(solids, enclosed);
    CPolygonInternals::InitializeWithPolygon(Target(), *outer);
}

/// Gives the holes to the innermost polygons around them. Solid pieces within the holes stand free from now on.
void CMerger::PutHolesBack(Candidate & candidate)
{
    for (CPolygon* hole : candidate.holes)
    {
        CPolygonInternals::TakeHoles(*hole, candidate.islands);
    }
    PolygonVector owners(candidate.islands);
    owners.push_back(&Target());
    AttachHolesToPolygons(owners, candidate.holes);
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
    for (std::size_t j = from.size(); j-- > start;)
    {
        if (box.Overlaps(from[j]->GetBoundingRect()))
        {
            MovePolygon(from, j, m_Retest);
        }
    }
}

} // namespace

MergeOutcome DoMergeCore(PolygonVector & group, PolygonVector & result, Clipper & clipper)
{
    return CMerger(group, result, clipper).Run();
}

MergeOutcome MergeCompletely(PolygonVector & group, PolygonVector & result, Clipper & clipper)
{
    MergeOutcome total;
    for (bool isDone = false; !isDone;)
    {
        std::size_t const count = group.size();
        OwningPolygonVector merged;
        MergeOutcome const outcome = DoMergeCore(group, merged, clipper);
        isDone = !outcome.mayHaveMissed || merged.size() >= count;
        AppendPolygons(isDone ? result : group, merged);
        total = MergeOutcome{outcome.code, !isDone || outcome.mayHaveMissed, total.lostHoles || outcome.lostHoles};
    }
    return total;
}

EClipResult DoMergeCoreRestricted(PolygonVector & group, PolygonVector & result, Clipper & clipper)
{
    OwningPolygonVector islands;
    SplitOffIslands(group, islands);
    OwningPolygonVector holes;
    for (CPolygon* polygon : group)
    {
        CPolygonInternals::TakeHoles(*polygon, holes);
    }
    MergeCompletely(group, result, clipper);
    AttachHolesToPolygons(result, holes);
    AppendPolygons(result, islands);
    return Clipper::eClipNothingToDo;
}

} // namespace geometry
