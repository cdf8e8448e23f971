// How far a point, a path object or another polygon is from a polygon. The path objects know their distances; here it
// is decided which outlines are asked. One start point tells on which side of an outline the other thing lies: what
// starts outside and reaches in has crossed the outline, at distance 0, and what starts in a hole can't be nearer to
// anything behind that hole's outline. Only holes that the best distance known reaches are asked.
//
// The loops over outlines say which object or pair is the nearest: the first one of those that are as near. Where there
// are many objects the same one is found by an index.
#include <algorithm>
#include <cfloat>
#include <cmath>

#include "polygon/outline_index.h"
#include "polygon/polygon_tools.h"

namespace geometry
{

namespace
{

bool IsZeroDistance(double d)
{
    return IsAlmostEqual(d, 0.0, FineUlpLimit);
}

bool IsInOutline(CPolygon const & polygon, TPoint<double> const & point)
{
    return polygon.PointInOutline(point.x, point.y);
}

/// The rectangle of everything within the root of `squareDistance` of `rect`, in x and y each.
CBoundingRect<double> ReachOf(CBoundingRect<double> const & rect, double squareDistance)
{
    double const reach = std::sqrt(squareDistance);
    return CBoundingRect<double>(TPoint<double>(rect.minX - reach, rect.minY - reach),
                                 TPoint<double>(rect.maxX + reach, rect.maxY + reach));
}

std::vector<CPolygon*> FindHoles(CPolygon::PolygonHash const & holes, CBoundingRect<double> const & rect)
{
    std::vector<CPolygon*> found;
    holes.GetObjectsInRect(rect, found);
    return found;
}

/// The first of the holes near `rect` in which `point` lies, or null.
CPolygon const* FindHoleAround(CPolygon::PolygonHash const & holes, CBoundingRect<double> const & rect,
                               TPoint<double> const & point)
{
    for (CPolygon const* hole : FindHoles(holes, rect))
    {
        if (IsInOutline(*hole, point))
        {
            return hole;
        }
    }
    return nullptr;
}

/// Of equal distances the first one found stays.
struct NearestToPoint
{
    double const x;
    double const y;
    TPoint<double> & closest;
    double best = DBL_MAX;

    void TryObject(CPathObjectBase const & object)
    {
        TPoint<double> found;
        double const d = object.SquareDistanceToPoint(x, y, found);
        if (d < best)
        {
            best = d;
            closest = found;
        }
    }

