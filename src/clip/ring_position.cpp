// Position tests. Each costs a walk around the other ring, so they are asked only at intersections.
#include "clip/ring_position.h"

#include "clip/ring_index.h"
#include "path/segment_kernels.h"

namespace geometry
{

EPointPosition LocatePointInRing(TPoint<double> const & point, CPathObjectHolder const* ring)
{
    return CRingIndex::Locate(ring, point, 0.0,
                              [&](CPathObjectBase const & object) { return object.IsPointOnPath(point.x, point.y); });
}

bool CrossingParity(TPoint<double> const & point, CPathObjectHolder const* ring)
{
    return CRingIndex::Locate(ring, point, 0.0, [](CPathObjectBase const &) { return false; }) ==
           EPointPosition::eInside;
}

EPointPosition LocatePointOrRect(TPoint<double> const & point, CPathObjectHolder const* ring,
                                 CBoundingRect<double> const & rect)
{
    return rect.ContainsPoint(point.x, point.y) ? LocatePointInRing(point, ring) : EPointPosition::eOutside;
}

bool IsOnTrackOf(CPathObjectHolder const* holder, CPathObjectHolder const* partner)
{
    if (partner == nullptr)
    {
        return false;
    }
    CPathObjectBase const & object = *holder->GetPathObject();
    return object.IsCoincidentWith(*partner->GetPathObject()) ||
           object.IsCoincidentWith(*partner->m_Previous->GetPathObject());
}

namespace
{

/// The first position off the ring among the points `first` to `last` and the midpoints before them. `previous` is
/// the point before `first`, and becomes the last point looked at.
EPointPosition LocateAlong(CPathObjectBase::PointIterator first, CPathObjectBase::PointIterator last,
                           TPoint<double> & previous, CPathObjectHolder const* ring)
{
    for (; first != last; ++first)
    {
        EPointPosition position = LocatePointInRing(*first, ring);
        if (position != EPointPosition::eOnRing)
        {
            return position;
        }
        if (!(*first == previous))
        {
            position = LocatePointInRing(Midpoint(*first, previous), ring);
            if (position != EPointPosition::eOnRing)
            {
                return position;
            }
        }
        previous = *first;
    }
    return EPointPosition::eOnRing;
}

EPointPosition LocateObject(CPathObjectHolder const* holder, CPathObjectHolder const* other)
{
    CPathObjectBase const & object = *holder->GetPathObject();
    auto first = object.GetPointsBegin();
    auto last = object.GetPointsEnd();
    if (first == last)
    {
        return LocatePointInRing(object.GetInbetweenPoint(), other);
    }
    TPoint<double> previous = *first;
    if (holder->HasIntersectionHistory())
    {
        ++first;
    }
    bool const leavesOutEnd = holder->m_Next->HasIntersectionHistory();
    if (leavesOutEnd && first != last)
    {
        --last;
    }
    if (first == last)
    {
        return LocatePointInRing(object.GetInbetweenPoint(), other);
    }
    EPointPosition const position = LocateAlong(first, last, previous, other);
    if (position != EPointPosition::eOnRing || !leavesOutEnd)
    {
        return position;
    }
    return LocatePointInRing(Midpoint(previous, *last), other);
}

} // namespace

EObjectPosition ClassifyPathObject(CPathObjectHolder const* holder, CPathObjectHolder const* other)
{
    if (other == nullptr || !(holder->HasIntersectionHistory() || holder->m_Next->HasIntersectionHistory()))
    {
        return EObjectPosition::eNotApplicable;
    }
    if (IsOnTrackOf(holder, holder->m_Neighbour))
    {
        return EObjectPosition::eOnRing;
    }
    switch (LocateObject(holder, other))
    {
    case EPointPosition::eOnRing:
        return EObjectPosition::eOnRing;
    case EPointPosition::eInside:
        return EObjectPosition::eInside;
    case EPointPosition::eOutside:
        break;
    }
    return EObjectPosition::eOutside;
}

} // namespace geometry
