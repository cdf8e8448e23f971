// Point questions to one ring, answered by a search instead of a walk once there are enough of them.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "clip/fold.h"
#include "clip/ring_position.h"
#include "numeric/chain_index.h"
#include "path/probe_parity.h"
#include "path/segment_kernels.h"

namespace geometry
{

/// Serves one ring for one run, from the moment that its objects are cut. The memory of the ring knows it; bridges that
/// come later answer through it, too. A point may lie on a bridge and not on the objects beside it: these begin at its
/// point within tolerance only.
class CRingIndex
{
public:
    /// Makes `ring` answer through this index. The index must live as long as the ring is asked, and so must `fold`,
    /// which answers for the folded runs of the ring; null if there are none.
    void Serve(CPathObjectHolder* ring, CFold* fold);
    /// Few questions come from now on, if any: gives the memory of a large ring back.
    void Shrink();
    /// The same, and the memory may serve another one.
    void RetireFor(CRingIndex & other);
    /// A bridge was linked into the ring, which must live as long as the ring is asked.
    void AddBridge(CPathObjectBase const & bridge);

    /// The position of the point to the ring of `ring`, by the parity of the probe line. It lies on the ring if
    /// `holds(object)` says so of an object; only objects that pass within `extraRoom` of the point, or hold it within
    /// tolerance, have to be asked.
    template <typename Holds>
    static EPointPosition Locate(CPathObjectHolder const* ring, TPoint<double> const & point, double extraRoom,
                                 Holds const & holds)
    {
        CRingIndex* const index = ring->m_Memory->GetIndex();
        CFold* const fold = index != nullptr ? index->m_Fold : nullptr;
        bool isOn = false;
        bool isOdd = fold != nullptr && fold->IsProbeCountOdd(point);
        auto const visit = [&](CPathObjectBase const & object)
        {
            isOn = holds(object);
            isOdd = isOdd != (!isOn && IsProbeCountOdd(object, point));
            return !isOn;
        };
        if (index != nullptr && index->FindIndex())
        {
            isOdd = index->Search(point, extraRoom, visit) != isOdd;
            isOn = isOn || index->IsOnBridge(point, extraRoom, holds);
        }
        else
        {
            WalkRing(ring, visit);
        }
        return isOn ? EPointPosition::eOnRing : isOdd ? EPointPosition::eInside : EPointPosition::eOutside;
    }

    /// Many questions are to come.
    static void ExpectQuestions(CPathObjectHolder const* ring);

    /// Many questions to come are about points in `rect`: what these can find is looked up once. An empty rectangle
    /// does nothing.
    static void Survey(CPathObjectHolder const* ring, CBoundingRect<double> const & rect);
    /// The next ones are about points in `rect`, which lies in the one surveyed last.
    static void Focus(CPathObjectHolder const* ring, CBoundingRect<double> const & rect);

private:
    static constexpr double ArcRoom = 0.11;    ///< above the distances at which a point counts as on an arc or as near
    static constexpr double SizeRoom = 1.1e-7; ///< of the object: above that at which a point counts as near
    static constexpr double FocusRoom = 0.1;   ///< the most that a question may ask for
    static constexpr std::size_t MaxSurveyed = 256;
    static constexpr std::size_t MaxNearby = 64;
    static constexpr std::ptrdiff_t MaxSegments = 8; ///< of a polyline that is passed without its own search

    bool FindIndex() { return m_IsIndexed || MakeIndexIfItPays(); }
    bool MakeIndexIfItPays();
    void LookUp(CBoundingRect<double> const & rect, std::size_t most);
    void Narrow(CBoundingRect<double> const & rect);
    void Forget();
    void ReadObjects();
    static CBoundingRect<double> RectWithRoom(CPathObjectBase const & object, CPathObjectArc const* arc);

    /// A point, and whether it is near abscissas at which arcs need care: looked up at most once.
    class CProbe
    {
    public:
        CProbe(TPoint<double> const & point, CAbscissaField const & abscissas) : m_Point(point), m_Abscissas(abscissas)
        {
        }
        TPoint<double> const & GetPoint() const { return m_Point; }
        bool IsNearAbscissa()
        {
            m_Near = m_Near < 0 ? (m_Abscissas.MayBeNear(m_Point.x) ? 1 : 0) : m_Near;
            return m_Near == 1;
        }

