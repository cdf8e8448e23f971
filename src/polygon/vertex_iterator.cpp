// The walk over all vertices of an outline, and what is derived from such points: the winding of an outline, and
// holes that wind against theirs.
#include <geometry/polygon/vertex_iterator.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "polygon/area.h"
#include "polygon/polygon_tools.h"

namespace geometry
{

// --- walking ---------------------------------------------------------------------------------------------------

CPolygon::TConstVertexIterator::TConstVertexIterator(std::vector<CPathObjectBase*> const* const pathObjects, bool atEnd)
    : m_PathObjects(pathObjects)
{
    if (m_PathObjects == nullptr)
    {
        return;
    }
    m_CurrentObject = atEnd ? m_PathObjects->end() : m_PathObjects->begin();
    for (; !IsAtEnd(); ++m_CurrentObject)
    {
        m_CurrentVertex = (*m_CurrentObject)->GetPointsBegin();
        if (m_CurrentVertex != (*m_CurrentObject)->GetPointsEnd())
        {
            break;
        }
    }
}

CPolygon::TConstVertexIterator::~TConstVertexIterator()
{
    m_PathObjects = nullptr;
}

CPolygon::TConstVertexIterator & CPolygon::TConstVertexIterator::operator++(int)
{
    Increment();
    return *this;
}

CPolygon::TConstVertexIterator & CPolygon::TConstVertexIterator::operator++()
{
    Increment();
    return *this;
}

CPolygon::TConstVertexIterator & CPolygon::TConstVertexIterator::operator--(int)
{
    Decrement();
    return *this;
}

CPolygon::TConstVertexIterator & CPolygon::TConstVertexIterator::operator--()
{
    Decrement();
    return *this;
}

bool CPolygon::TConstVertexIterator::IsEqual(TConstVertexIterator const & other) const
{
    if (m_PathObjects != other.m_PathObjects)
    {
        return false;
    }
    if (m_PathObjects == nullptr)
    {
        return true;
    }
    if (m_CurrentObject != other.m_CurrentObject)
    {
        return false;
    }
    return IsAtEnd() || m_CurrentVertex == other.m_CurrentVertex;
}

bool CPolygon::TConstVertexIterator::IsNotEqual(TConstVertexIterator const & other) const
{
    return !IsEqual(other);
}

CPolygon::TConstVertexIterator & CPolygon::TConstVertexIterator::operator=(TConstVertexIterator const & other)
{
    if (this != &other)
    {
        m_PathObjects = other.m_PathObjects;
        m_CurrentObject = other.m_CurrentObject;
        m_CurrentVertex = other.m_CurrentVertex;
    }
    return *this;
}

CPolygon::TConstVertexIterator::reference CPolygon::TConstVertexIterator::operator*() const
{
    return *m_CurrentVertex;
}

CPolygon::TConstVertexIterator::pointer CPolygon::TConstVertexIterator::operator->() const
{
    return &*m_CurrentVertex;
}

void CPolygon::TConstVertexIterator::Increment()
{
    if (m_PathObjects == nullptr || IsAtEnd())
    {
        return;
    }
    if (m_CurrentVertex != (*m_CurrentObject)->GetPointsEnd())
    {
        ++m_CurrentVertex;
    }
    while (m_CurrentVertex == (*m_CurrentObject)->GetPointsEnd())
    {
        ++m_CurrentObject;
        if (IsAtEnd())
        {
            return;
        }
        m_CurrentVertex = (*m_CurrentObject)->GetPointsBegin();
    }
}

void CPolygon::TConstVertexIterator::Decrement()
{
    if (m_PathObjects == nullptr || m_PathObjects->empty())
    {
        return;
    }
    if (IsAtEnd())
    {
        --m_CurrentObject;
        m_CurrentVertex = (*m_CurrentObject)->GetPointsEnd();
    }
    while (m_CurrentVertex == (*m_CurrentObject)->GetPointsBegin() && m_CurrentObject != m_PathObjects->begin())
    {
        --m_CurrentObject;
        m_CurrentVertex = (*m_CurrentObject)->GetPointsEnd();
    }
    if (m_CurrentVertex != (*m_CurrentObject)->GetPointsBegin())
    {
        --m_CurrentVertex;
    }
}

// --- winding ---------------------------------------------------------------------------------------------------

namespace
{

/// Of the rectangle's area: what an outline must enclose for the sign of its area to be above all doubt.
constexpr double clearPartOfArea = 1e-9;

/// A path object that is not a polyline takes no vertices.
bool HasArc(CPolygon::PathObjects const & outline)
{
    return std::any_of(outline.begin(), outline.end(),
                       [](CPathObjectBase const* object) { return !object->CanAppendVertex(); });
}

/// Twice the signed area of a polygon, point by point.
class CAreaSum
{
public:
    /// `last`: the last point to come.
    explicit CAreaSum(TPoint<double> const & last) : m_Before(last) {}

