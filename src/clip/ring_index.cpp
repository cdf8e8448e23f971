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
    double const largest =
        std::max({std::fabs(rect.minX), std::fabs(rect.minY), std::fabs(rect.maxX), std::fabs(rect.maxY)});
    double room = std::max(RelativeRoom * largest, SizeRoom * std::max(rect.maxX - rect.minX, rect.maxY - rect.minY));
    bool isRegular = std::isfinite(room) && largest < 1e150;
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
        isRegular = isRegular && radius > SmallestRadius * reading.reach && std::isfinite(room);
    }
    if (!isRegular)
    {
        return CBoundingRect<double>(-DBL_MAX, -DBL_MAX, DBL_MAX, DBL_MAX);
    }
    rect.Inflate(room);
    return rect;
}

void CRingIndex::Serve(CPathObjectHolder* ring, CFold* fold)
{
    m_Ring = ring;
    m_Fold = fold;
    m_Questions = 0;
    m_IsWalked = false;
    m_Objects.clear();
    m_Count = 0;
    m_IsIndexed = false;
    m_Bridges.clear();
    m_Focus.Reset();
    CPathObjectHolder* holder = ring;
    do
    {
        holder->m_RingIndex = this;
        ++m_Count;
        holder = holder->m_Next;
    } while (holder != ring);
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
        m_Focus.Reset();
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
    m_Objects.reserve(m_Count);
    CPathObjectHolder const* holder = m_Ring;
    do
    {
        if (holder->m_Run == nullptr)
        {
            m_Objects.push_back(holder->GetPathObject());
        }
        holder = holder->m_Next;
    } while (holder != m_Ring);
    m_IsWalked = m_Objects.empty();
    if (!m_IsWalked)
    {
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
    m_Rects.resize(count);
    m_Before.assign(count + 1, TBefore());
    m_Abscissas.Clear();
    TPoint<double> const* start = &m_Objects.front()->GetStartPoint();
    for (std::size_t i = 0; i < count; ++i)
    {
        CPathObjectBase const & object = *m_Objects[i];
        TPoint<double> const* const next = &m_Objects[i + 1 < count ? i + 1 : 0]->GetStartPoint();
        TPoint<double> const & end = object.GetEndPoint();
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
            }
        }
        else
        {
            m_Rects[i] = RectWithRoom(object, nullptr);
            std::ptrdiff_t const points = isArc ? 0 : object.GetPointsEnd() - object.GetPointsBegin();
            if (points > 1 && points <= MaxSegments + 1)
            {
                m_Before[i].pointCount = static_cast<std::uint32_t>(points);
                m_Before[i].points = &*object.GetPointsBegin();
            }
        }
        m_Before[i].startX = start->x;
        m_Before[i + 1].irregular = m_Before[i].irregular + (isTold ? 0 : 1);
        m_Before[i + 1].arcs = m_Before[i].arcs + (isTold && isArc ? 1 : 0);
        start = next;
    }
    m_Before[count].startX = start->x;
    m_Abscissas.Prepare();
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
                           isOdd = isOdd != (isIn && IsProbeCountOdd(*m_Objects[i], point));
                           return i < range.last;
                       });
        return isOdd;
    }
    for (std::size_t i = range.first; i < range.last; ++i)
    {
        isOdd = isOdd != IsProbeCountOdd(*m_Objects[i], point);
    }
    return isOdd;
}

bool CRingIndex::PassesArc(std::size_t i, CProbe & probe, bool & isOdd) const
{
    if (m_Before[i].arcs == m_Before[i + 1].arcs)
    {
        return false;
    }
    auto const & arc = static_cast<CPathObjectArc const &>(*m_Objects[i]);
    if (!IsClearlyFarther(arc, probe.GetPoint(), LargestTolerance(arc.GetBoundingRect())) || probe.IsNearAbscissa())
    {
        return false;
    }
    isOdd = isOdd != IsClearlyCrossed(arc, probe.GetPoint());
    return true;
}

void CRingIndex::Focus(CPathObjectHolder const* ring, CBoundingRect<double> const & rect)
{
    CRingIndex* const self = ring->m_RingIndex;
    if (self == nullptr || rect.minX > rect.maxX)
    {
        return;
    }
    self->m_Questions += QuestionsBeforeIndex - 1; // so many come at least
    if (self->FindIndex())
    {
        self->LookUp(rect);
    }
}

/// What is passed or taken for the whole rectangle is so for each point in it. Where much is left, the search for
/// single points is better.
void CRingIndex::LookUp(CBoundingRect<double> const & rect)
{
    m_Focus = rect;
    m_Above.clear();
    m_Nearby.clear();
    CBoundingRect<double> at = rect;
    at.Inflate(FocusRoom);
    m_Index.Walk([&](CBoundingRect<double> const & r) { return Classify(r, at); },
                 [&](std::size_t i)
                 {
                     m_Nearby.push_back({m_Index.GetRect(i), i});
                     return m_Nearby.size() < MaxNearby;
                 },
                 [&](std::size_t first, std::size_t last) { m_Above.push_back(MakeRange(first, last)); });
    if (m_Nearby.size() + m_Above.size() >= MaxNearby)
    {
        m_Focus.Reset();
    }
}

} // namespace geometry
