// Runs with a folded subject: reading it, and unfolding what came of it.
#include <algorithm>
#include <cmath>
#include <utility>

#include "clip/attempts.h"
#include "clip/clipper.h"
#include "path/polyline_internals.h"
#include "polygon/area.h"
#include "polygon/outline_builder.h"
#include "polygon/outline_facts.h"
#include "polygon/polygon_tools.h"

namespace geometry
{

namespace
{

using AddPathHelper = CPolygonClipBase<double>::CAddPathHelper;

int WindingOf(CPolygon const & polygon)
{
    return CPolygonInternals::GetWindingDirection(polygon) == CPolygon::eWindingNegative ? 0 : 1;
}

bool AddObject(CPathObjectBase const* object, AddPathHelper & helper, TPoint<double> const* shift)
{
    if (!object->IsValid())
    {
        return false;
    }
    if (shift != nullptr)
    {
        helper.AddPathObject(object, shift->x, shift->y, false);
    }
    else
    {
        helper.AddPathObject(object);
    }
    return true;
}

/// A polygon accepts all valid objects of the ring as they are.
bool IsConnected(CLinkedPathObject const* ring)
{
    CPathObjectBase const* first = nullptr;
    CPathObjectBase const* last = nullptr;
    for (CLinkedPathObject const* element = ring; element != nullptr; element = element->m_Next)
    {
        CPathObjectBase const* const object = element->m_PathObject;
        if (object->IsValid())
        {
            if (last != nullptr && !(object->GetStartPoint() == last->GetEndPoint()))
            {
                return false;
            }
            first = first != nullptr ? first : object;
            last = object;
        }
    }
    return last == nullptr || last->GetEndPoint() == first->GetStartPoint();
}

bool AreConnected(CLinkedPathObject const* results)
{
    CLinkedPathObject const* ring = results;
    while (ring != nullptr && IsConnected(ring))
    {
        ring = ring->m_NextRing;
    }
    return ring == nullptr;
}

} // namespace

/// Both outlines, as an attempt with this shift reads them, but the runs of the fold as one holder each.
template <typename T>
void CPolygonClipGreinerHormannBased<T>::ReadFolded(CPolygon const & first, TPoint<double> const* shift)
{
    std::unique_ptr<CAddPathHelper> const clipHelper(CreateClipPathHelper());
    std::unique_ptr<CAddPathHelper> const subjectHelper(CreateSubjectPathHelper());
    auto const placeAt = [](std::size_t i) { return static_cast<std::uint32_t>(std::min<std::size_t>(i, NoPlace)); };
    CPathObjectHolder* last = nullptr; // of the clip ring
    for (std::size_t i = 0; i < first.GetOutline().size(); ++i)
    {
        if (AddObject(first.GetOutline()[i], *clipHelper, shift))
        {
            last = last != nullptr ? last->m_Next : m_ClipRing;
            last->m_Place = placeAt(i);
            last->m_IsOfFirst = true;
        }
    }
    TPoint<double> const nowhere(0.0, 0.0);
    auto const & outline = m_Fold->GetPolygon().GetOutline();
    auto run = m_Fold->GetRuns().begin();
    last = nullptr; // of the subject ring
    for (std::size_t i = 0; i < outline.size();)
    {
        bool const isRun = run != m_Fold->GetRuns().end() && run->first == i;
        if (isRun)
        {
            subjectHelper->AddPathObject(outline[i]); // it lies in the rectangle of the run
            m_SubjectRect.Include(run->rect);
        }
        if (isRun || AddObject(outline[i], *subjectHelper, shift != nullptr ? &nowhere : nullptr))
        {
            last = last != nullptr ? last->m_Next : m_SubjectRing;
            if (isRun)
            {
                // a segment stands for a run where its ends are asked for
                last->TakeObject(new (m_SubjectMemory.GetPieces()) CBorrowingPolyline(
                    outline[i]->GetStartPoint(), outline[run->last - 1]->GetEndPoint()));
                last->m_Run = &*run;
            }
            last->m_Place = placeAt(i);
        }
        i = isRun ? run++->last : i + 1;
    }
    this->m_ClipWinding = WindingOf(first);
    this->m_SubjectWinding = WindingOf(m_Fold->GetPolygon());
}

template <typename T>
typename CPolygonClipBase<T>::EClipResult CPolygonClipGreinerHormannBased<T>::RunFoldedClip(CPolygon const & first,
                                                                                            CPolygon & second)
{
    if (CFold::MayFold(second))
    {
        CPolygonInternals::CompleteFacts(second);
    }
    EClipResult const result = RunFolded(first, second);
    m_Source = &second;
    return result;
}

template <typename T>
typename CPolygonClipBase<T>::EClipResult
CPolygonClipGreinerHormannBased<T>::RunFoldedIntersection(CPolygon const & first, CPolygon const & second)
{
    this->SetOperation(this->eClipIntersection);
    return RunFolded(first, second);
}

template <typename T>
typename CPolygonClipBase<T>::EClipResult CPolygonClipGreinerHormannBased<T>::RunFolded(CPolygon const & first,
                                                                                        CPolygon const & second)
{
    this->m_Attempts = 0;
    for (int attempt = 0; attempt < FirstRepairingAttempt; ++attempt)
    {
        TPoint<double> const shift = attempt > 0 ? ShiftOfAttempt(first.GetBoundingRect(), attempt) : TPoint<double>();
        TPoint<double> const* const shiftIfAny = attempt > 0 ? &shift : nullptr;
        Clear();
        m_Fold = CFold::Make(second, first, shiftIfAny, m_SpareFold);
        if (m_Fold == nullptr)
        {
            break;
        }
        ++this->m_Attempts;
        ReadFolded(first, shiftIfAny);
        if (!m_Fold->IsInWindow(TPoint<double>(m_ClipRect.minX, m_ClipRect.minY)) ||
            !m_Fold->IsInWindow(TPoint<double>(m_ClipRect.maxX, m_ClipRect.maxY)))
        {
            break; // moved, a short arc of few digits may turn into the rest of its circle
        }
        this->m_LargestShift = std::max(this->m_LargestShift, std::hypot(shift.x, shift.y));
        EClipResult const result = Execute();
        if (m_Fold->HasFailed() || !AreConnected(m_Results))
        {
            break;
        }
        if (result != this->eClipRetry)
        {
            return result;
        }
    }
    return this->RunClip(first, second);
}

template <typename T>
double CPolygonClipGreinerHormannBased<T>::GetResultLength()
{
    COutlineFacts const & facts = CPolygonInternals::FactsOf(m_Fold->GetPolygon());
    auto const lengthOf = [&](CLinkedPathObject const & element)
    {
        std::uint32_t const place = element.PlaceOfFacts();
        TObjectFacts const known = place != NoPlace ? facts.GetFacts(place, false) : TObjectFacts();
        return known.isSteady ? known.length : element.m_PathObject->CalculateLength();
    };
    double length = 0.0;
    for (CLinkedPathObject* ring = m_Results; ring != nullptr; ring = ring->m_NextRing)
    {
        for (CLinkedPathObject* element = ring; element != nullptr; element = element->m_Next)
        {
            element->m_Length = element->m_Run == nullptr ? lengthOf(*element) : 0.0;
            length += element->m_Length;
        }
    }
    return length;
}

namespace
{

/// The valid objects of a ring, to be taken from it.
class CRingObjects
{
public:
    explicit CRingObjects(CLinkedPathObject* ring) : m_Ring(ring)
    {
        std::size_t count = 0;
        for (CLinkedPathObject const* element = ring; element != nullptr; element = element->m_Next)
        {
            ++count;
        }
        m_Objects.reserve(count);
        for (CLinkedPathObject* element = ring; element != nullptr; element = element->m_Next)
        {
            if (element->m_PathObject->IsValid())
            {
                Add(element->OwnObject());
            }
        }
        m_IsConnected = m_IsConnected && !m_Objects.empty() &&
                        m_Objects.back()->GetEndPoint() == m_Objects.front()->GetStartPoint();
    }

