// The marking only works if the intersections along a ring alternate between going in and coming out: where the ring
// changes sides their number must be odd, where it stays on its side even. This stage walks the subject ring and makes
// it so. Intersections inside an overlap go; a touching point gets a second one, and so does an overlap along which
// the ring changes sides a third: a bridge, an object without extent, on both rings.
//
//   touch                 overlap, same side        overlap, changes sides
//   --p--h  c--           --p--h====n--c--          --p--h====n
//          \/                 clip '===='               clip '====' \--c--
//   clip ------           2 intersections           2 intersections + bridge
#include <geometry/path/path_object_polyline.h>

#include "clip/clipper.h"
#include "clip/ring_index.h"
#include "clip/ring_position.h"

namespace geometry
{

namespace
{

/// The end of an overlap of two straight segments looks like a plain crossing if its own point is new on both rings;
/// its other end is then an intersection at a vertex `n` next to it. `end`: the holder at the overlap's end on one
/// ring, `partner`: its neighbour, `segment`: the object of the overlap on the ring of `n`.
bool IsOverlapWith(CPathObjectHolder const* n, CPathObjectHolder const* segment, CPathObjectHolder const* partner)
{
    if (!n->m_IsIntersection || n->m_NewVertex || !segment->GetPathObject()->IsSingleSegment())
    {
        return false;
    }
    CPathObjectHolder const* straight = nullptr;
    if (partner->m_Next == n->m_Neighbour)
    {
        straight = partner;
    }
    else if (partner->m_Previous == n->m_Neighbour)
    {
        straight = partner->m_Previous;
    }
    return straight != nullptr && straight->GetPathObject()->IsSingleSegment() &&
           !straight->GetPathObject()->IsDegenerate();
}

bool IsEndOfStraightOverlap(CPathObjectHolder const* a, CPathObjectHolder const* b)
{
    return IsOverlapWith(a->m_Next, a, b) || IsOverlapWith(b->m_Next, b, a) ||
           IsOverlapWith(a->m_Previous, a->m_Previous, b) || IsOverlapWith(b->m_Previous, b->m_Previous, a);
}

bool IsNewOnBothRings(CPathObjectHolder const* holder)
{
    return holder->m_NewVertex && holder->m_Neighbour != nullptr && holder->m_Neighbour->m_NewVertex;
}

/// How a stage of one place ended.
enum class EStep
{
    eGoOn,      ///< this place is settled: on to the next holder
    eNextStage, ///< the following stage has to look at it
    eInconsistent
};

/// The walk over the subject ring.
class CDegenerateResolver
{
public:
    CDegenerateResolver(CPathObjectHolder* start, bool sameWinding)
        : m_Start(start), m_Holder(start), m_SameWinding(sameWinding)
    {
    }

    EResolveOutcome Run();

private:
    bool ResolveHolder();
    bool FindSideBefore();
    EStep WalkStretch();
    EStep LookBehindHolder();
    EStep ResolveJoint();
    bool NeedsBridge();
    void InsertBridge();
    bool IsBridgeCrossed() const;
    EResolveOutcome CountIntersections() const;