    private:
        TPoint<double> const & m_Point;
        CAbscissaField const & m_Abscissas;
        int m_Near = -1; ///< not yet known
    };

    /// Consecutive objects that lie above.
    struct TRange
    {
        std::size_t first;
        std::size_t last;
        double startX;
        double endX;
        bool isTold; ///< by the two ends
        bool hasArc; ///< so that it isn't told near some abscissas
    };
    struct TBefore
    {
        double startX;           ///< where the object begins; the one before ends there, if it is told by its ends
        std::uint32_t irregular; ///< how many before may count otherwise than by their ends
        std::uint32_t arcs;      ///< how many before may do so near some abscissas
    };
    /// An object that is to be looked at.
    struct TNearby
    {
        CBoundingRect<double> rect; ///< with room
        std::uint32_t object;
        std::uint32_t pointCount;     ///< if it is a polyline of a few segments, else 0
        TPoint<double> const* points; ///< these; not owned
    };

    TRange MakeRange(std::size_t first, std::size_t last) const
    {
        TBefore const & begin = m_Before[first];
        TBefore const & end = m_Before[last];
        return {first, last, begin.startX, end.startX, begin.irregular == end.irregular, begin.arcs != end.arcs};
    }
    /// Objects above the point: those that run into each other exactly count by the sides of their two ends, arcs too,
    /// except near some abscissas.
    bool IsRangeCrossed(TRange const & range, CProbe & probe) const
    {
        TPoint<double> const & point = probe.GetPoint();
        return range.isTold && (!range.hasArc || !probe.IsNearAbscissa())
                   ? IsClearlyLess(point.x, range.startX) != IsClearlyLess(point.x, range.endX)
                   : IsRangeCrossedOneByOne(range, point);
    }
    /// The object is clearly too far from the point to hold it: counts it without any tolerance.
    bool Passes(TNearby const & nearby, CProbe & probe, bool & isOdd) const
    {
        return nearby.pointCount != 0 ? PassesSegments(nearby, probe.GetPoint(), isOdd)
                                      : PassesArc(nearby.object, probe, isOdd);
    }
    /// Above the distances at which a point counts as on an object within `rect`, or as near it.
    static double LargestTolerance(CBoundingRect<double> const & rect)
    {
        return std::max(ArcRoom, SizeRoom * std::max(rect.maxX - rect.minX, rect.maxY - rect.minY));
    }
    static bool PassesSegments(TNearby const & nearby, TPoint<double> const & point, bool & isOdd)
    {
        TPoint<double> const* const points = nearby.points;
        double const room = LargestTolerance(nearby.rect); // which is larger than that of the object
        bool isCrossed = false;
        for (std::uint32_t k = 1; k < nearby.pointCount; ++k)
        {
            if (!IsClearlyOffLine(points[k - 1], points[k], point, room))
            {
                return false;
            }
            isCrossed = isCrossed != PassesAbove(points[k - 1], points[k], point.x, point.y);
        }
        isOdd = isOdd != isCrossed;
        return true;
    }
    bool PassesArc(std::size_t i, CProbe & probe, bool & isOdd) const;
    TNearby NearbyAt(std::size_t i) const;
    void AddAbove(std::vector<TRange> & above, std::size_t first, std::size_t last) const;
    bool AreEndsAside(TRange const & range) const;
    bool IsRangeCrossedOneByOne(TRange const & range, TPoint<double> const & point) const;
    bool IsCrossedFromBelow(std::size_t i, TPoint<double> const & point) const;

    template <typename Visit>
    static void WalkRing(CPathObjectHolder const* ring, Visit const & visit)
    {
        CPathObjectHolder const* holder = ring;
        while ((holder->m_Run != nullptr || visit(*holder->GetPathObject())) && holder->m_Next != ring)
        {
            holder = holder->m_Next;
        }
    }

    /// What is to be done with the objects in a rectangle for all points in `at`.
    static CChainIndex::EAction Classify(CBoundingRect<double> const & r, CBoundingRect<double> const & at)
    {
        bool const isApart = at.maxX < r.minX || at.minX > r.maxX || at.minY > r.maxY;
        return isApart            ? CChainIndex::EAction::ePass
               : at.maxY < r.minY ? CChainIndex::EAction::eTake
                                  : CChainIndex::EAction::eOpen;
    }