    std::size_t GetCount() const { return m_Objects.size(); }
    /// A polygon accepts them as they are.
    bool IsConnected() const { return m_IsConnected; }

    /// The ring owns them no more.
    CPolygon::PathObjects Take()
    {
        std::size_t taken = 0;
        for (CLinkedPathObject* element = m_Ring; taken < m_Objects.size(); element = element->m_Next)
        {
            if (element->m_PathObject == m_Objects[taken])
            {
                element->m_PathObject = nullptr;
                ++taken;
            }
        }
        return std::move(m_Objects);
    }
    CBoundingRect<double> const & GetRect() const { return m_Rect; }

private:
    void Add(CPathObjectBase* object)
    {
        m_IsConnected =
            m_IsConnected && (m_Objects.empty() || object->GetStartPoint() == m_Objects.back()->GetEndPoint());
        m_Objects.push_back(object);
        m_Rect.Include(object->GetBoundingRect());
    }

    CLinkedPathObject* m_Ring; ///< not owned
    CPolygon::PathObjects m_Objects;
    CBoundingRect<double> m_Rect;
    bool m_IsConnected = true;
};

/// Null without a valid object.
std::unique_ptr<CPolygon> TakePlainRing(CLinkedPathObject* ring)
{
    CRingObjects objects(ring);
    if (objects.GetCount() == 0)
    {
        return nullptr;
    }
    if (!objects.IsConnected())
    {
        OwnedPathObjects owned;
        owned.reserve(objects.GetCount()); // no exception leaves before all are owned
        for (CPathObjectBase* object : objects.Take())
        {
            owned.emplace_back(object);
        }
        return MakePolygonFrom(std::move(owned));
    }
    auto polygon = std::make_unique<CPolygon>();
    CPolygonInternals::AdoptOutline(*polygon, objects.Take(), objects.GetRect(), CPolygon::eWindingUnknown, nullptr);
    return polygon;
}

/// The runs whose objects polygons of the result have taken over. When it goes, the outline that they come from goes,
/// too, and leaves its memory to the outline of the next result.
class CTakenRuns
{
public:
    CTakenRuns(CPolygon & source, TSpareOutline & spare) : m_Source(source), m_Spare(spare) {}
    CTakenRuns(CTakenRuns const &) = delete;
    CTakenRuns & operator=(CTakenRuns const &) = delete;

