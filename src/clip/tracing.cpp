// Tracing: walks the marked rings, changing ring at each intersection, and collects the objects passed into result
// rings: pieces themselves, and clones of what isn't cut. Each object goes in at the head, so a result ring runs
// against the walk; pieces of one kind that meet become one object.
#include <memory>
#include <typeinfo>
#include <utility>

#include "clip/clipper.h"
#include "clip/ring_position.h"
#include "path/polyline_internals.h"

namespace geometry
{

namespace
{

struct TDeleteIfOwned
{
    bool isOwned = true;
    void operator()(CPathObjectBase* object) const
    {
        if (isOwned)
        {
            delete object;
        }
    }
};
/// On its way into a result ring: its own, or borrowed.
using TakenObject = std::unique_ptr<CPathObjectBase, TDeleteIfOwned>;

/// A new element with `object` at the head of `ring`, which may be null.
void PutBeforeResultRing(TakenObject object, std::unique_ptr<CLinkedPathObject> & ring, CResultMemory & memory)
{
    SettleHead(ring.get());
    std::unique_ptr<CLinkedPathObject> element(new (memory) CLinkedPathObject(object.get()));
    element->m_IsBorrowed = !object.get_deleter().isOwned;
    object.release();
    if (ring != nullptr)
    {
        element->m_Previous = ring->m_Previous;
        if (element->m_Previous != nullptr)
        {
            element->m_Previous->m_Next = element.get();
        }
        ring->m_Previous = element.get();
        element->m_Next = ring.release();
    }
    ring = std::move(element);
}

/// Joins a polyline to one at the head of the ring if that takes no more than their vertices. They are appended to the
/// head in reverse, so that a ring of many pieces isn't copied for each of them.
bool GrowHead(CPathObjectBase const & object, CLinkedPathObject & head, bool reverse)
{
    CPathObjectBase const & present = *head.m_PathObject;
    if (!object.CanAppendVertex() || !present.CanAppendVertex() || !object.IsValid() || !present.IsValid() ||
        object.GetUserInfo() != nullptr || present.GetUserInfo() != nullptr)
    {
        return false;
    }
    TPoint<double> const & end = reverse ? object.GetStartPoint() : object.GetEndPoint();
    if (!(end == (head.m_IsBackward ? present.GetEndPoint() : present.GetStartPoint())))
    {
        return false;
    }
    CPathObjectBase & old = *head.OwnObject();
    if (!head.m_IsBackward)
    {
        old.Reverse();
        head.m_IsBackward = true;
    }
    head.m_Place = NoPlace;
    CPolylineInternals::ContinueWith(static_cast<CPathObjectPolyline &>(old),
                                     static_cast<CPathObjectPolyline const &>(object), !reverse);
    return true;
}

} // namespace

void SettleHead(CLinkedPathObject* ring)
{
    if (ring != nullptr && ring->m_IsBackward)
    {
        ring->m_PathObject->Reverse();
        ring->m_IsBackward = false;
    }
}

namespace
{

/// As `AppendToResultRing`; `take` makes the object that goes into the ring if it doesn't end up in one that is there.
/// True if it stands there by itself.
template <typename Take>
bool AppendTaken(CPathObjectBase const* object, std::unique_ptr<CLinkedPathObject> & ring, bool reverse,
                 CResultMemory & memory, Take const & take)
{
    if (object == nullptr ||
        (object->GetStartPoint() == object->GetEndPoint() && object->GetInbetweenPoint() == object->GetStartPoint()))
    {
        return false; // a bridge, or another object without extent
    }
    if (ring != nullptr && ring->m_Run == nullptr && GrowHead(*object, *ring, reverse))
    {
        return false;
    }
    TakenObject taken = take();
    if (reverse)
    {
        taken->Reverse();
    }
    if (ring != nullptr && ring->m_Run == nullptr)
    {
        SettleHead(ring.get());
        if (CPathObjectBase* const joined = taken->Append(ring->m_PathObject))
        {
            ring->TakeObject(joined);
            return false;
        }
    }
    PutBeforeResultRing(std::move(taken), ring, memory);
    return true;
}

} // namespace

void AppendToResultRing(CPathObjectBase const* object, std::unique_ptr<CLinkedPathObject> & ring, bool reverse,
                        CResultMemory & memory)
{
    AppendTaken(object, ring, reverse, memory, [&] { return TakenObject(object->Clone()); });
}

void CloseResultRing(CLinkedPathObject* ring)
{
    SettleHead(ring);
    if (ring->m_Next == nullptr || ring->m_Run != nullptr)
    {
        return;
    }
    CLinkedPathObject* last = ring->m_Next;
    while (last->m_Next != nullptr)
    {
        last = last->m_Next;
    }
    CPathObjectBase* const joined = last->m_Run == nullptr ? last->m_PathObject->Append(ring->m_PathObject) : nullptr;
    if (joined != nullptr)
    {
        ring->TakeObject(joined);
        delete last;
    }
}

bool AreRunsInPlace(CLinkedPathObject const* results, CFold const & fold, bool isSubjectKept)
{
    auto const & runs = fold.GetRuns();
    std::vector<bool> isThere(runs.size(), false);
    std::size_t count = 0;
    for (CLinkedPathObject const* ring = results; ring != nullptr; ring = ring->m_NextRing)
    {
        for (CLinkedPathObject const* element = ring; element != nullptr; element = element->m_Next)
        {
            if (element->m_Run == nullptr)
            {
                continue;
            }
            auto const index = static_cast<std::size_t>(element->m_Run - runs.data());
            if (isThere[index] || element->m_Previous == nullptr || element->m_Next == nullptr)
            {
                return false;
            }
            isThere[index] = true;
            ++count;
        }
    }
    return count == (isSubjectKept ? runs.size() : 0);
}

namespace
{

void CleanupElement(CLinkedPathObject & element)
{
    bool const isAlone = element.m_Next == nullptr && element.m_Previous == nullptr;
    if (element.m_Run == nullptr && !element.m_IsBorrowed) // nothing is to be cleaned of one that is
    {
        element.m_PathObject->Cleanup(isAlone);
    }
}

} // namespace

bool FinishResultRing(CLinkedPathObject* ring, CRegionProof & proof)
{
    TPoint<double> const start = ring->m_PathObject->GetStartPoint();
    bool isClosed = false;
    for (CLinkedPathObject* element = ring; element != nullptr; element = element->m_Next)
    {
        isClosed = element->m_Next == nullptr && element->m_PathObject->GetEndPoint() == start;
        proof.Count(*element);
        CleanupElement(*element);
    }
    return isClosed;
}

void CleanupResultRings(CLinkedPathObject* results)
{
    for (CLinkedPathObject* ring = results; ring != nullptr; ring = ring->m_NextRing)
    {
        for (CLinkedPathObject* element = ring; element != nullptr; element = element->m_Next)
        {
            CleanupElement(*element);
        }
    }
}

namespace
{

/// Cleaning up finds nothing to do, and nobody counts the clones.
bool IsAlwaysClean(CPathObjectBase const & object)
{
    return object.GetUserInfo() == nullptr &&
           (!object.CanAppendVertex() ||
            (object.IsSingleSegment() && !(object.GetStartPoint() == object.GetEndPoint())));
}

/// The object that only the holder has, or what is in it.
std::unique_ptr<CPathObjectBase> TakeFrom(CPathObjectHolder & holder)
{
    CPathObjectBase & object = *holder.m_OwnObject;
    if (object.CanAppendVertex() && typeid(object) == typeid(CBorrowingPolyline))
    {
        return CPolylineInternals::TakeOver(static_cast<CPathObjectPolyline &>(object));
    }
    return std::unique_ptr<CPathObjectBase>(std::exchange(holder.m_OwnObject, nullptr));
}

/// The objects that `holder` stands for, at the head of `ring`. A piece that only the holder has goes there itself: a
/// walk passes each holder once. One with a user info is cloned, as its owner may count the clones. An object of a
/// folded outline, which may become part of the result, is borrowed until that is certain.
void AppendHolderToResultRing(CPathObjectHolder* holder, std::unique_ptr<CLinkedPathObject> & ring, bool reverse,
                              CResultMemory & memory)
{
    if (holder->m_Run == nullptr)
    {
        CPathObjectBase const* const object = holder->GetPathObject();
        bool const isPiece = holder->m_OwnObject != nullptr && object->GetUserInfo() == nullptr;
        bool const isShared = holder->m_OwnObject == nullptr;
        bool const isBorrowed = isShared && !reverse && holder->m_Place != NoPlace && IsAlwaysClean(*object);
        auto const take = [&]
        {
            return isBorrowed ? TakenObject(const_cast<CPathObjectBase*>(object), TDeleteIfOwned{false})
                              : TakenObject(isPiece ? TakeFrom(*holder).release() : object->Clone());
        };
        if (AppendTaken(object, ring, reverse, memory, take) && isShared)
        {
            ring->m_Place = holder->m_Place;
            ring->m_IsOfFirst = holder->m_IsOfFirst;
            ring->m_IsReversed = reverse;
        }
        return;
    }
    TPoint<double> const & start = holder->GetStartPoint();
    TPoint<double> const & end = holder->GetPathObject()->GetEndPoint();
    PutBeforeResultRing(TakenObject(new (memory) CBorrowingPolyline(reverse ? end : start, reverse ? start : end)),
                        ring, memory);
    ring->m_Run = holder->m_Run;
    ring->m_IsReversed = reverse;
}

/// How many holders the objects of `holder` would be, one each.
std::size_t StepsOf(CPathObjectHolder const* holder)
{
    return holder->m_Run == nullptr ? 1 : holder->m_Run->last - holder->m_Run->first;
}

std::size_t CountSteps(CPathObjectHolder const* ring)
{
    std::size_t count = 0;
    CPathObjectHolder const* holder = ring;
    do
    {
        count += StepsOf(holder);
        holder = holder->m_Next;
    } while (holder != ring);
    return count;
}

/// Traces one result ring from `g` until the walk comes to a holder that was visited. False if it leads nowhere: an
/// intersection without a neighbour, or more steps than there are holders.
bool TraceRing(CPathObjectHolder* g, std::size_t stepsLeft, std::unique_ptr<CLinkedPathObject> & ring,
               CResultMemory & memory)
{
    while (!g->m_Visited)
    {
        bool const isForward = g->m_Direction == eWalkForward;
        do
        {
            if (StepsOf(g) > stepsLeft)
            {
                return false;
            }
            stepsLeft -= StepsOf(g);
            if (isForward)
            {
                AppendHolderToResultRing(g, ring, true, memory);
            }
            g->m_Visited = true;
            g = isForward ? g->m_Next : g->m_Previous;
            if (!isForward)
            {
                AppendHolderToResultRing(g, ring, false, memory);
            }
        } while (!g->m_IsIntersection);
        g->m_Visited = true;
        g = g->m_Neighbour;
        if (g == nullptr)
        {
            return false;
        }
    }
    return true;
}

} // namespace

bool TraceResultRings(CPathObjectHolder* subjectRing, CPathObjectHolder* clipRing, CLinkedPathObject*& results,
                      CResultMemory & memory, CRegionProof & proof)
{
    bool areClosed = true;
    std::size_t const holders = CountSteps(subjectRing) + CountSteps(clipRing);
    for (CPathObjectHolder* g = subjectRing->m_Next; g != subjectRing; g = g->m_Next)
    {
        if (!g->m_IsIntersection || g->m_Visited || g->m_Direction == eWalkUnmarked)
        {
            continue;
        }
        std::unique_ptr<CLinkedPathObject> ring;
        bool const isTraced = TraceRing(g, holders, ring, memory);
        if (ring != nullptr)
        {
            CloseResultRing(ring.get());
            areClosed = FinishResultRing(ring.get(), proof) && areClosed;
            ring->m_NextRing = results;
            results = ring.release();
        }
        if (!isTraced)
        {
            return false;
        }
    }
    return areClosed;
}

namespace
{

/// The position of the first test point of `ring` that is off `other`; `eOnRing` if there is none.
EPointPosition LocateRing(CPathObjectHolder const* ring, CPathObjectHolder const* other)
{
    CPathObjectHolder const* holder = ring;
    do
    {
        CPathObjectBase const & object = *holder->GetPathObject();
        bool const mayLieOnOther = holder->HasIntersectionHistory() || holder->m_NewVertex;
        TPoint<double> const inbetween = object.GetInbetweenPoint();
        EPointPosition position = LocatePointInRing(mayLieOnOther ? inbetween : object.GetStartPoint(), other);
        if (position == EPointPosition::eOnRing && !mayLieOnOther)
        {
            position = LocatePointInRing(inbetween, other);
        }
        if (position != EPointPosition::eOnRing)
        {
            return position;
        }
        holder = holder->m_Next;
    } while (holder != ring);
    return EPointPosition::eOnRing;
}

} // namespace

ESeparateOutcome ClassifySeparateRings(CPathObjectHolder const* subjectRing, CPathObjectHolder const* clipRing)
{
    if (subjectRing == nullptr || clipRing == nullptr)
    {
        return ESeparateOutcome::eSeparate;
    }
    EPointPosition const ofSubject = LocateRing(subjectRing, clipRing);
    if (ofSubject == EPointPosition::eInside)
    {
        return ESeparateOutcome::eSubjectInsideClip;
    }
    EPointPosition const ofClip = LocateRing(clipRing, subjectRing);
    if (ofClip == EPointPosition::eInside)
    {
        return ESeparateOutcome::eClipInsideSubject;
    }
    bool const areOnEachOther = ofSubject == EPointPosition::eOnRing && ofClip == EPointPosition::eOnRing;
    return areOnEachOther ? ESeparateOutcome::eOnEachOther : ESeparateOutcome::eSeparate;
}

} // namespace geometry
