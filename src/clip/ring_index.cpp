#include "clip/ring_index.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include <geometry/arc/path_object_arc.h>

#include "arc/arc_geometry.h"
#include "arc/sweep_kernels.h"
#include "path/segment_kernels.h"

namespace geometry
{

namespace
{

constexpr std::size_t MinIndexedCount = 24; // holders; below, a walk over all is as fast
constexpr unsigned int QuestionsBeforeIndex = 4;
constexpr double ArcRoom = 0.11;       // above the distances at which a point counts as on an arc or as near it
constexpr double SizeRoom = 1.1e-7;    // of the object: above that at which a point counts as near
constexpr double RelativeRoom = 1e-12; // of the largest coordinate: far above 100 units in the last place

/// The rectangle of the object with room for the tolerances of its questions. Everything, where these can't be told.
CBoundingRect<double> RectWithRoom(CPathObjectBase const & object)
{
    CBoundingRect<double> rect = object.GetBoundingRect();
    double const largest =
        std::max({std::fabs(rect.minX), std::fabs(rect.minY), std::fabs(rect.maxX), std::fabs(rect.maxY)});
    double room = std::max(RelativeRoom * largest, SizeRoom * std::max(rect.maxX - rect.minX, rect.maxY - rect.minY));
    bool isRegular = std::isfinite(room) && largest < 1e150;
    if (!object.CanAppendVertex() && object.IsValid())
    {
        auto const & arc = static_cast<CPathObjectArc const &>(object);
        double const radius = arc.GetRadius();
        rect.Include(CalculateArcBoundingRect(SweepOf(arc))); // a repair has left the old one
        double const toStart = std::sqrt(SquareDistance(arc.GetStartPoint(), arc.GetCentre()));
        double const toEnd = std::sqrt(SquareDistance(arc.GetEndPoint(), arc.GetCentre()));
        TPoint<double> const & centre = arc.GetCentre();
        double const reach = std::max(std::fabs(centre.x), std::fabs(centre.y));
        room = std::max(room, RelativeRoom * reach) + ArcRoom + std::fabs(radius - toStart) + std::fabs(radius - toEnd);
        isRegular = isRegular && radius > 1e-6 * reach && std::isfinite(room);
    }
    if (!isRegular)
    {
        return CBoundingRect<double>(-DBL_MAX, -DBL_MAX, DBL_MAX, DBL_MAX);
    }
    rect.Inflate(room);
    return rect;
}

} // namespace

void CRingIndex::Serve(CPathObjectHolder* ring, CFold* fold)
{
    m_Ring = ring;
    m_Fold = fold;
    m_Questions = 0;
    m_IsShort = false;
    m_Objects.clear();
    m_Count = 0;
    m_Index.reset();
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

void CRingIndex::AddBridge(CPathObjectBase const & bridge)
{
    if (m_Index != nullptr) // else it is found in the ring
    {
        m_Bridges.emplace(bridge.GetStartPoint().x, &bridge);
    }
}

CChainIndex const* CRingIndex::FindIndex()
{
    if (m_Index != nullptr)
    {
        return m_Index.get();
    }
    ++m_Questions;
    if (m_IsShort || !IsIndexUsed(m_Questions >= QuestionsBeforeIndex))
    {
        return nullptr;
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
    m_IsShort = m_Objects.empty() || !IsIndexUsed(m_Objects.size() >= MinIndexedCount);
    if (!m_IsShort)
    {
        CountIrregular();
        std::vector<CBoundingRect<double>> rects(m_Objects.size());
        std::transform(m_Objects.begin(), m_Objects.end(), rects.begin(),
                       [](CPathObjectBase const* object) { return RectWithRoom(*object); });
        m_Index = std::make_unique<CChainIndex>(std::move(rects));
    }
    return m_Index.get();
}

void CRingIndex::CountIrregular()
{
    m_IrregularBefore.assign(1, 0);
    m_ArcsBefore.assign(1, 0);
    m_Abscissas = CProbeAbscissas();
    m_StartX.clear();
    m_StartX.reserve(m_Objects.size());
    m_IrregularBefore.reserve(m_Objects.size() + 1);
    m_ArcsBefore.reserve(m_Objects.size() + 1);
    for (std::size_t i = 0; i < m_Objects.size(); ++i)
    {
        CPathObjectBase const & object = *m_Objects[i];
        bool const isArc = !object.CanAppendVertex();
        bool const isTold =
            object.IsValid() &&
            IsExactlyEqual(object.GetEndPoint(), m_Objects[(i + 1) % m_Objects.size()]->GetStartPoint()) &&
            (!isArc || (!(object.GetStartPoint() == object.GetEndPoint()) &&
                        IsSteadyArc(static_cast<CPathObjectArc const &>(object))));
        m_StartX.push_back(object.GetStartPoint().x);
        m_IrregularBefore.push_back(m_IrregularBefore.back() + (isTold ? 0 : 1));
        m_ArcsBefore.push_back(m_ArcsBefore.back() + (isTold && isArc ? 1 : 0));
        if (isTold && isArc)
        {
            m_Abscissas.Add(static_cast<CPathObjectArc const &>(object));
        }
    }
    m_Abscissas.Prepare();
}

/// Objects above the point: those that run into each other exactly count by the sides of their two ends, arcs too, except
/// near some abscissas.
bool CRingIndex::IsRangeCrossed(std::size_t first, std::size_t last, CProbe & probe) const
{
    TPoint<double> const & point = probe.GetPoint();
    if (m_IrregularBefore[last] == m_IrregularBefore[first] &&
        (m_ArcsBefore[last] == m_ArcsBefore[first] || !probe.IsNearAbscissa()))
    {
        // the last one ends where the next one begins
        return IsClearlyLess(point.x, m_StartX[first]) !=
               IsClearlyLess(point.x, m_StartX[last < m_StartX.size() ? last : 0]);
    }
    bool isOdd = false;
    for (std::size_t i = first; i < last; ++i)
    {
        isOdd = isOdd != IsProbeCountOdd(*m_Objects[i], point);
    }
    return isOdd;
}

void CRingIndex::Focus(CPathObjectHolder const* ring, CBoundingRect<double> const & rect)
{
    CRingIndex* const self = ring->m_RingIndex;
    if (self == nullptr || rect.minX > rect.maxX)
    {
        return;
    }
    self->m_Questions += QuestionsBeforeIndex - 1; // so many come at least
    if (CChainIndex const* const index = self->FindIndex())
    {
        self->LookUp(*index, rect);
    }
}

/// What is passed or taken for the whole rectangle is so for each point in it. Where much is left, the search for single
/// points is better.
void CRingIndex::LookUp(CChainIndex const & index, CBoundingRect<double> const & rect)
{
    m_Focus = rect;
    m_Above.clear();
    m_Nearby.clear();
    index.Walk([&](CBoundingRect<double> const & r) { return Classify(r, rect, FocusRoom); },
               [&](std::size_t i)
               {
                   m_Nearby.push_back({index.GetRect(i), i});
                   return m_Nearby.size() < MaxNearby;
               },
               [&](std::size_t first, std::size_t last) {
                   m_Above.push_back({first, last});
               });
    if (m_Nearby.size() + m_Above.size() >= MaxNearby)
    {
        m_Focus.Reset();
    }
}

} // namespace geometry