    ~CTakenRuns()
    {
        std::sort(m_Runs.begin(), m_Runs.end()); // as they stand in the fold
        auto & outline = CPolygonInternals::OutlineOf(m_Source);
        std::size_t kept = 0;
        for (TFoldedRun const* run : m_Runs)
        {
            DeleteObjects(outline, kept, run->first);
            kept = run->last;
        }
        DeleteObjects(outline, kept, outline.size());
        outline.clear();
        m_Spare.objects.swap(outline);
        m_Spare.facts = CPolygonInternals::TakeFacts(m_Source);
        CPolygonInternals::ClearOutline(m_Source);
    }

    /// An empty outline with room for `count` objects, and for what the next steps may add.
    CPolygon::PathObjects MakeOutline(std::size_t count)
    {
        CPolygon::PathObjects outline;
        outline.swap(m_Spare.objects);
        if (outline.capacity() < count)
        {
            outline.reserve(count + count / 2);
        }
        return outline;
    }

    /// No facts yet, with memory for those of `count` objects.
    std::shared_ptr<COutlineFacts> MakeFacts(TPoint<double> const & origin, std::size_t count)
    {
        std::shared_ptr<COutlineFacts> facts = std::move(m_Spare.facts);
        if (facts != nullptr && facts.use_count() == 1)
        {
            facts->Restart(origin);
        }
        else
        {
            facts = std::make_shared<COutlineFacts>(origin);
        }
        facts->Reserve(count);
        return facts;
    }

    /// So that runs can be added without an exception.
    void Reserve(std::size_t count) { m_Runs.reserve(m_Runs.size() + count); }
    void Add(TFoldedRun const & run) { m_Runs.push_back(&run); }

private:
    static void DeleteObjects(CPolygon::PathObjects & outline, std::size_t first, std::size_t last)
    {
        for (std::size_t i = first; i < last; ++i)
        {
            delete outline[i];
        }
    }

    CPolygon & m_Source;
    TSpareOutline & m_Spare;
    std::vector<TFoldedRun const*> m_Runs;
};

/// One result ring on its way into a polygon, which gets the objects of its runs from the outline that was folded.
class CRingUnfolder
{
public:
    /// `first`: the outline that `source` was clipped with, if its objects may be moved; or null.
    CRingUnfolder(CFold const & fold, CPolygon & source, CPolygon* first)
        : m_Source(source), m_First(first), m_IsShifted(fold.IsShifted()),
          m_SourceFacts(CPolygonInternals::FactsOf(m_Source))
    {
    }

    std::unique_ptr<CPolygon> TakeRing(CLinkedPathObject* ring, CTakenRuns & taken);

private:
    static constexpr std::size_t Nowhere = static_cast<std::size_t>(-1);

    void AddObject(CLinkedPathObject const & element);
    void AddRun(TFoldedRun const & run, bool isReversed);
    void Continue(std::size_t first, std::size_t last, bool isApart);
    CPolygon::EPolygonWinding FindWinding() const;

