#include "clip/ring_index.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include <geometry/arc/path_object_arc.h>

#include "arc/arc_geometry.h"
#include "path/segment_kernels.h"

namespace geometry
{

namespace
{

constexpr std::size_t MinSearchedCount = 24; // of a range; below, a loop is as fast
constexpr unsigned int QuestionsBeforeIndex = 4;
constexpr std::size_t MaxKeptCapacity = 4096; // of objects, from run to run
constexpr double RelativeRoom = 1e-12;        // of the largest coordinate: far above 100 units in the last place

} // namespace

/// The rectangle of the object with room for the tolerances of its questions. Everything, where these can't be told.
/// `arc`: the object, if it is a valid one.
CBoundingRect<double> CRingIndex::RectWithRoom(CPathObjectBase const & object, CPathObjectArc const* arc)
{
    CBoundingRect<double> rect = object.GetBoundingRect();
    double const largest = std::max(std::max(std::fabs(rect.minX), std::fabs(rect.maxX)),
                                    std::max(std::fabs(rect.minY), std::fabs(rect.maxY)));
    double room = std::max(RelativeRoom * largest, SizeRoom * std::max(rect.maxX - rect.minX, rect.maxY - rect.minY));
    bool isRegular = largest < 1e150;
    if (arc != nullptr && IsSteadyArc(*arc))
    {
        TPoint<double> const & centre = CArcInternals::GetPoints(*arc)[2];
        double const reach = std::max(std::fabs(centre.x), std::fabs(centre.y));
        room = std::max(room, RelativeRoom * reach) + ArcRoom + 2.0 * LargestMisfit;
    }
    else if (arc != nullptr)
    {
        TArcReading const reading = ReadArc(*arc);
        rect.Include(reading.rect); // a repair has left the old one
        double const radius = reading.sweep.r;
        if (reading.isBeyondRect)
        {
            TPoint<double> const & centre = reading.sweep.C;
            rect.Include(TPoint<double>(centre.x - radius, centre.y - radius));
            rect.Include(TPoint<double>(centre.x + radius, centre.y + radius));
        }
        double const misfit = std::fabs(radius - reading.toA) + std::fabs(radius - reading.toB);
        room = std::max(room, RelativeRoom * reading.reach) + ArcRoom + misfit;
        isRegular = isRegular && radius > SmallestRadius * reading.reach;
    }
    if (!isRegular || !(room < DBL_MAX))
    {
        return CBoundingRect<double>(-DBL_MAX, -DBL_MAX, DBL_MAX, DBL_MAX);
    }
    return CBoundingRect<double>(rect.minX - room, rect.minY - room, rect.maxX + room, rect.maxY + room);
}

void CRingIndex::Serve(CPathObjectHolder* ring, CFold* fold)
{
    m_Ring = ring;
    m_Fold = fold;
    m_Questions = 0;
    m_IsWalked = false;
    m_Objects.clear();
    m_IsIndexed = false;
    m_Bridges.clear();
    Forget();
    ring->m_Memory->SetIndex(this);
}

void CRingIndex::Shrink()
{
    if (m_IsIndexed && m_Objects.capacity() > MaxKeptCapacity)
    {
        m_IsWalked = true;
        m_IsIndexed = false;
        m_Index = CChainIndex();
        m_Objects = {};
        m_Before = {};
        m_Rects = {};
        Forget();
    }
}

void CRingIndex::RetireFor(CRingIndex & other)
{
    m_IsWalked = true;
    m_IsIndexed = false;
    Forget();
    if (!other.m_IsIndexed)
    {
        m_Objects.swap(other.m_Objects);
        m_Before.swap(other.m_Before);
        m_Rects.swap(other.m_Rects);
        std::swap(m_Abscissas, other.m_Abscissas);
        std::swap(m_Index, other.m_Index);
    }
}

void CRingIndex::AddBridge(CPathObjectBase const & bridge)
{
    if (m_IsIndexed) // else it is found in the ring
    {
        m_Bridges.emplace(bridge.GetStartPoint().x, &bridge);
    }
}

bool CRingIndex::MakeIndexIfItPays()
{
    ++m_Questions;
    if (m_IsWalked || !IsIndexUsed(m_Questions >= QuestionsBeforeIndex))
    {
        return false;
    }
    m_Objects.clear();
    m_Objects.reserve(CountHolders(m_Ring));
    CBoundingRect<double> around;
    CPathObjectHolder const* holder = m_Ring;
    do
    {
        if (holder->m_Run == nullptr)
        {
            m_Objects.push_back(holder->GetPathObject());
            around.Include(m_Objects.back()->GetBoundingRect());
        }
        holder = holder->m_Next;
    } while (holder != m_Ring);
    m_IsWalked = m_Objects.empty();
    if (!m_IsWalked)
    {
        m_Abscissas.Reset(around.minX, around.maxX, m_Objects.size());
        ReadObjects();
        m_Index.Rebuild(m_Rects);
        m_IsIndexed = true;
    }
    return m_IsIndexed;
}

/// What is known of each object.
void CRingIndex::ReadObjects()
{
    std::size_t const count = m_Objects.size();
    m_Index.GiveRects(m_Rects);
    m_Rects.resize(count);
    m_Before.resize(count + 1);
    TBefore before{0.0, 0, 0};
    TPoint<double> const* start = &m_Objects.front()->GetStartPoint();
    for (std::size_t i = 0; i < count; ++i)
    {
        CPathObjectBase const & object = *m_Objects[i];
        TPoint<double> const* const next = &m_Objects[i + 1 < count ? i + 1 : 0]->GetStartPoint();
        TPoint<double> const & end = object.GetEndPoint();
        before.startX = start->x;
        m_Before[i] = before;
        bool isTold = object.IsValid() && IsExactlyEqual(end, *next);
        bool const isArc = !object.CanAppendVertex();
        if (isArc && object.IsValid())
        {
            auto const & arc = static_cast<CPathObjectArc const &>(object);
            m_Rects[i] = RectWithRoom(object, &arc);
            isTold = isTold && !(*start == end) && IsSteadyArc(arc);
            if (isTold)
            {
                m_Abscissas.Add(arc);
                ++before.arcs;
            }
        }
        else
        {
            m_Rects[i] = RectWithRoom(object, nullptr);
        }
        before.irregular += isTold ? 0 : 1;
        start = next;
    }
    before.startX = start->x;
    m_Before[count] = before;
}

bool CRingIndex::IsRangeCrossedOneByOne(TRange const & range, TPoint<double> const & point) const
{
    bool isOdd = false;
    if (range.last - range.first >= MinSearchedCount)
    {
        m_Index.Search([&](CBoundingRect<double> const & r) { return !(point.x < r.minX || point.x > r.maxX); },
                       [&](std::size_t i)
                       {
                           bool const isIn = i >= range.first && i < range.last;
                           isOdd = isOdd != (isIn && IsCrossedFromBelow(i, point));
                           return i < range.last;
                       });
        return isOdd;
    }
    for (std::size_t i = range.first; i < range.last; ++i)
    {
        isOdd = isOdd != IsCrossedFromBelow(i, point);
    }
    return isOdd;
}

/// Most of the objects above a point that is near some abscissa aren't the one with that abscissa.
bool CRingIndex::IsCrossedFromBelow(std::size_t i, TPoint<double> const & point) const
{
    CPathObjectBase const & object = *m_Objects[i];
    if (!IsOutOfWay(object.GetBoundingRect(), point) && m_Before[i].arcs != m_Before[i + 1].arcs)
    {
        auto const & arc = static_cast<CPathObjectArc const &>(object);
        if (!IsNearAbscissa(arc, point.x) && IsClearlyFarther(arc, point, ArcRoom))
        {
            return IsClearlyCrossed(arc, point);
        }
    }
    return IsProbeCountOdd(object, point);
}

bool CRingIndex::PassesArc(std::size_t i, CProbe & probe, bool & isOdd) const
{
    if (m_Before[i].arcs == m_Before[i + 1].arcs)
    {
        return false;
    }
    auto const & arc = static_cast<CPathObjectArc const &>(*m_Objects[i]);
    if (!IsClearlyFarther(arc, probe.GetPoint(), LargestTolerance(arc.GetBoundingRect())) ||
        (probe.IsNearAbscissa() && IsNearAbscissa(arc, probe.GetPoint().x)))
    {
        return false;
    }
    isOdd = isOdd != IsClearlyCrossed(arc, probe.GetPoint());
    return true;
}

void CRingIndex::ExpectQuestions(CPathObjectHolder const* ring)
{
    if (CRingIndex* const self = ring->m_Memory->GetIndex())
    {
        self->m_Questions += QuestionsBeforeIndex;
    }
}

void CRingIndex::Survey(CPathObjectHolder const* ring, CBoundingRect<double> const & rect)
{
    CRingIndex* const self = ring->m_Memory->GetIndex();
    if (self == nullptr || rect.minX > rect.maxX)
    {
        return;
    }
    self->m_Questions += QuestionsBeforeIndex - 1; // so many come at least
    if (self->FindIndex())
    {
        self->LookUp(rect, MaxSurveyed);
    }
}

void CRingIndex::Focus(CPathObjectHolder const* ring, CBoundingRect<double> const & rect)
{
    CRingIndex* const self = ring->m_Memory->GetIndex();
    if (self == nullptr || !self->m_IsIndexed || rect.minX > rect.maxX)
    {
        return;
    }
    if (!self->m_Survey.rect.ContainsRect(rect))
    {
        self->LookUp(rect, MaxNearby); // too much was in the rectangle surveyed
    }
    if (self->m_Survey.rect.ContainsRect(rect))
    {
        self->Narrow(rect);
    }
}

void CRingIndex::Forget()
{
    m_Survey.rect.Reset();
    m_Focus.rect.Reset();
}

CRingIndex::TNearby CRingIndex::NearbyAt(std::size_t i) const
{
    CPathObjectBase const & object = *m_Objects[i];
    TNearby nearby{m_Index.GetRect(i), static_cast<std::uint32_t>(i), 0, nullptr};
    bool const isToldArc = m_Before[i].arcs != m_Before[i + 1].arcs;
    if (!isToldArc && object.CanAppendVertex())
    {
        auto const begin = object.GetPointsBegin();
        std::ptrdiff_t const points = object.GetPointsEnd() - begin;
        if (points > 1 && points <= MaxSegments + 1)
        {
            nearby.pointCount = static_cast<std::uint32_t>(points);
            nearby.points = &*begin;
        }
    }
    return nearby;
}

/// Told ranges that follow each other are one.
void CRingIndex::AddAbove(std::vector<TRange> & above, std::size_t first, std::size_t last) const
{
    if (!above.empty() && above.back().last == first && above.back().isTold)
    {
        TRange const joined = MakeRange(above.back().first, last);
        if (joined.isTold)
        {
            above.back() = joined;
            return;
        }
    }
    above.push_back(MakeRange(first, last));
}

/// What is passed or taken for the whole rectangle is so for each point in it. Where much is left, the search for
/// single points is better.
void CRingIndex::LookUp(CBoundingRect<double> const & rect, std::size_t most)
{
    Forget();
    m_Survey.above.clear();
    m_Survey.nearby.clear();
    CBoundingRect<double> at = rect;
    at.Inflate(FocusRoom);
    m_Index.Walk([&](CBoundingRect<double> const & r) { return Classify(r, at); },
                 [&](std::size_t i)
                 {
                     m_Survey.nearby.push_back(NearbyAt(i));
                     return m_Survey.nearby.size() < most;
                 },
                 [&](std::size_t first, std::size_t last) { AddAbove(m_Survey.above, first, last); });
    if (m_Survey.nearby.size() + m_Survey.above.size() < most)
    {
        m_Survey.rect = rect;
    }
}

/// The side of each end is the same for the least and the greatest abscissa in the focus, and so for all of them.
bool CRingIndex::AreEndsAside(TRange const & range) const
{
    auto const isAside = [this](double x)
    { return IsClearlyLess(m_Focus.rect.minX, x) == IsClearlyLess(m_Focus.rect.maxX, x); };
    return range.isTold && isAside(range.startX) && isAside(range.endX);
}

void CRingIndex::Narrow(CBoundingRect<double> const & rect)
{
    m_Focus.rect = rect;
    m_Focus.above.clear();
    m_Focus.nearby.clear();
    CBoundingRect<double> at = rect;
    at.Inflate(FocusRoom);
    auto range = m_Survey.above.begin();
    auto const addRangesBefore = [&](std::size_t object)
    {
        for (; range != m_Survey.above.end() && range->first < object; ++range)
        {
            AddAbove(m_Focus.above, range->first, range->last);
        }
    };
    for (TNearby const & nearby : m_Survey.nearby)
    {
        CChainIndex::EAction const action = Classify(nearby.rect, at);
        if (action == CChainIndex::EAction::eOpen)
        {
            m_Focus.nearby.push_back(nearby);
        }
        else if (action == CChainIndex::EAction::eTake)
        {
            addRangesBefore(nearby.object);
            AddAbove(m_Focus.above, nearby.object, nearby.object + 1);
        }
    }
    addRangesBefore(m_Objects.size());
    if (m_Focus.nearby.size() + m_Focus.above.size() >= MaxNearby)
    {
        m_Focus.rect.Reset();
        return;
    }
    auto const isAlike = [this](TRange const & r) { return AreEndsAside(r); };
    auto const rest = std::partition(m_Focus.above.begin(), m_Focus.above.end(), isAlike);
    m_Alike.assign(m_Focus.above.begin(), rest);
    m_Focus.above.erase(m_Focus.above.begin(), rest);
    m_IsOddAbove = false;
    m_HasArcAbove = false;
    for (TRange const & alike : m_Alike)
    {
        m_IsOddAbove = m_IsOddAbove != (IsClearlyLess(rect.minX, alike.startX) != IsClearlyLess(rect.minX, alike.endX));
        m_HasArcAbove = m_HasArcAbove || alike.hasArc;
    }
}

} // namespace geometry
