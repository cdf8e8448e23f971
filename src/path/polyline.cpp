// The polyline as an object: vertices, reading, reversal, joins with other polylines.
#include <geometry/path/path_object_polyline.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "path/segment_kernels.h"

namespace geometry
{

namespace
{

/// What the ends of a polyline without vertices answer.
TPoint<double> const & NoPoint()
{
    static TPoint<double> const origin;
    return origin;
}

} // namespace

CPathObjectPolyline::CPathObjectPolyline(TPoint<double> const & start, TPoint<double> const & end)
{
    m_Points.reserve(2);
    m_Points.push_back(start);
    m_Points.push_back(end);
    m_BoundingRect = CBoundingRect<double>(start, end);
}

CPathObjectPolyline::~CPathObjectPolyline() = default;

CPathObjectPolyline & CPathObjectPolyline::operator=(CPathObjectPolyline const & other)
{
    CPathObjectBase::operator=(other);
    return *this;
}

void CPathObjectPolyline::AddVertex(double const & x, double const & y)
{
    TPoint<double> const vertex(x, y);
    m_Points.push_back(vertex);
    m_SegmentIndex.Clear();
    m_BoundingRect.Include(vertex);
}

void CPathObjectPolyline::InsertVertex(unsigned int index, double const & x, double const & y)
{
    TPoint<double> const vertex(x, y);
    std::size_t const place = std::min<std::size_t>(index, m_Points.size());
    m_Points.insert(m_Points.begin() + static_cast<std::ptrdiff_t>(place), vertex);
    m_SegmentIndex.Clear();
    m_BoundingRect.Include(vertex);
}

void CPathObjectPolyline::RemoveVertex(unsigned int index)
{
    if (index < m_Points.size())
    {
        m_Points.erase(m_Points.begin() + index);
        m_SegmentIndex.Clear();
    }
    RecalculateBoundingRect();
}

void CPathObjectPolyline::clear()
{
    m_Points.clear();
    m_SegmentIndex.Clear();
    m_BoundingRect.Reset();
}

CPathObjectBase::PointIterator CPathObjectPolyline::GetPointsBegin() const
{
    return m_Points.begin();
}

CPathObjectBase::PointIterator CPathObjectPolyline::GetPointsEnd() const
{
    return m_Points.end();
}

TPoint<double> const & CPathObjectPolyline::GetStartPoint() const
{
    return m_Points.empty() ? NoPoint() : m_Points.front();
}

TPoint<double> const & CPathObjectPolyline::GetEndPoint() const
{
    return m_Points.empty() ? NoPoint() : m_Points.back();
}

TPoint<double> CPathObjectPolyline::GetInbetweenPoint() const
{
    std::size_t const n = m_Points.size();
    if (n < 2)
    {
        return GetStartPoint();
    }
    if (n == 2)
    {
        return Midpoint(m_Points[0], m_Points[1]);
    }
    std::size_t const i = (n - 1) / 2;
    bool const nextIsLonger =
        SquareDistance(m_Points[i], m_Points[i + 1]) > SquareDistance(m_Points[i - 1], m_Points[i]);
    return nextIsLonger ? Midpoint(m_Points[i], m_Points[i + 1]) : Midpoint(m_Points[i - 1], m_Points[i]);
}

bool CPathObjectPolyline::IsDegenerate() const
{
    return m_Points.size() < 3 && GetStartPoint() == GetEndPoint();
}

bool CPathObjectPolyline::IsSingleSegment() const
{
    return m_Points.size() == 2;
}

double CPathObjectPolyline::CalculateLength() const
{
    double length = 0.0;
    if (IsDegenerate())
    {
        return length;
    }
    for (std::size_t i = 1; i < m_Points.size(); ++i)
    {
        double const dx = m_Points[i].x - m_Points[i - 1].x;
        double const dy = m_Points[i].y - m_Points[i - 1].y;
        length += std::sqrt(dy * dy + dx * dx);
    }
    return length;
}

bool CPathObjectPolyline::Accept(CPathObjectVisitor & visitor)
{
    return visitor.VisitPolyline(*this);
}

void CPathObjectPolyline::Reverse()
{
    std::reverse(m_Points.begin(), m_Points.end());
    m_SegmentIndex.Clear();
}

bool CPathObjectPolyline::IsValid() const
{
    return m_Points.size() > 1;
}

CPathObjectPolyline* CPathObjectPolyline::Clone() const
{
    return new CPathObjectPolyline(*this);
}

bool CPathObjectPolyline::IsClosed() const
{
    return m_Points.size() >= 2 && m_Points.front() == m_Points.back();
}

// --- joins -----------------------------------------------------------------------------------------------------

CPathObjectBase* CPathObjectPolyline::MergeWith(CPathObjectBase const* other) const
{
    return other != nullptr ? other->MergeWithPolyline(this) : nullptr;
}

CPathObjectPolyline* CPathObjectPolyline::MergeWithPolyline(CPathObjectPolyline const* const other) const
{
    CPathObjectPolyline* const joined = AppendPolyline(other);
    return joined != nullptr ? joined : PrependPolyline(other);
}

CPathObjectBase* CPathObjectPolyline::Append(CPathObjectBase const* other) const
{
    return other != nullptr ? other->PrependPolyline(this) : nullptr;
}

CPathObjectBase* CPathObjectPolyline::Prepend(CPathObjectBase const* other) const
{
    return other != nullptr ? other->AppendPolyline(this) : nullptr;
}

namespace
{

bool MeetEndToStart(CPathObjectPolyline const & first, CPathObjectPolyline const & second)
{
    return first.GetPointsBegin() != first.GetPointsEnd() && second.GetPointsBegin() != second.GetPointsEnd() &&
           first.GetEndPoint() == second.GetStartPoint();
}

} // namespace

CPathObjectPolyline* CPathObjectPolyline::AppendPolyline(CPathObjectPolyline const* const other) const
{
    if (other == nullptr || !MeetEndToStart(*this, *other))
    {
        return nullptr;
    }
    auto joined = std::make_unique<CPathObjectPolyline>();
    if (m_UserInfo != nullptr)
    {
        joined->SetUserInfo(m_UserInfo->CloneForMerge(this, other));
    }
    joined->m_Points.reserve(m_Points.size() + other->m_Points.size() - 1);
    joined->m_Points = m_Points;
    joined->m_Points.insert(joined->m_Points.end(), other->m_Points.begin() + 1, other->m_Points.end());
    joined->m_BoundingRect = m_BoundingRect;
    joined->m_BoundingRect.Include(other->m_BoundingRect);
    return joined.release();
}

CPathObjectPolyline* CPathObjectPolyline::PrependPolyline(CPathObjectPolyline const* const other) const
{
    if (other == nullptr || !MeetEndToStart(*other, *this))
    {
        return nullptr;
    }
    auto joined = std::make_unique<CPathObjectPolyline>();
    if (m_UserInfo != nullptr)
    {
        joined->SetUserInfo(m_UserInfo->CloneForMerge(other, this));
    }
    joined->m_Points.reserve(m_Points.size() + other->m_Points.size() - 1);
    joined->m_Points = other->m_Points;
    joined->m_Points.insert(joined->m_Points.end(), m_Points.begin() + 1, m_Points.end());
    joined->m_BoundingRect = m_BoundingRect;
    joined->m_BoundingRect.Include(other->m_BoundingRect);
    return joined.release();
}

void CPathObjectPolyline::ContinueWith(CPathObjectPolyline const & other, bool reverse)
{
    Points const & added = other.m_Points;
    if (m_Points.size() + added.size() > m_Points.capacity())
    {
        m_Points.reserve(std::max(m_Points.size() + added.size(), 2 * m_Points.size())); // more may follow
    }
    m_Points.pop_back();
    if (reverse)
    {
        m_Points.insert(m_Points.end(), added.rbegin(), added.rend());
    }
    else
    {
        m_Points.insert(m_Points.end(), added.begin(), added.end());
    }
    m_SegmentIndex.Clear();
    m_BoundingRect.Include(other.m_BoundingRect);
}

// --- closing gaps ----------------------------------------------------------------------------------------------

void CPathObjectPolyline::AppendValidWindingPoints(Points & points) const
{
    points.insert(points.end(), m_Points.begin(), m_Points.end());
}

bool CPathObjectPolyline::CanAppendVertex() const
{
    return true;
}

void CPathObjectPolyline::AppendVertex(TPoint<double> const & point)
{
    AddVertex(point.x, point.y);
}

bool CPathObjectPolyline::CanPrependVertex() const
{
    return true;
}

void CPathObjectPolyline::PrependVertex(TPoint<double> const & point)
{
    InsertVertex(0, point.x, point.y);
}

void CPathObjectPolyline::TryToCorrectProblems() {}

void CPathObjectPolyline::RecalculateBoundingRect()
{
    m_BoundingRect.Reset();
    for (TPoint<double> const & vertex : m_Points)
    {
        m_BoundingRect.Include(vertex);
    }
}

} // namespace geometry