    void TryOutline(CPolygon const & polygon)
    {
        auto const & objects = polygon.GetOutline();
        auto const measure = [&](std::size_t i)
        {
            TPoint<double> found;
            return objects[i]->SquareDistanceToPoint(x, y, found);
        };
        COutlineIndex const* const index = CPolygonInternals::FindOutlineIndex(polygon, false);
        std::size_t nearest = 0;
        if (index != nullptr && index->FindNearestToPoint(TPoint<double>(x, y), measure, nearest))
        {
            TryObject(*objects[nearest]);
            return;
        }
        for (CPathObjectBase const* object : objects)
        {
            TryObject(*object);
        }
    }
};

} // namespace

// --- from a point ---

double CPolygon::SquareDistanceToPoint(double x, double y, bool solid, TPoint<double> & closest) const
{
    NearestToPoint nearest{x, y, closest};
    TPoint<double> const point(x, y);
    CPolygon const* polygon = this;
    if (PointInOutline(x, y))
    {
        CBoundingRect<double> const atPoint(point, point);
        while (CPolygon const* around = FindHoleAround(polygon->m_Holes, atPoint, point))
        {
            polygon = around; // nothing beyond the outline of this hole matters
        }
        if (solid && polygon == this)
        {
            closest = point;
            return 0.0;
        }
        CBoundingRect<double> const & rect = polygon->m_BoundingRect;
        double const d = std::min({y - rect.minY, rect.maxY - y, rect.maxX - x, x - rect.minX});
        CBoundingRect<double> const square(TPoint<double>(x - d, y - d), TPoint<double>(x + d, y + d));
        for (CPolygon const* hole : FindHoles(polygon->m_Holes, square))
        {
            nearest.TryOutline(*hole); // the point lies outside of it
        }
    }
    nearest.TryOutline(*polygon);
    return nearest.best;
}

// --- from a path object ---

namespace
{

/// What a loop over an outline measures that knows `squareDistance` from `path`.
CBoundingRect<double> SearchRectOf(CPathObjectBase const & path, double squareDistance)
{
    CBoundingRect<double> rect = path.GetBoundingRect();
    rect.Inflate(std::sqrt(squareDistance));
    return rect;
}

} // namespace

/// The first of the nearest objects of the outline. False: no index tells.
bool CPolygon::FindNearestObject(CPathObjectBase const & path, std::size_t & found) const
{
    COutlineIndex const* const index = FindOutlineIndex(false);
    if (index == nullptr)
    {
        return false;
    }
    COutlineIndex const ofPath({&path});
    CNearestPair nearest = ofPath.MakeNearestPair(*index);
    bool const isTold = ofPath.OfferPairs(*index, nearest,
                                          [&](std::size_t, std::size_t i)
                                          {
                                              TPoint<double> a;
                                              TPoint<double> b;
                                              return ZeroIfFine(m_Outline[i]->SquareDistanceToPath(path, a, b));
                                          });
    found = isTold ? nearest.GetPlace().second : 0;
    return isTold && nearest.IsFound();
}

double CPolygon::SquareDistanceToOutline(CPathObjectBase const & path, TPoint<double> & onPolygon,
                                         TPoint<double> & onPath) const
{
    if (std::size_t i = 0; FindNearestObject(path, i))
    {
        TPoint<double> a;
        TPoint<double> b;
        double const d = m_Outline[i]->SquareDistanceToPath(path, a, b);
        if (SearchRectOf(path, d).Overlaps(m_Outline[i]->GetBoundingRect()))
        {
            onPolygon = a; // the loop, knowing no less, has measured it
            onPath = b;
            return d;
        }
    }
    double best = DBL_MAX;
    bool isPruning = false;
    CBoundingRect<double> search;
    for (CPathObjectBase const* object : m_Outline)
    {
        if (isPruning && !search.Overlaps(object->GetBoundingRect()))
        {
            continue;
        }
        TPoint<double> a;
        TPoint<double> b;
        double const d = object->SquareDistanceToPath(path, a, b);
        if (d < best)
        {
            best = d;
            onPolygon = a;
            onPath = b;
            if (IsZeroDistance(d))
            {
                return d;
            }
            search = SearchRectOf(path, d);
            isPruning = true;
        }
    }
    return best;
}

double CPolygon::SquareDistanceToPathSolid(CPathObjectBase const & path, TPoint<double> & onPolygon,
                                           TPoint<double> & onPath) const
{
    TPoint<double> const start = path.GetStartPoint();
    if (!IsInOutline(*this, start))
    {
        return SquareDistanceToOutline(path, onPolygon, onPath);
    }
    if (CPolygon const* hole = FindHoleAround(m_Holes, path.GetBoundingRect(), start))
    {
        double const d = hole->SquareDistanceToOutline(path, onPolygon, onPath);
        return IsZeroDistance(d) ? 0.0 : d;
    }
    onPolygon = start;
    onPath = start;
    return 0.0;
}

double CPolygon::SquareDistanceToPathOpen(CPathObjectBase const & path, TPoint<double> & onPolygon,
                                          TPoint<double> & onPath) const
{
    double best = DBL_MAX;
    TPoint<double> a;
    TPoint<double> b;
    auto const isBetter = [&](double d)
    {
        if (!(d < best))
        {
            return false;
        }
        best = d;
        onPolygon = a;
        onPath = b;
        return true;
    };
    std::size_t first = 0;
    bool const isToldByIndex = FindNearestObject(path, first);
    std::size_t const end = isToldByIndex ? first + 1 : m_Outline.size();
    for (; first < end; ++first)
    {
        double const d = m_Outline[first]->SquareDistanceToPath(path, a, b);
        if (isBetter(d) && IsZeroDistance(d))
        {
            return d; // no hole can beat it
        }
    }
    TPoint<double> const start = path.GetStartPoint();
    if (m_Holes.IsEmpty() || !IsInOutline(*this, start))
    {
        return best; // a path that starts outside and hasn't touched the outline can't reach a hole
    }
    CBoundingRect<double> search = ReachOf(path.GetBoundingRect(), best);
    for (CPolygon const* hole : FindHoles(m_Holes, search))
    {
        if (!search.Overlaps(hole->GetBoundingRect()))
        {
            continue;
        }
        double const d = hole->SquareDistanceToOutline(path, a, b);
        if (isBetter(d))
        {
            if (IsZeroDistance(d))
            {
                return 0.0;
            }
            search = ReachOf(path.GetBoundingRect(), best);
        }
        if (IsInOutline(*hole, start))
        {
            return best; // other holes lie behind the outline of this one
        }
    }
    return best;
}

// --- from another polygon ---

namespace
{

/// The pair of closest points of a polygon, outline by outline, and `other`, which answers for its path objects.
template <typename DistanceToPath>
struct NearestToPolygon
{
    CPolygon const & other;
    bool const otherSolid;
    DistanceToPath distanceToPath; ///< of `other`: its closest point first
    TPoint<double> & onThis;
    TPoint<double> & onOther;
    double best = DBL_MAX;

    /// The distance of `object`, exactly 0.0 if it is zero.
    double TryObject(CPathObjectBase const & object)
    {
        TPoint<double> a;
        TPoint<double> b;
        double const d = ZeroIfFine(distanceToPath(object, a, b));
        if (d < best)
        {
            best = d;
            onThis = b;
            onOther = a;
        }
        return d;
    }