    void Add(CPathObjectBase::PointIterator first, CPathObjectBase::PointIterator last)
    {
        for (; first != last; ++first)
        {
            m_Sum = (first->y * m_Before.x + m_Sum) - first->x * m_Before.y;
            m_Before = *first;
        }
    }
    double Get() const { return m_Sum; }

private:
    double m_Sum = 0.0;
    TPoint<double> m_Before;
};

} // namespace

CPolygon::EPolygonWinding CPolygon::GetWindingDirection() const
{
    if (EPolygonWinding const known = m_WindingDirection; known != eWindingUnknown || m_Outline.empty())
    {
        return known;
    }
    EPolygonWinding const byArea = HasArc(m_Outline) ? FindWindingByArea() : eWindingUnknown;
    m_WindingDirection = byArea != eWindingUnknown ? byArea : FindWindingByPoints();
    return m_WindingDirection;
}

/// By the points of the path objects, three for an arc: where long arcs run past each other, the polygon of such points
/// can cross itself and wind the wrong way.
CPolygon::EPolygonWinding CPolygon::FindWindingByPoints() const
{
    constexpr std::size_t usualPoints = 4; // of an arc
    CPathObjectBase::Points points;
    points.reserve(usualPoints);
    for (std::size_t i = m_Outline.size(); i-- > 0 && points.empty();)
    {
        if (m_Outline[i]->CanAppendVertex() && m_Outline[i]->IsValid())
        {
            points.push_back(m_Outline[i]->GetEndPoint());
        }
        else
        {
            m_Outline[i]->AppendValidWindingPoints(points);
        }
    }
    CAreaSum sum(points.empty() ? TPoint<double>() : points.back());
    for (CPathObjectBase const* object : m_Outline)
    {
        if (object->CanAppendVertex())
        {
            sum.Add(object->GetPointsBegin(), object->GetPointsEnd());
        }
        else
        {
            points.clear();
            object->AppendValidWindingPoints(points);
            sum.Add(points.begin(), points.end());
        }
    }
    // zero and NaN count as positive
    return sum.Get() < 0.0 ? eWindingNegative : eWindingPositive;
}

/// By the true area, if that is clearly not zero.
CPolygon::EPolygonWinding CPolygon::FindWindingByArea() const
{
    double const boundingArea =
        (m_BoundingRect.maxX - m_BoundingRect.minX) * (m_BoundingRect.maxY - m_BoundingRect.minY);
    int const sign = SignOfOutlineArea(m_Outline, clearPartOfArea * boundingArea);
    return sign == 0 ? eWindingUnknown : sign < 0 ? eWindingNegative : eWindingPositive;
}

CPolygon::EPolygonWinding CPolygon::ReverseWindingDirection()
{
    EPolygonWinding const winding = GetWindingDirection();
    m_Facts.reset();
    ClearOutlineCache();
    for (std::size_t low = 0, high = m_Outline.size(); low + 1 < high; ++low)
    {
        --high;
        std::swap(m_Outline[low], m_Outline[high]);
    }
    for (CPathObjectBase* object : m_Outline)
    {
        object->Reverse();
    }
    // The rectangles of the holes stand, so that each keeps its place in the container and in the hole list: taking
    // them out and adding them again in order would change nothing.
    for (CPolygon* hole : m_Holes.GetObjects())
    {
        hole->ReverseWindingDirection();
    }
    if (winding != eWindingUnknown)
    {
        m_WindingDirection = winding == eWindingNegative ? eWindingPositive : eWindingNegative;
    }
    return m_WindingDirection;
}

void CPolygon::SetCorrectHoleWinding(CPolygon & hole) const
{
    CPolygonInternals::TurnHole(hole, GetWindingDirection());
}

} // namespace geometry
