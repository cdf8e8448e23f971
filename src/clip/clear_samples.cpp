// Samples of the objects that begin where the rings met, located against the other ring with a margin far above
// rounding. What these find makes the run a retry.
#include "clip/clear_samples.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include <geometry/arc/path_object_arc.h>

#include "arc/arc_geometry.h"
#include "arc/as_arc.h"
#include "clip/ring_index.h"
#include "path/segment_kernels.h"

namespace geometry
{

namespace
{

/// A place on a segment that symmetric shapes don't favour: the golden section.
constexpr double sampleFraction = 0.38196601125010515;
/// Clear of an arc is three times as far as the distance at which a point counts as on it (square 0.001).
constexpr double arcMargin = 0.1;
/// Clear of a segment, as a part of the size of its object: far above rounding, and above the first shifts of a retry.
constexpr double relativeMargin = 1e-7;

/// The point is outside the rectangle by more than any margin and tolerance.
bool IsFarFrom(CBoundingRect<double> const & rect, TPoint<double> const & point)
{
    double const outX = std::max(rect.minX - point.x, point.x - rect.maxX);
    double const outY = std::max(rect.minY - point.y, point.y - rect.maxY);
    return std::max(outX, outY) > 2.0 * arcMargin +
                                      2.0 * relativeMargin * (rect.maxX - rect.minX + (rect.maxY - rect.minY)) +
                                      1e-12 * (std::fabs(point.x) + std::fabs(point.y));
}

/// The point is farther than `distance` from a polyline of a few segments: from the lines of all of them.
bool IsClearlyOffLines(CPathObjectBase const & object, TPoint<double> const & point, double distance)
{
    constexpr std::ptrdiff_t fewVertices = 8;
    if (!object.CanAppendVertex())
    {
        return false;
    }
    auto const begin = object.GetPointsBegin();
    std::ptrdiff_t const count = object.GetPointsEnd() - begin;
    std::ptrdiff_t i = 1;
    while (i < count && count <= fewVertices && IsClearlyOffLine(begin[i - 1], begin[i], point, distance))
    {
        ++i;
    }
    return i == count;
}

/// The position to the ring of `ring`; `eOnRing` if the point isn't well away from it. `isArc`: the object sampled.
EPointPosition LocateClearly(TPoint<double> const & point, CPathObjectHolder const* ring, bool isSampleOfArc)
{
    auto const isNear = [&](CPathObjectBase const & object)
    {
        CBoundingRect<double> reach = object.GetBoundingRect();
        if (IsFarFrom(reach, point))
        {
            return false; // as most objects are
        }
        double margin = relativeMargin * std::max(reach.maxX - reach.minX, reach.maxY - reach.minY);
        if (isSampleOfArc || !object.CanAppendVertex())
        {
            margin = std::max(margin, arcMargin);
        }
        reach.Inflate(margin);
        if (IsClearlyOffLines(object, point, margin))
        {
            return false;
        }
        TPoint<double> closest;
        return reach.ContainsPoint(point.x, point.y) &&
               !(object.SquareDistanceToPoint(point.x, point.y, closest) > margin * margin);
    };
    return CRingIndex::Locate(ring, point, isSampleOfArc ? arcMargin : 0.0, isNear);
}

} // namespace

TPoint<double> SampleOfSegment(TPoint<double> const & a, TPoint<double> const & b)
{
    return TPoint<double>(a.x + sampleFraction * (b.x - a.x), a.y + sampleFraction * (b.y - a.y));
}

namespace
{

/// A point on the segment `i` of the object.
TPoint<double> SampleOf(CPathObjectBase const & object, std::ptrdiff_t i)
{
    TPoint<double> const & a = object.GetPointsBegin()[i];
    TPoint<double> const & b = object.GetPointsBegin()[i + 1];
    return SampleOfSegment(a, b);
}

/// No clear sample of the object contradicts its lying on `side` of the other ring.
bool SamplesAgree(CPathObjectHolder const* holder, CPathObjectHolder const* other, EPointPosition side,
                  bool isMiddleSeen)
{
    CPathObjectBase const & object = *holder->GetPathObject();
    if (object.IsDegenerate())
    {
        return true;
    }
    auto const contradicts = [&](TPoint<double> const & point, bool isArc)
    {
        EPointPosition const position = LocateClearly(point, other, isArc);
        return position != EPointPosition::eOnRing && position != side;
    };
    if (!object.CanAppendVertex())
    {
        // the chords cut the corners of the arc, their ends lie on it
        TInnerChordPoints const points =
            object.IsValid() ? FindInnerChordPoints(static_cast<CPathObjectArc const &>(object)) : TInnerChordPoints();
        return points.chords == 0 ||
               ((isMiddleSeen || !contradicts(object.GetInbetweenPoint(), true)) && !contradicts(points.second, true) &&
                (points.chords <= 2 || !contradicts(points.lastButOne, true))); // the same of two
    }
    std::ptrdiff_t const segments = object.GetPointsEnd() - object.GetPointsBegin() - 1;
    return segments < 1 || (!contradicts(SampleOf(object, 0), false) &&
                            (segments == 1 || !contradicts(SampleOf(object, segments - 1), false)));
}

} // namespace

bool AgreesWithSamples(CPathObjectHolder const* holder, CPathObjectHolder const* other,
                       CBoundingRect<double> const & otherRect, EPointPosition side, bool isMiddleSeen)
{
    return holder->m_Run != nullptr || !otherRect.Overlaps(holder->GetPathObject()->GetBoundingRect()) ||
           SamplesAgree(holder, other, side, isMiddleSeen);
}

bool IsWhollyOnSide(CPathObjectHolder const* ring, CPathObjectHolder const* other,
                    CBoundingRect<double> const & otherRect, EPointPosition side)
{
    CPathObjectHolder const* holder = ring;
    do
    {
        if (!AgreesWithSamples(holder, other, otherRect, side, false))
        {
            return false;
        }
        holder = holder->m_Next;
    } while (holder != ring);
    return true;
}

namespace
{

/// Multiples of these two numbers, less their integers, spread evenly over the unit square.
TPoint<double> SpreadPoint(CBoundingRect<double> const & rect, int i)
{
    constexpr double stepX = 0.7548776662466927;
    constexpr double stepY = 0.5698402909980532;
    return TPoint<double>(rect.minX + (i * stepX - static_cast<int>(i * stepX)) * (rect.maxX - rect.minX),
                          rect.minY + (i * stepY - static_cast<int>(i * stepY)) * (rect.maxY - rect.minY));
}

} // namespace

namespace
{

/// Two points, one on each side of an object, so far from it that it leaves no doubt about them. None beside one without
/// extent.
struct TPointsBeside
{
    TPoint<double> left;
    TPoint<double> right;
    bool areValid = false;
};

TPointsBeside FindPointsBeside(CPathObjectBase const & object)
{
    constexpr double room = 1.5; // times the margin
    TPointsBeside points;
    TPoint<double> at;
    TPoint<double> along;
    double margin = 0.0;
    if (CPathObjectArc const* const arc = AsArc(object))
    {
        at = arc->GetInbetweenPoint();
        along = TPoint<double>(arc->GetCentre().y - at.y, at.x - arc->GetCentre().x);
        margin = arcMargin;
    }
    else if (object.GetPointsEnd() - object.GetPointsBegin() >= 2)
    {
        auto const first = object.GetPointsBegin();
        at = SampleOf(object, 0);
        along = TPoint<double>(first[1].x - first->x, first[1].y - first->y);
    }
    CBoundingRect<double> const & rect = object.GetBoundingRect();
    double const size = std::max(rect.maxX - rect.minX, rect.maxY - rect.minY);
    double const distance = room * std::max(margin, relativeMargin * size);
    double const length = std::sqrt(along.x * along.x + along.y * along.y);
    points.areValid = length > 0.0;
    TPoint<double> const across(-along.y / length * distance, along.x / length * distance);
    points.left = TPoint<double>(at.x + across.x, at.y + across.y);
    points.right = TPoint<double>(at.x - across.x, at.y - across.y);
    return points;
}

/// Adds what the points beside some objects of `ring`, evenly chosen, tell.
void AddRelation(CPathObjectHolder const* ring, CPathObjectHolder const* subject, CPathObjectHolder const* clip,
                 TRelation & relation)
{
    constexpr std::size_t most = 32;
    std::size_t const step = CountHolders(ring) / most + 1;
    std::size_t index = 0;
    CPathObjectHolder const* holder = ring;
    do
    {
        TPointsBeside const points = index++ % step == 0 && holder->m_Run == nullptr
                                         ? FindPointsBeside(*holder->GetPathObject())
                                         : TPointsBeside();
        for (TPoint<double> const & point : {points.left, points.right})
        {
            EPointPosition const inSubject =
                points.areValid ? LocateClearly(point, subject, false) : EPointPosition::eOnRing;
            EPointPosition const inClip =
                inSubject != EPointPosition::eOnRing ? LocateClearly(point, clip, false) : EPointPosition::eOnRing;
            bool const isInSubject = inSubject == EPointPosition::eInside;
            bool const isInClip = inClip == EPointPosition::eInside;
            bool const isClear = inClip != EPointPosition::eOnRing;
            relation.isAnyInBoth = relation.isAnyInBoth || (isClear && isInSubject && isInClip);
            relation.isAnyInSubjectOnly = relation.isAnyInSubjectOnly || (isClear && isInSubject && !isInClip);
            relation.isAnyInClipOnly = relation.isAnyInClipOnly || (isClear && !isInSubject && isInClip);
        }
        holder = holder->m_Next;
    } while (holder != ring);
}

} // namespace

TRelation FindRelation(CPathObjectHolder const* subject, CPathObjectHolder const* clip)
{
    TRelation relation;
    AddRelation(subject, subject, clip, relation);
    AddRelation(clip, subject, clip, relation);
    return relation;
}

void CRegionProof::AddPointsBeside(CPathObjectHolder const* ring, std::size_t first, std::size_t last)
{
    std::size_t crossings = 0;
    CPathObjectHolder const* holder = ring;
    do
    {
        crossings += holder->m_IsIntersection && holder->m_Run == nullptr ? 1 : 0;
        holder = holder->m_Next;
    } while (holder != ring);
    std::size_t const step = crossings / (last - first) + 1;
    std::size_t index = 0;
    do
    {
        if (holder->m_IsIntersection && holder->m_Run == nullptr && index++ % step == 0 && first < last)
        {
            TPointsBeside const points = FindPointsBeside(*holder->GetPathObject());
            if (points.areValid)
            {
                m_Points[first] = index % 2 != 0 ? points.left : points.right;
                ++first;
            }
        }
        holder = holder->m_Next;
    } while (holder != ring);
}

CRegionProof::CRegionProof(std::array<CBoundingRect<double>, 2> const & rects,
                           std::array<CPathObjectHolder const*, 2> const & rings, CFold* fold)
    : m_Fold(fold)
{
    constexpr std::size_t pointsOfRing = PointCount / 2;
    for (std::size_t k = 0; k < rects.size(); ++k)
    {
        for (std::size_t i = 0; i < pointsOfRing; ++i)
        {
            m_Points[k * pointsOfRing + i] = SpreadPoint(rects[k], static_cast<int>(i) + 1);
        }
        // the later half of them gives way to points beside the pieces
        AddPointsBeside(rings[k], k * pointsOfRing + pointsOfRing / 2, (k + 1) * pointsOfRing);
    }
    for (std::size_t i = 0; i < PointCount; ++i)
    {
        m_X[i] = m_Points[i].x;
        m_IsAway[i] = fold != nullptr && !fold->IsInWindow(m_Points[i]);
    }
    auto const [lowest, highest] = std::minmax_element(m_X.begin(), m_X.end());
    double const cellsPerUnit = LastCell / (*highest - *lowest);
    m_LowestX = *lowest;
    m_CellsPerUnit = cellsPerUnit < DBL_MAX ? cellsPerUnit : 0.0;
    for (double const x : m_X)
    {
        m_Cells |= std::isnan(x) ? ~std::uint64_t{0} : std::uint64_t{1} << CellOf(x);
    }
}

namespace
{

/// Around the objects that aren't folded.
CBoundingRect<double> RectAroundRest(CPathObjectHolder const* ring)
{
    CBoundingRect<double> rect;
    CPathObjectHolder const* holder = ring;
    do
    {
        if (holder->m_Run == nullptr)
        {
            rect.Include(holder->GetPathObject()->GetBoundingRect());
        }
        holder = holder->m_Next;
    } while (holder != ring);
    return rect;
}

} // namespace

/// A point away from the window, but not below it, is outside: none of the tolerances reaches so far.
void CRegionProof::ReadClip(CPathObjectHolder const* clip)
{
    for (std::size_t i = 0; i < PointCount; ++i)
    {
        m_InClip[i] = m_IsAway[i] && !m_Fold->IsBelowWindow(m_Points[i]) ? EPointPosition::eOutside
                                                                         : LocateClearly(m_Points[i], clip, false);
    }
}

void CRegionProof::ReadSubject(CPathObjectHolder const* subject, bool (*isMember)(bool inSubject, bool inClip))
{
    m_AroundRest = m_Fold != nullptr ? RectAroundRest(subject) : CBoundingRect<double>();
    for (std::size_t i = 0; i < PointCount; ++i)
    {
        m_Expected[i] =
            m_IsAway[i] ? ExpectAway(i, subject, isMember(true, false)) : ExpectWithin(i, subject, isMember);
    }
}

CRegionProof::EExpected CRegionProof::ExpectWithin(std::size_t i, CPathObjectHolder const* subject,
                                                   bool (*isMember)(bool inSubject, bool inClip)) const
{
    EPointPosition const inSubject = LocateClearly(m_Points[i], subject, false);
    if (inSubject == EPointPosition::eOnRing || m_InClip[i] == EPointPosition::eOnRing)
    {
        return EExpected::eAny;
    }
    bool const isInRuns = m_Fold != nullptr && isMember(true, false) && m_Fold->IsProbeCountOdd(m_Points[i]);
    bool const isInResult = isMember(inSubject == EPointPosition::eInside, m_InClip[i] == EPointPosition::eInside);
    return isInResult != isInRuns ? EExpected::eInResult : EExpected::eNotInResult;
}

/// The result is what the subject is there, or nothing. Folded runs count on both sides or on none.
CRegionProof::EExpected CRegionProof::ExpectAway(std::size_t i, CPathObjectHolder const* subject,
                                                 bool isSubjectKept) const
{
    if (m_InClip[i] != EPointPosition::eOutside)
    {
        return m_InClip[i] == EPointPosition::eOnRing ? EExpected::eAny : EExpected::eNeither;
    }
    if (!isSubjectKept || IsOutOfWay(m_AroundRest, m_Points[i]))
    {
        return EExpected::eNotInResult;
    }
    bool isOdd = false;
    CPathObjectHolder const* holder = subject;
    do
    {
        isOdd = isOdd != (holder->m_Run == nullptr && IsProbeCountOdd(*holder->GetPathObject(), m_Points[i]));
        holder = holder->m_Next;
    } while (holder != subject);
    return isOdd ? EExpected::eInResult : EExpected::eNotInResult;
}

namespace
{

/// Asks one object for several points whether the ray crosses it an odd number of times: of an arc and a point away
/// from it that is plain.
class CObjectProbe
{
public:
    explicit CObjectProbe(CPathObjectBase const & object) : m_Object(object) {}