    /// The smallest distance of the path objects of `polygon`, exactly 0.0 at the first that is zero.
    double TryOutline(CPolygon const & polygon)
    {
        auto const & objects = polygon.GetOutline();
        if (std::size_t nearest = 0; FindNearestObject(polygon, nearest))
        {
            return TryObject(*objects[nearest]);
        }
        double result = DBL_MAX;
        for (auto object = objects.begin(); object != objects.end() && result != 0.0; ++object)
        {
            result = std::min(result, TryObject(**object));
        }
        return result;
    }

    /// The first of the objects of `polygon` that are nearest to `other`. False: no index tells. Objects that start in
    /// `other` may lie in its area or reach its holes, and are asked one by one; for all others its outline decides.
    /// The loop passes over pairs of a solid `other` that are too far apart: if it did so with the nearest pair, whose
    /// object answers a larger distance then, the loop has to tell.
    bool FindNearestObject(CPolygon const & polygon, std::size_t & found) const
    {
        COutlineIndex const* const mine = CPolygonInternals::FindOutlineIndex(polygon, true);
        COutlineIndex const* const theirs =
            mine != nullptr ? CPolygonInternals::FindOutlineIndex(other, true) : nullptr;
        if (theirs == nullptr)
        {
            return false;
        }
        auto const & objects = polygon.GetOutline();
        TPoint<double> a;
        TPoint<double> b;
        CNearestPair nearest = mine->MakeNearestPair(*theirs);
        std::vector<bool> isDone(objects.size(), false);
        bool const isOutlineAll = !otherSolid && other.GetHoles().empty();
        for (std::size_t i = 0; i < objects.size() && !isOutlineAll && nearest.GetBest() != 0.0; ++i)
        {
            isDone[i] = IsInOutline(other, objects[i]->GetStartPoint());
            nearest.Offer(isDone[i] ? ZeroIfFine(distanceToPath(*objects[i], a, b)) : DBL_MAX, i, 0);
        }
        auto const measure = [&](std::size_t i, std::size_t j)
        { return isDone[i] ? DBL_MAX : ZeroIfFine(other.GetOutline()[j]->SquareDistanceToPath(*objects[i], a, b)); };
        if (!mine->OfferPairs(*theirs, nearest, measure) || !nearest.IsFound())
        {
            return false;
        }
        found = nearest.GetPlace().first;
        return ZeroIfFine(distanceToPath(*objects[found], a, b)) == nearest.GetBest();
    }
};

} // namespace

// The polygon that may contain the other one is the one that is walked: if `other` doesn't start in this outline, the
// roles are exchanged, once. Of the holes, the one that `other` starts in hides all others, and only its own holes, if
// a caller gave it any, are left to ask: so the descent is a loop.
double CPolygon::SquareDistanceToPolygon(CPolygon const & other, bool thisSolid, bool otherSolid,
                                         TPoint<double> & onThis, TPoint<double> & onOther, bool firstCall) const
{
    if (m_Outline.empty() || other.m_Outline.empty())
    {
        return DBL_MAX;
    }
    TPoint<double> const start = other.m_Outline.front()->GetStartPoint();
    bool const isStartInside = IsInOutline(*this, start);
    if (firstCall && !isStartInside)
    {
        return other.SquareDistanceToPolygon(*this, otherSolid, thisSolid, onOther, onThis, false);
    }
    auto const distanceToPath = [&](CPathObjectBase const & path, TPoint<double> & a, TPoint<double> & b)
    { return otherSolid ? other.SquareDistanceToPathSolid(path, a, b) : other.SquareDistanceToPathOpen(path, a, b); };
    NearestToPolygon<decltype(distanceToPath)> nearest{other, otherSolid, distanceToPath, onThis, onOther};
    double reach = nearest.TryOutline(*this);
    if (reach == 0.0 || !isStartInside)
    {
        return nearest.best;
    }
    CPolygon const* around = this;
    do
    {
        auto const holes = FindHoles(around->m_Holes, ReachOf(other.m_BoundingRect, reach));
        CPolygon const* next = nullptr;
        for (auto hole = holes.begin(); hole != holes.end() && next == nullptr && nearest.best != 0.0; ++hole)
        {
            reach = nearest.TryOutline(**hole);
            next = IsInOutline(**hole, start) ? *hole : nullptr;
        }
        if (next == nullptr && around != this && nearest.best != 0.0)
        {
            return nearest.best;
        }
        around = next;
    } while (around != nullptr && nearest.best != 0.0);
    bool const metAtHole = nearest.best == 0.0;
    if (thisSolid && !(metAtHole && FindHoleAround(m_Holes, CBoundingRect<double>(start, start), start) != nullptr))
    {
        onThis = start; // which lies in the solid area
        onOther = start;
        return 0.0;
    }
    return nearest.best;
}

double CPolygon::SquareDistanceToPolygon(CPolygon const & other, bool thisSolid, bool otherSolid,
                                         TPoint<double> & onThis, TPoint<double> & onOther) const
{
    return SquareDistanceToPolygon(other, thisSolid, otherSolid, onThis, onOther, true);
}

} // namespace geometry