    bool IsInFocus(TPoint<double> const & point, double extraRoom) const
    {
        CBoundingRect<double> const & rect = m_Focus.rect;
        return rect.minX <= point.x && point.x <= rect.maxX && rect.minY <= point.y && point.y <= rect.maxY &&
               extraRoom <= FocusRoom;
    }

    /// The parity of all objects that lie above the focus.
    bool IsOddAboveFocus(CProbe & probe) const
    {
        bool const isPlain = !m_HasArcAbove || !probe.IsNearAbscissa();
        bool isOdd = isPlain && m_IsOddAbove;
        for (std::size_t i = 0; !isPlain && i < m_Alike.size(); ++i)
        {
            isOdd = isOdd != IsRangeCrossed(m_Alike[i], probe);
        }
        for (TRange const & range : m_Focus.above)
        {
            isOdd = isOdd != IsRangeCrossed(range, probe);
        }
        return isOdd;
    }

    /// Visits the objects that aren't told by their rectangles; the parity of the others.
    template <typename Visit>
    bool Search(TPoint<double> const & point, double extraRoom, Visit const & visit) const
    {
        bool isOdd = false;
        CProbe probe(point, m_Abscissas);
        CBoundingRect<double> at(point, point);
        at.Inflate(extraRoom); // its rounding is far below the room that the rectangles have
        auto const take = [&](std::size_t first, std::size_t last)
        { isOdd = isOdd != IsRangeCrossed(MakeRange(first, last), probe); };
        if (!IsInFocus(point, extraRoom))
        {
            m_Index.Walk([&](CBoundingRect<double> const & r) { return Classify(r, at); },
                         [&](std::size_t i) { return Passes(NearbyAt(i), probe, isOdd) || visit(*m_Objects[i]); },
                         take);
            return isOdd;
        }
        isOdd = IsOddAboveFocus(probe);
        for (TNearby const & nearby : m_Focus.nearby)
        {
            CChainIndex::EAction const action = Classify(nearby.rect, at);
            if (action == CChainIndex::EAction::eTake)
            {
                take(nearby.object, nearby.object + 1);
            }
            else if (action == CChainIndex::EAction::eOpen && !Passes(nearby, probe, isOdd) &&
                     !visit(*m_Objects[nearby.object]))
            {
                break;
            }
        }
        return isOdd;
    }

    template <typename Holds>
    bool IsOnBridge(TPoint<double> const & point, double extraRoom, Holds const & holds) const
    {
        if (m_Bridges.empty())
        {
            return false;
        }
        double const room = 2.0 * extraRoom + 1e-12 * std::fabs(point.x); // far above what `holds` tolerates
        auto const end = m_Bridges.upper_bound(point.x + room);
        return std::any_of(m_Bridges.lower_bound(point.x - room), end,
                           [&](auto const & bridge) { return holds(*bridge.second); });
    }

    CPathObjectHolder const* m_Ring = nullptr;
    CFold* m_Fold = nullptr; ///< not owned
    unsigned int m_Questions = 0;
    bool m_IsWalked = false;                       ///< all objects are folded, or no question is to come
    std::vector<CPathObjectBase const*> m_Objects; ///< of the ring; not owned
    std::vector<TBefore> m_Before;                 ///< one an object, and one behind the last
    CAbscissaField m_Abscissas;                    ///< near which arcs need care
    std::vector<CBoundingRect<double>> m_Rects;    ///< theirs, on the way into the index
    CChainIndex m_Index;                           ///< over them, once it pays
    bool m_IsIndexed = false;
    std::multimap<double, CPathObjectBase const*> m_Bridges; ///< that came after it, by their x; not owned
    /// Objects in chain order that lie above the points in a rectangle, and those to be looked at.
    struct TSurvey
    {
        CBoundingRect<double> rect; ///< may be empty
        std::vector<TRange> above;
        std::vector<TNearby> nearby;
    };
    TSurvey m_Survey;
    TSurvey m_Focus;             ///< a part of it
    bool m_IsOddAbove = false;   ///< the parity of those above that count alike for all points there, ..
    bool m_HasArcAbove = false;  ///< .. if none of them is an arc with an abscissa near; else ..
    std::vector<TRange> m_Alike; ///< .. these have to be counted
};

} // namespace geometry
