// What all path objects share: the stored points under transforms, the user info and its ownership, and the joins
// with an object of the other kind, which never succeed.
#include <geometry/path/path_object_base.h>

#include <cmath>
#include <memory>

namespace geometry
{

namespace
{

constexpr double pi = 3.141592653589793;

} // namespace

CPathObjectVisitor::~CPathObjectVisitor() = default;

CPathObjectBase::CUserInfoInterface::~CUserInfoInterface() = default;

std::string const CPathObjectBase::CUserInfoInterface::m_CUserInfoInterfaceClassName = "CPathObjectBaseClassName";

CPathObjectBase::CPathObjectBase(CPathObjectBase const & other)
    : m_BoundingRect(other.m_BoundingRect), m_Points(other.m_Points), m_UserInfo(other.CloneUserInfo())
{
}

CPathObjectBase::~CPathObjectBase()
{
    delete m_UserInfo;
    m_UserInfo = nullptr;
}

CPathObjectBase const & CPathObjectBase::operator=(CPathObjectBase const & other)
{
    if (this != &other)
    {
        Points points(other.m_Points);
        CUserInfoInterface* const userInfo = other.CloneUserInfo();
        // nothing throws from here on
        m_BoundingRect = other.m_BoundingRect;
        m_Points.swap(points);
        m_SegmentIndex.Clear();
        delete m_UserInfo;
        m_UserInfo = userInfo;
    }
    return *this;
}

void CPathObjectBase::Translate(double dx, double dy)
{
    for (TPoint<double> & point : m_Points)
    {
        point.x += dx;
        point.y += dy;
    }
    m_SegmentIndex.Clear();
    DoPostTransformActions();
}

void CPathObjectBase::Scale(double sx, double sy)
{
    for (TPoint<double> & point : m_Points)
    {
        point.x *= sx;
        point.y *= sy;
    }
    m_SegmentIndex.Clear();
    DoPostTransformActions();
}

void CPathObjectBase::RotateDegrees(double angle)
{
    RotateRadians(angle * pi / 180.0);
}

void CPathObjectBase::RotateRadians(double angle)
{
    double const cosine = std::cos(angle);
    double const sine = std::sin(angle);
    for (TPoint<double> & point : m_Points)
    {
        double const x = point.x * cosine - point.y * sine;
        point.y = point.x * sine + point.y * cosine;
        point.x = x;
    }
    m_SegmentIndex.Clear();
    DoPostTransformActions();
}

bool CPathObjectBase::Accept(CPathObjectVisitor & visitor)
{
    return visitor.VisitBase(*this);
}

CPathObjectArc* CPathObjectBase::MergeWithArc(CPathObjectArc const* const) const
{
    return nullptr;
}

CPathObjectPolyline* CPathObjectBase::MergeWithPolyline(CPathObjectPolyline const* const) const
{
    return nullptr;
}

CPathObjectArc* CPathObjectBase::AppendArc(CPathObjectArc const* const) const
{
    return nullptr;
}

CPathObjectPolyline* CPathObjectBase::AppendPolyline(CPathObjectPolyline const* const) const
{
    return nullptr;
}

CPathObjectArc* CPathObjectBase::PrependArc(CPathObjectArc const* const) const
{
    return nullptr;
}

CPathObjectPolyline* CPathObjectBase::PrependPolyline(CPathObjectPolyline const* const) const
{
    return nullptr;
}

void CPathObjectBase::AppendVertex(TPoint<double> const &) {}

void CPathObjectBase::PrependVertex(TPoint<double> const &) {}

void CPathObjectBase::DoPostTransformActions()
{
    RecalculateBoundingRect();
}

} // namespace geometry
