// The frame of the clipper: reading outlines into rings, freeing them, and the order of the stages of a run.
#include "clip/clipper.h"

#include "polygon/outline_builder.h"
#include "polygon/polygon_tools.h"

namespace geometry
{

/// Appends holders to one open ring.
template <typename T>
class CPolygonClipGreinerHormannBased<T>::CGreinerHormannAddPathHelper : public CPolygonClipBase<T>::CAddPathHelper
{
public:
    CGreinerHormannAddPathHelper(CPathObjectHolder** head, CBoundingRect<double>* rect, CRingMemory & memory)
        : CAddPathHelper(head), m_Rect(rect), m_Memory(memory)
    {
    }

    void AddPathObject(CPathObjectBase const* object) override
    {
        AddHolder()->m_SharedObject = object;
        m_Rect->Include(object->GetBoundingRect());
    }

    void AddPathObject(CPathObjectBase const* object, double const & dx, double const & dy, bool correct) override
    {
        std::unique_ptr<CPathObjectBase> copy(object->Clone());
        copy->Translate(dx, dy);
        if (correct)
        {
            copy->TryToCorrectProblems();
        }
        m_Rect->Include(copy->GetBoundingRect());
        AddHolder()->m_OwnObject = copy.release();
    }

private:
    CPathObjectHolder* AddHolder()
    {
        CPathObjectHolder* const holder = MakeHolder(m_Memory);
        holder->m_Previous = m_Last;
        CPathObjectHolder*& link = m_Last != nullptr ? m_Last->m_Next : *this->m_Head;
        link = m_Last = holder;
        return m_Last;
    }