    CPathObjectHolder* m_Start;
    CPathObjectHolder* m_Holder; ///< where the walk stands
    bool m_SameWinding;
    bool m_HasMoved = false; ///< the stretch moved the walk on from the present holder
    EObjectPosition m_Before = EObjectPosition::eOnRing;
    EObjectPosition m_After = EObjectPosition::eOnRing;
    bool m_OnStretch = false;
};

EResolveOutcome CDegenerateResolver::Run()
{
    do
    {
        m_HasMoved = false;
        if (!ResolveHolder())
        {
            return EResolveOutcome::eInconsistent;
        }
        // a stretch may have led all the way round; the first holder itself has to be left
        if (!(m_HasMoved && m_Holder == m_Start))
        {
            m_Holder = m_Holder->m_Next;
        }
    } while (m_Holder != m_Start);
    return CountIntersections();
}

/// Settles the place at the present holder, and the stretch that begins there. False if it is inconsistent.
bool CDegenerateResolver::ResolveHolder()
{
    CPathObjectHolder* const h = m_Holder;
    if (!h->m_IsIntersection)
    {
        return true;
    }
    if (h->m_Next == h)
    {
        h->ClearIntersection();
        return true;
    }
    if (IsNewOnBothRings(h))
    {
        if (IsEndOfStraightOverlap(h, h->m_Neighbour))
        {
            h->ClearIntersection();
        }
        return true;
    }
    if (!FindSideBefore() || WalkStretch() == EStep::eInconsistent)
    {
        return false;
    }
    if (NeedsBridge())
    {
        InsertBridge();
    }
    return true;
}

/// On which side the ring comes to the present holder: looks back over whatever lies on the other ring.
bool CDegenerateResolver::FindSideBefore()
{
    CPathObjectHolder const* p = m_Holder->m_Previous;
    EObjectPosition position = ClassifyPathObject(p, m_Holder->m_Neighbour);
    while (position == EObjectPosition::eOnRing)
    {
        if (!p->HasIntersectionHistory())
        {
            return false;
        }
        if (p == m_Holder || (p->m_IsIntersection && !IsNewOnBothRings(p)))
        {
            break;
        }
        position = ClassifyPathObject(p->m_Previous, p->m_Neighbour);
        p = p->m_Previous;
    }
    m_Before = position;
    m_After = EObjectPosition::eOnRing;
    m_OnStretch = m_Before == EObjectPosition::eOnRing;
    return true;
}

/// Walks forward over whatever lies on the other ring, to the holder behind which the ring leaves it.
EStep CDegenerateResolver::WalkStretch()
{
    do
    {
        CPathObjectHolder* const h = m_Holder;
        TPoint<double> const & nextPoint = h->m_Next->GetStartPoint();
        TPoint<double> const & point = h->GetStartPoint();
        bool const hasExtent = !(IsAlmostEqual(nextPoint.x, point.x) && IsAlmostEqual(nextPoint.y, point.y));
        if (hasExtent)
        {
            if (!IsOnTrackOf(h, h->m_Neighbour) && m_Before != EObjectPosition::eOnRing)
            {
                EStep const step = LookBehindHolder();
                if (step != EStep::eNextStage)
                {
                    return step;
                }
            }
            if (ResolveJoint() == EStep::eInconsistent)
            {
                return EStep::eInconsistent;
            }
            m_OnStretch = true;
        }
        m_Holder = h->m_Next;
        m_HasMoved = true;
    } while (m_Holder != m_Start);
    return EStep::eGoOn;
}

/// The object of the present holder has no counterpart on the other ring. `eGoOn`: it leaves the other ring, and
/// `m_After` is known; `eNextStage`: the stretch goes on over it.
EStep CDegenerateResolver::LookBehindHolder()
{
    CPathObjectHolder* const h = m_Holder;
    if (!h->HasIntersectionHistory())
    {
        return EStep::eInconsistent;
    }
    m_After = ClassifyPathObject(h, h->m_Neighbour);
    if (m_After != EObjectPosition::eOnRing)
    {
        return EStep::eGoOn;
    }
    CPathObjectHolder const* const n = h->m_Next;
    if (n->m_Neighbour != nullptr)
    {
        return EStep::eNextStage;
    }
    // it lies on the other ring without a holder there to compare with: the next object tells the side
    CPathObjectBase const & object = *n->GetPathObject();
    EPointPosition position = LocatePointInRing(object.GetInbetweenPoint(), h->m_Neighbour);
    if (position == EPointPosition::eOnRing)
    {
        position = LocatePointInRing(object.GetStartPoint(), h->m_Neighbour);
    }
    if (position == EPointPosition::eOnRing && n->m_Next->m_Neighbour == nullptr)
    {
        position = LocatePointInRing(object.GetEndPoint(), h->m_Neighbour);
    }
    if (position == EPointPosition::eOnRing)
    {
        h->ClearIntersection();
        m_After = m_Before;
    }
    else
    {
        m_After = position == EPointPosition::eInside ? EObjectPosition::eInside : EObjectPosition::eOutside;
    }
    return EStep::eGoOn;
}

/// The present holder lies on the stretch: is it a joint in the middle of it, whose intersection goes?
EStep CDegenerateResolver::ResolveJoint()
{
    CPathObjectHolder* const h = m_Holder;
    if (m_Before != EObjectPosition::eOnRing)
    {
        if (m_OnStretch)
        {
            h->ClearIntersection();
        }
        return EStep::eGoOn;
    }
    if (h->m_IsIntersection)
    {
        EObjectPosition const farBefore = ClassifyPathObject(h->m_Previous->m_Previous, h->m_Neighbour);
        EObjectPosition const behind = ClassifyPathObject(h, h->m_Neighbour);
        if (farBefore == EObjectPosition::eNotApplicable || behind == EObjectPosition::eNotApplicable)
        {
            return EStep::eInconsistent;
        }
        if (farBefore != behind)
        {
            h->ClearIntersection();
        }
    }
    return EStep::eGoOn;
}

/// What the walk found, at the holder where it stopped: a touch and a stretch that changes sides need one more
/// intersection.
bool CDegenerateResolver::NeedsBridge()
{
    if (m_OnStretch && m_Holder == m_Start)
    {
        return false;
    }
    if (m_Holder->m_Neighbour == nullptr)
    {
        m_Holder->m_IsIntersection = false;
        return false;
    }
    if (!m_OnStretch)
    {
        return m_After == m_Before;
    }
    return m_After != m_Before && m_Before != EObjectPosition::eOnRing;
}

/// Whether the two pairs of holders at the point are linked crossed over rather than straight.
bool CDegenerateResolver::IsBridgeCrossed() const
{
    CPathObjectHolder const* const b = m_Holder->m_Neighbour;
    if (!m_OnStretch)
    {
        TPoint<double> const m = b->GetPathObject()->GetInbetweenPoint();
        return CrossingParity(m, m_Start) == !m_SameWinding;
    }
    return m_Holder->GetPathObject()->IsCoincidentWith(*b->m_Previous->GetPathObject()) ||
           m_Holder->m_Previous->GetPathObject()->IsCoincidentWith(*b->GetPathObject());
}

void CDegenerateResolver::InsertBridge()
{
    CPathObjectHolder* const h = m_Holder;
    CPathObjectHolder* const b = h->m_Neighbour;
    bool const isCrossed = IsBridgeCrossed();
    TPoint<double> const point = h->GetStartPoint();
    auto bridge = std::make_unique<CPathObjectPolyline>();
    bridge->AddVertex(point.x, point.y);
    bridge->AddVertex(point.x, point.y);
    std::unique_ptr<CPathObjectBase> counterpart(bridge->Clone());
    CPathObjectHolder* const x = InsertHolder(std::move(bridge), h, h->m_Previous, true);
    CPathObjectHolder* const y = InsertHolder(std::move(counterpart), b, b->m_Previous, true);
    for (CPathObjectHolder* const holder : {x, y})
    {
        holder->m_NewVertex = true;
        if (CRingIndex* const index = holder->m_Memory->GetIndex())
        {
            index->AddBridge(*holder->GetPathObject());
        }
    }
    x->m_Neighbour = isCrossed ? b : y;
    x->m_Neighbour->m_Neighbour = x;
    y->m_Neighbour = isCrossed ? h : x;
    y->m_Neighbour->m_Neighbour = y;
    if (h == m_Start)
    {
        m_Start = x;
    }
}

EResolveOutcome CDegenerateResolver::CountIntersections() const
{
    std::size_t count = 0;
    CPathObjectHolder const* holder = m_Start;
    do
    {
        count += holder->m_IsIntersection ? 1 : 0;
        holder = holder->m_Next;
    } while (holder != m_Start);
    if (count % 2 != 0)
    {
        return EResolveOutcome::eInconsistent;
    }
    return count == 0 ? EResolveOutcome::eNoIntersectionLeft : EResolveOutcome::eGoOn;
}

} // namespace

EResolveOutcome ResolveDegenerateIntersections(CPathObjectHolder* start, bool sameWinding)
{
    return CDegenerateResolver(start, sameWinding).Run();
}

} // namespace geometry
