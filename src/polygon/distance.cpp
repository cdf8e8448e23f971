// How far a point, a path object or another polygon is from a polygon. The path objects know their distances; here it
// is decided which outlines are asked. One start point tells on which side of an outline the other thing lies: what
// starts outside and reaches in has crossed the outline, at distance 0, and what starts in a hole can't be nearer to
// anything behind that hole's outline. Only holes that the best distance known reaches are asked.
#include <algorithm>
#include <cfloat>
#include <cmath>

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

    void TryOutline(CPolygon const & polygon)
    {
        for (CPathObjectBase const* object : polygon.GetOutline())
        {
            TPoint<double> found;
            double const d = object->SquareDistanceToPoint(x, y, found);
            if (d < best)
            {
                best = d;
                closest = found;
            }
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

double CPolygon::SquareDistanceToOutline(CPathObjectBase const & path, TPoint<double> & onPolygon,
                                         TPoint<double> & onPath) const
{
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
            search = path.GetBoundingRect();
            search.Inflate(std::sqrt(d));
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
    for (CPathObjectBase const* object : m_Outline)
    {
        double const d = object->SquareDistanceToPath(path, a, b);
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
    DistanceToPath distanceToPath; ///< of `other`: its closest point first
    TPoint<double> & onThis;
    TPoint<double> & onOther;
    double best = DBL_MAX;

    /// The smallest distance of the path objects of `polygon`, exactly 0.0 at the first that is zero.
    double TryOutline(CPolygon const & polygon)
    {
        double result = DBL_MAX;
        for (CPathObjectBase const* object : polygon.GetOutline())
        {
            TPoint<double> a;
            TPoint<double> b;
            double d = distanceToPath(*object, a, b);
            bool const isZero = IsZeroDistance(d);
            d = isZero ? 0.0 : d;
            result = std::min(result, d);
            if (d < best)
            {
                best = d;
                onThis = b;
                onOther = a;
            }
            if (isZero)
            {
                return 0.0;
            }
        }
        return result;
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
    NearestToPolygon<decltype(distanceToPath)> nearest{distanceToPath, onThis, onOther};
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