    bool IsCountOdd(TPoint<double> const & point)
    {
        if (IsOutOfWay(m_Object.GetBoundingRect(), point))
        {
            return false;
        }
        CPathObjectArc const* const arc = AsArc(m_Object);
        return arc != nullptr && IsPlain(*arc, point) ? IsClearlyCrossed(*arc, point)
                                                      : IsProbeCountOdd(m_Object, point);
    }

private:
    bool IsPlain(CPathObjectArc const & arc, TPoint<double> const & point)
    {
        return IsClearlyFarther(arc, point, 1.1 * arcMargin) && !IsNearAbscissa(arc, point.x) && IsSteady(arc);
    }
    bool IsSteady(CPathObjectArc const & arc)
    {
        if (!m_IsRead)
        {
            m_IsRead = true;
            m_IsSteady = !(arc.GetStartPoint() == arc.GetEndPoint()) && IsSteadyArc(arc);
        }
        return m_IsSteady;
    }

    CPathObjectBase const & m_Object;
    bool m_IsRead = false;
    bool m_IsSteady = false;
};

} // namespace

/// Asks only for points below or above the rectangle of the object, or in it: most objects are narrow.
void CRegionProof::CountObject(CPathObjectBase const & object)
{
    constexpr double room = 1e-12; // far above what is tolerated
    constexpr double least = 1e-300;
    CBoundingRect<double> const & rect = object.GetBoundingRect();
    double const left = rect.minX - (room * std::fabs(rect.minX) + least);
    double const right = rect.maxX + (room * std::fabs(rect.maxX) + least);
    if (!MayHavePoint(left, right))
    {
        return;
    }
    CObjectProbe probe(object);
    for (std::size_t i = 0; i < PointCount; ++i)
    {
        if (!(m_X[i] < left) && !(m_X[i] > right))
        {
            m_IsInResult[i] = m_IsInResult[i] != probe.IsCountOdd(m_Points[i]);
        }
    }
}

void CRegionProof::Count(CLinkedPathObject const & element)
{
    if (element.m_Run == nullptr)
    {
        CountObject(*element.m_PathObject);
    }
}

bool CRegionProof::Holds() const
{
    for (std::size_t i = 0; i < PointCount; ++i)
    {
        EExpected const found = m_IsInResult[i] ? EExpected::eInResult : EExpected::eNotInResult;
        if (m_Expected[i] != EExpected::eAny && m_Expected[i] != found)
        {
            if (m_IsAway[i])
            {
                m_Fold->Fail(); // unless the point is near a folded object
            }
            return false;
        }
    }
    return true;
}

} // namespace geometry