    CPolygon & m_Source;
    CPolygon* m_First;
    bool m_IsShifted;
    COutlineFacts & m_SourceFacts;
    CPolygon::PathObjects m_Objects; ///< not owned
    std::shared_ptr<COutlineFacts> m_Facts;
    CBoundingRect<double> m_Rect;
    double m_Area = 0.0;
    bool m_HasArc = false;
    std::size_t m_ApartAt = Nowhere; ///< the object there, if it comes next, is apart from the one before it
};

/// The objects of the source from `first` to before `last` come next, in their order. The last one is apart from that
/// behind it, if `isApart`.
void CRingUnfolder::Continue(std::size_t first, std::size_t last, bool isApart)
{
    if (m_ApartAt == first)
    {
        m_Facts->CloseJoint();
    }
    m_ApartAt = isApart ? last : Nowhere;
}

/// What is known of an object that was cloned for the result goes on to hold, if cleaning up has left it alone.
void CRingUnfolder::AddObject(CLinkedPathObject const & element)
{
    CPathObjectBase* const object = element.m_PathObject;
    m_Objects.push_back(object);
    TObjectFacts facts;
    std::uint32_t const place = element.PlaceOfFacts();
    if (place != NoPlace)
    {
        facts = m_SourceFacts.GetFacts(place, element.m_IsReversed);
    }
    bool const isAsItWas = facts.isSteady && !element.m_IsReversed;
    Continue(isAsItWas ? place : Nowhere - 1, isAsItWas ? std::size_t{place} + 1 : Nowhere, facts.isApart);
    if (facts.isSteady)
    {
        m_Facts->AppendClone(facts);
    }
    else
    {
        facts = m_Facts->Append(*object, element.m_Length);
    }
    m_Rect.Include(facts.rect);
    m_Area += facts.length > 0.0 ? facts.area : SignedAreaTo(*object, m_Facts->GetOrigin());
    m_HasArc = m_HasArc || facts.isArc;
}

/// The objects of the run, turned round if need be. What is known of them goes on to hold.
void CRingUnfolder::AddRun(TFoldedRun const & run, bool isReversed)
{
    auto const & outline = m_Source.GetOutline();
    if (m_IsShifted)
    {
        m_SourceFacts.MoveByNothing(outline, run.first, run.last);
    }
    std::size_t const begin = m_Objects.size();
    m_Objects.insert(m_Objects.end(), outline.begin() + static_cast<std::ptrdiff_t>(run.first),
                     outline.begin() + static_cast<std::ptrdiff_t>(run.last));
    if (isReversed)
    {
        std::reverse(m_Objects.begin() + static_cast<std::ptrdiff_t>(begin), m_Objects.end());
        for (std::size_t i = begin; i < m_Objects.size(); ++i)
        {
            m_Objects[i]->Reverse();
        }
    }
    Continue(isReversed ? Nowhere - 1 : run.first, run.last,
             !isReversed && m_SourceFacts.GetFacts(run.last - 1, false).isApart);
    m_Facts->AppendRun(m_SourceFacts, run.first, run.last, isReversed);
    m_Rect.Include(run.rect);
    m_Area += isReversed ? -run.area : run.area;
    m_HasArc = m_HasArc || run.hasArc;
}

/// By the area, if it is so clear of zero that the polygon itself would come to the same.
CPolygon::EPolygonWinding CRingUnfolder::FindWinding() const
{
    double const width = m_Rect.maxX - m_Rect.minX;
    double const height = m_Rect.maxY - m_Rect.minY;
    double const rounding = m_Facts->GetAreaRounding(m_Rect);
    if (!m_HasArc || !(std::fabs(m_Area) > 2e-9 * width * height + rounding))
    {
        return CPolygon::eWindingUnknown;
    }
    return m_Area < 0.0 ? CPolygon::eWindingNegative : CPolygon::eWindingPositive;
}

std::unique_ptr<CPolygon> CRingUnfolder::TakeRing(CLinkedPathObject* ring, CTakenRuns & taken)
{
    std::size_t count = 0;
    std::size_t runs = 0;
    for (CLinkedPathObject const* element = ring; element != nullptr; element = element->m_Next)
    {
        count += element->m_Run != nullptr ? element->m_Run->last - element->m_Run->first : 1;
        runs += element->m_Run != nullptr ? 1 : 0;
    }
    if (runs == 0)
    {
        return TakePlainRing(ring);
    }
    for (CLinkedPathObject* element = ring; element != nullptr && m_First == nullptr; element = element->m_Next)
    {
        if (element->m_IsOfFirst)
        {
            element->OwnObject();
        }
    }
    taken.Reserve(runs);
    m_Objects = taken.MakeOutline(count + 1);
    m_Facts = taken.MakeFacts(m_SourceFacts.GetOrigin(), count);
    auto polygon = std::make_unique<CPolygon>();
    for (CLinkedPathObject const* element = ring; element != nullptr; element = element->m_Next)
    {
        if (element->m_Run != nullptr)
        {
            AddRun(*element->m_Run, element->m_IsReversed);
        }
        else if (element->m_PathObject->IsValid())
        {
            AddObject(*element);
        }
    }
    m_Facts->Complete(m_Objects);
    CPolygon::EPolygonWinding const winding = FindWinding();
    CPolygonInternals::AdoptOutline(*polygon, std::move(m_Objects), m_Rect, winding, std::move(m_Facts));
    for (CLinkedPathObject* element = ring; element != nullptr; element = element->m_Next)
    {
        if (element->m_Run != nullptr)
        {
            taken.Add(*element->m_Run);
        }
        else if (element->m_PathObject->IsValid())
        {
            if (element->m_IsBorrowed)
            {
                CPolygon & owner = element->m_IsOfFirst ? *m_First : m_Source;
                CPolygonInternals::OutlineOf(owner)[element->m_Place] = nullptr;
            }
            element->m_PathObject = nullptr;
        }
    }
    return polygon;
}

} // namespace

template <typename T>
void CPolygonClipGreinerHormannBased<T>::TakeResultPolygons(std::vector<CPolygon*> & polygons)
{
    bool hasUserInfo = false; // whose clones the user may count
    for (CLinkedPathObject const* ring = m_Results; ring != nullptr; ring = ring->m_NextRing)
    {
        for (CLinkedPathObject const* element = ring; element != nullptr; element = element->m_Next)
        {
            hasUserInfo = hasUserInfo || element->m_PathObject->GetUserInfo() != nullptr;
        }
    }
    if (hasUserInfo)
    {
        GetResultPolygons(polygons);
        return;
    }
    polygons.clear();
    OwningPolygonVector made;
    auto const take = [&](auto const & takeRing)
    {
        for (CLinkedPathObject* ring = m_Results; ring != nullptr; ring = ring->m_NextRing)
        {
            if (std::unique_ptr<CPolygon> polygon = takeRing(ring))
            {
                PushPolygon(made, std::move(polygon));
            }
        }
    };
    if (m_Source != nullptr && m_Fold != nullptr)
    {
        CTakenRuns taken(*m_Source, m_Spare);
        take([&](CLinkedPathObject* ring)
             { return CRingUnfolder(*m_Fold, *m_Source, m_UsedUpFirst).TakeRing(ring, taken); });
    }
    else
    {
        take(TakePlainRing);
    }
    ReleaseFold();
    m_Source = nullptr;
    delete m_Results;
    m_Results = nullptr;
    polygons.reserve(made.size());
    AppendPolygons(polygons, made);
}

template <typename T>
void CPolygonClipGreinerHormannBased<T>::TakeResultPolygons(std::vector<CPolygon*> & polygons, CPolygon & first)
{
    struct TUsedUpFirst
    {
        CPolygonClipGreinerHormannBased & clipper;
        ~TUsedUpFirst() { CPolygonInternals::ClearOutline(*std::exchange(clipper.m_UsedUpFirst, nullptr)); }
    };
    m_UsedUpFirst = &first;
    TUsedUpFirst const usedUp{*this};
    TakeResultPolygons(polygons);
}

using FoldingClipper = CPolygonClipGreinerHormannBased<double>;
template void FoldingClipper::TakeResultPolygons(std::vector<CPolygon*> &, CPolygon &);
template void FoldingClipper::TakeResultPolygons(std::vector<CPolygon*> &);
template void FoldingClipper::ReadFolded(CPolygon const &, TPoint<double> const*);
template double FoldingClipper::GetResultLength();
template FoldingClipper::EClipResult FoldingClipper::RunFoldedClip(CPolygon const &, CPolygon &);
template FoldingClipper::EClipResult FoldingClipper::RunFoldedIntersection(CPolygon const &, CPolygon const &);
template FoldingClipper::EClipResult FoldingClipper::RunFolded(CPolygon const &, CPolygon const &);

} // namespace geometry