    CPathObjectHolder* m_Last = nullptr; ///< the holder added last; not owned
    CBoundingRect<double>* m_Rect;       ///< the clipper's rectangle of that ring; not owned
    CRingMemory & m_Memory;              ///< the clipper's
};

template <typename T>
CPolygonClipGreinerHormannBased<T>::~CPolygonClipGreinerHormannBased()
{
    CPolygonClipGreinerHormannBased::Clear();
}

template <typename T>
void CPolygonClipGreinerHormannBased<T>::DeleteRings()
{
    DeleteRing(m_SubjectRing);
    DeleteRing(m_ClipRing);
    m_SubjectMemory.Release();
    m_ClipMemory.Release();
}

template <typename T>
void CPolygonClipGreinerHormannBased<T>::ReleaseFold()
{
    if (m_Fold != nullptr)
    {
        m_SpareFold = std::move(m_Fold);
    }
}

template <typename T>
void CPolygonClipGreinerHormannBased<T>::Clear()
{
    delete m_Results;
    m_Results = nullptr;
    DeleteRings();
    m_ResultMemory.Release();
    ReleaseFold();
    m_Source = nullptr;
}

template <typename T>
typename CPolygonClipBase<T>::CAddPathHelper* CPolygonClipGreinerHormannBased<T>::CreateSubjectPathHelper()
{
    DeleteRing(m_SubjectRing);
    m_SubjectMemory.Release();
    m_SubjectRect.Reset();
    return new CGreinerHormannAddPathHelper(&m_SubjectRing, &m_SubjectRect, m_SubjectMemory);
}

template <typename T>
typename CPolygonClipBase<T>::CAddPathHelper* CPolygonClipGreinerHormannBased<T>::CreateClipPathHelper()
{
    DeleteRing(m_ClipRing);
    m_ClipMemory.Release();
    m_ClipRect.Reset();
    return new CGreinerHormannAddPathHelper(&m_ClipRing, &m_ClipRect, m_ClipMemory);
}

namespace
{

void CloseRing(CPathObjectHolder* first)
{
    CPathObjectHolder* last = first;
    while (last->m_Next != nullptr && last->m_Next != first)
    {
        last = last->m_Next;
    }
    last->m_Next = first;
    first->m_Previous = last;
}

} // namespace

template <typename T>
typename CPolygonClipBase<T>::EClipResult CPolygonClipGreinerHormannBased<T>::Execute()
{
    if (m_SubjectRing == nullptr || m_ClipRing == nullptr)
    {
        bool const areBothEmpty = m_SubjectRing == nullptr && m_ClipRing == nullptr;
        this->m_Status = areBothEmpty               ? this->eStatusBothEmptyOrGaveUp
                         : m_SubjectRing == nullptr ? this->eStatusSubjectEmpty
                                                    : this->eStatusClipEmpty;
        return this->eClipFailed;
    }
    CloseRing(m_SubjectRing);
    CloseRing(m_ClipRing);
    m_AreResultsFinished = false;
    EClipResult const result = DoClip();
    if (!m_AreResultsFinished)
    {
        CleanupResultRings(m_Results);
    }
    return result;
}

template <typename T>
void CPolygonClipGreinerHormannBased<T>::GetResultPolygons(std::vector<CPolygon*> & polygons)
{
    if (m_Fold != nullptr)
    {
        TakeResultPolygons(polygons);
        return;
    }
    polygons.clear();
    OwningPolygonVector made;
    std::vector<CPathObjectBase const*> objects;
    for (CLinkedPathObject const* ring = m_Results; ring != nullptr; ring = ring->m_NextRing)
    {
        objects.clear();
        for (CLinkedPathObject const* element = ring; element != nullptr; element = element->m_Next)
        {
            if (element->m_PathObject->IsValid())
            {
                objects.push_back(element->m_PathObject);
            }
        }
        if (!objects.empty())
        {
            auto polygon = std::make_unique<CPolygon>();
            CPolygonInternals::InitializeWithClones(*polygon, objects);
            PushPolygon(made, std::move(polygon));
        }
    }
    polygons.reserve(made.size());
    AppendPolygons(polygons, made);
}

template <typename T>
void CPolygonClipGreinerHormannBased<T>::AddResultPolygons(std::vector<CPolygon*> const & polygons)
{
    for (CPolygon const* polygon : polygons)
    {
        std::unique_ptr<CLinkedPathObject> ring;
        for (CPathObjectBase const* object : polygon->GetOutline())
        {
            AppendToResultRing(object, ring, true, m_ResultMemory);
        }
        SettleHead(ring.get());
        if (ring != nullptr)
        {
            ring->m_NextRing = m_Results;
            m_Results = ring.release();
        }
    }
}

template <typename T>
typename CPolygonClipBase<T>::EClipResult CPolygonClipGreinerHormannBased<T>::CopySubjectToResult()
{
    if (this->m_Operation == this->eClipDifference)
    {
        return this->eClipResultReady;
    }
    if (this->m_Operation != this->eClipIntersection && this->m_Operation != this->eClipUnion)
    {
        return this->eClipSeparate;
    }
    // all objects go into one result ring; the ring of holders may be open or closed
    std::unique_ptr<CLinkedPathObject> ring(m_Results);
    m_Results = nullptr;
    CPathObjectHolder const* holder = m_SubjectRing;
    while (holder != nullptr)
    {
        AppendToResultRing(holder->GetPathObject(), ring, true, m_ResultMemory);
        holder = holder->m_Next == m_SubjectRing ? nullptr : holder->m_Next;
    }
    SettleHead(ring.get());
    m_Results = ring.release();
    return this->eClipResultReady;
}

template <typename T>
typename CPolygonClipBase<T>::EClipResult CPolygonClipQuorvane<T>::DoClip()
{
    bool const sameWinding = this->m_SubjectWinding == this->m_ClipWinding;
    EIntersectionOutcome const outcome = FindAndSplitIntersections(this->m_SubjectRing, this->m_ClipRing, sameWinding);
    m_SubjectIndex.Serve(this->m_SubjectRing, this->m_Fold.get());
    m_ClipIndex.Serve(this->m_ClipRing, nullptr);
    switch (outcome)
    {
    case EIntersectionOutcome::eIntersections:
        return ClipCrossingRings();
    case EIntersectionOutcome::eNoIntersections:
        return ClipSeparateRings();
    case EIntersectionOutcome::eSameTrack:
        return ClipCoincidentRings();
    case EIntersectionOutcome::eInconsistent:
        break;
    }
    return this->eClipRetry;
}

namespace
{

/// Which points belong to the result of an operation.
template <typename T>
bool (*MembershipOf(typename CPolygonClipBase<T>::EClipOperation operation))(bool, bool)
{
    switch (operation)
    {
    case CPolygonClipBase<T>::eClipIntersection:
        return [](bool inSubject, bool inClip) { return inSubject && inClip; };
    case CPolygonClipBase<T>::eClipUnion:
        return [](bool inSubject, bool inClip) { return inSubject || inClip; };
    case CPolygonClipBase<T>::eClipDifference:
    case CPolygonClipBase<T>::eClipRelationOnly:
        break;
    }
    return [](bool inSubject, bool inClip) { return inSubject && !inClip; };
}

} // namespace

template <typename T>
typename CPolygonClipBase<T>::EClipResult CPolygonClipQuorvane<T>::ClipCrossingRings()
{
    this->m_Status = this->eStatusCrossing;
    if (this->m_Operation == this->eClipRelationOnly)
    {
        return this->eClipSeparate;
    }
    CPathObjectHolder* const subject = SelectStartHolder(this->m_SubjectRing);
    CPathObjectHolder* const clip = SelectStartHolder(this->m_ClipRing);
    if (subject == nullptr || clip == nullptr)
    {
        return this->eClipRetry;
    }
    switch (ResolveDegenerateIntersections(subject, this->m_SubjectWinding == this->m_ClipWinding))
    {
    case EResolveOutcome::eGoOn:
        break;
    case EResolveOutcome::eNoIntersectionLeft:
        return ClipSeparateRings();
    case EResolveOutcome::eInconsistent:
        return this->eClipRetry;
    }
    bool const invertSubject = this->m_Operation == this->eClipIntersection;
    bool const invertClip = invertSubject || this->m_Operation == this->eClipDifference;
    this->m_SubjectRing = subject;
    this->m_ClipRing = clip;
    if (MarkRing(subject, clip, invertSubject, this->m_ClipRect) != EMarkOutcome::eMarked)
    {
        return this->eClipRetry;
    }
    auto const isMember = MembershipOf<T>(this->m_Operation);
    CFold* const fold = this->m_Fold.get();
    CRegionProof proof({this->m_SubjectRect, this->m_ClipRect}, {subject, clip}, fold);
    proof.ReadClip(clip);
    m_ClipIndex.RetireFor(m_SubjectIndex);
    if (MarkRing(clip, subject, invertClip, this->m_SubjectRect) != EMarkOutcome::eMarked)
    {
        return this->eClipRetry;
    }
    proof.ReadSubject(subject, isMember);
    m_SubjectIndex.Shrink();
    bool areClosed = true;
    for (CLinkedPathObject* ring = this->m_Results; ring != nullptr; ring = ring->m_NextRing)
    {
        areClosed = FinishResultRing(ring, proof) && areClosed; // was there before
    }
    bool const isTraced = TraceResultRings(subject, clip, this->m_Results, this->m_ResultMemory, proof);
    this->m_AreResultsFinished = true;
    if (!isTraced || !areClosed)
    {
        return this->eClipRetry;
    }
    if (fold != nullptr && !AreRunsInPlace(this->m_Results, *fold, isMember(true, false)))
    {
        fold->Fail();
        return this->eClipRetry;
    }
    if (!proof.Holds())
    {
        return this->eClipRetry;
    }
    this->DeleteRings();
    return this->eClipResultReady;
}

namespace
{

/// The other ring has cut or touched this one.
bool HaveMet(CPathObjectHolder const* ring)
{
    CPathObjectHolder const* holder = ring;
    do
    {
        if (holder->HasIntersectionHistory() || holder->m_NewVertex)
        {
            return true;
        }
        holder = holder->m_Next;
    } while (holder != ring);
    return false;
}

bool Agrees(ESeparateOutcome outcome, TRelation const & relation)
{
    switch (outcome)
    {
    case ESeparateOutcome::eSubjectInsideClip:
        return !relation.isAnyInSubjectOnly;
    case ESeparateOutcome::eClipInsideSubject:
        return !relation.isAnyInClipOnly;
    case ESeparateOutcome::eSeparate:
    case ESeparateOutcome::eOnEachOther:
        break;
    }
    return !relation.isAnyInBoth;
}

} // namespace

template <typename T>
typename CPolygonClipBase<T>::EClipResult CPolygonClipQuorvane<T>::ClipSeparateRings()
{
    ESeparateOutcome const outcome = ClassifySeparateRings(this->m_SubjectRing, this->m_ClipRing);
    auto const sideOf = [outcome](ESeparateOutcome inside)
    { return outcome == inside ? EPointPosition::eInside : EPointPosition::eOutside; };
    if (!IsWhollyOnSide(this->m_SubjectRing, this->m_ClipRing, this->m_ClipRect,
                        sideOf(ESeparateOutcome::eSubjectInsideClip)) ||
        !IsWhollyOnSide(this->m_ClipRing, this->m_SubjectRing, this->m_SubjectRect,
                        sideOf(ESeparateOutcome::eClipInsideSubject)))
    {
        return this->eClipRetry;
    }
    if (HaveMet(this->m_SubjectRing) || HaveMet(this->m_ClipRing) || outcome == ESeparateOutcome::eOnEachOther)
    {
        // points of the outlines themselves may be judged by tolerance alone
        TRelation const relation = FindRelation(this->m_SubjectRing, this->m_ClipRing);
        if (relation.IsSame())
        {
            return ClipCoincidentRings();
        }
        if (!Agrees(outcome, relation))
        {
            return this->eClipRetry;
        }
    }
    switch (outcome)
    {
    case ESeparateOutcome::eSubjectInsideClip:
        this->m_Status = this->eStatusSubjectInsideClip;
        return this->eClipSubjectInsideClip;
    case ESeparateOutcome::eClipInsideSubject:
        this->m_Status = this->eStatusClipInsideSubject;
        return this->eClipClipInsideSubject;
    case ESeparateOutcome::eSeparate:
    case ESeparateOutcome::eOnEachOther:
        break;
    }
    this->m_Status = this->eStatusSeparate;
    return this->eClipSeparate;
}

template <typename T>
typename CPolygonClipBase<T>::EClipResult CPolygonClipQuorvane<T>::ClipCoincidentRings()
{
    this->m_Status = this->eStatusCoincident;
    if (this->m_Fold != nullptr)
    {
        this->m_Fold->Fail(); // what is far can't coincide
        return this->eClipRetry;
    }
    return this->m_Operation == this->eClipRelationOnly ? this->eClipResultReady : this->CopySubjectToResult();
}

template class CPolygonClipGreinerHormannBased<double>;
template class CPolygonClipQuorvane<double>;

CPolygonClipBase<double>* CreateClipper()
{
    return new CPolygonClipQuorvane<double>;
}

} // namespace geometry
