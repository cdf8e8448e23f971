// The arc object: construction, what is read from its four points, transforms, joins.
//
// The four points stand in `m_Points` as start, end, centre, mid-point. Direction and chord cache are derived on first
// use; whatever changes the points empties the cache. An arc that was never set has no points: it reads as a
// degenerate arc at the origin and takes part in nothing.
#include <geometry/arc/path_object_arc.h>

#include <cmath>
#include <memory>
#include <utility>

#include "arc/arc_geometry.h"

namespace geometry
{

namespace
{

enum EArcPoint : std::size_t
{
    eStart = 0,
    eEnd = 1,
    eCentre = 2,
    eMidPoint = 3,
    eArcPointCount = 4
};

/// Stands for the points of an arc that has none.
constinit TPoint<double> const Origin;

Sweep MakeSweep(TPoint<double> const & start, TPoint<double> const & end, TPoint<double> const & centre,
                bool counterClockwise, double radius)
{
    return counterClockwise ? Sweep{start, end, centre, radius} : Sweep{end, start, centre, radius};
}

} // namespace

Sweep SweepOf(CPathObjectArc const & arc)
{
    if (!arc.CPathObjectArc::IsValid())
    {
        return MakeSweep(Origin, Origin, Origin, arc.IsCounterClockwise(), arc.GetRadius());
    }
    // the ends of a full circle may be a rounding apart, on either side: its sweep is closed exactly
    TPoint<double> const* const points = CArcInternals::GetPoints(arc);
    TPoint<double> const & start = points[eStart];
    TPoint<double> const & end = points[eEnd];
    bool const isFullCircle = start == end && arc.IsFullCircle();
    return MakeSweep(start, isFullCircle ? start : end, points[eCentre], arc.IsCounterClockwise(), arc.GetRadius());
}

// --- construction ---

CPathObjectArc::CPathObjectArc() = default;

CPathObjectArc::CPathObjectArc(CPathObjectArc const & other)
    : CPathObjectBase(other), m_Radius(other.m_Radius), m_Direction(other.m_Direction), m_Steadiness(other.m_Steadiness)
{
}

CPathObjectArc::CPathObjectArc(TPoint<double> const & centre, double radius)
{
    TPoint<double> const leftmost(centre.x - radius, centre.y);
    SetArc(leftmost, leftmost, centre, false, radius);
}

CPathObjectArc::CPathObjectArc(TPoint<double> const & start, TPoint<double> const & end, TPoint<double> const & centre,
                               bool counterClockwise)
{
    SetArc(start, end, centre, counterClockwise, -1.0);
}

CPathObjectArc::CPathObjectArc(TPoint<double> const & start, TPoint<double> const & end, TPoint<double> const & centre,
                               bool counterClockwise, double radius)
{
    SetArc(start, end, centre, counterClockwise, radius);
}

CPathObjectArc::~CPathObjectArc() = default;

CPathObjectArc const & CPathObjectArc::operator=(CPathObjectArc const & other)
{
    if (this != &other)
    {
        CPathObjectBase::operator=(other);
        m_Radius = other.m_Radius;
        m_Direction = other.m_Direction;
        m_Steadiness = other.m_Steadiness;
        m_ArcPoints.Clear();
    }
    return *this;
}

void CPathObjectArc::SetArc(TPoint<double> const & start, TPoint<double> const & end, TPoint<double> const & centre,
                            TPoint<double> const & midPoint, double radius)
{
    Points points = {start, end, centre, midPoint}; // a copy: the arguments may be points of this arc
    m_Radius = 0.0 >= radius ? CalculateArcRadius(points[eStart], points[eEnd], points[eCentre]) : radius;
    m_Points.swap(points);
    CPathObjectArc::RecalculateBoundingRect();
    m_ArcPoints.Clear();
}

void CPathObjectArc::SetArc(TPoint<double> const & start, TPoint<double> const & end, TPoint<double> const & centre,
                            bool counterClockwise, double radius)
{
    double const newRadius = 0.0 >= radius ? CalculateArcRadius(start, end, centre) : radius;
    Sweep const sweep =
        MakeSweep(start, end, centre, counterClockwise, newRadius); // arguments may be points of this arc
    m_Points.resize(eArcPointCount);
    m_Points[eStart] = counterClockwise ? sweep.A : sweep.B;
    m_Points[eEnd] = counterClockwise ? sweep.B : sweep.A;
    m_Points[eCentre] = sweep.C;
    m_Points[eMidPoint] = CalculateArcMidPoint(sweep);
    m_Radius = newRadius;
    m_ArcPoints.Clear();
    m_Steadiness = eRectIsCurrent;
    m_Direction = counterClockwise ? eDirectionCounterClockwise : eDirectionClockwise;
    if (sweep.IsClosed())
    {
        CPathObjectArc::RecalculateBoundingRect();
    }
    else
    {
        m_BoundingRect = CalculateArcBoundingRect(sweep);
    }
}

double CPathObjectArc::CalculateMinRadius(double radius)
{
    constexpr double halfGridAngle = 0.09817477042468103; // pi / 32
    return radius / std::cos(halfGridAngle);
}

CPathObjectArc* CPathObjectArc::Clone() const
{
    return new CPathObjectArc(*this);
}

// --- reading ---

TPoint<double> const & CPathObjectArc::GetStartPoint() const
{
    return CPathObjectArc::IsValid() ? m_Points[eStart] : Origin;
}

TPoint<double> const & CPathObjectArc::GetEndPoint() const
{
    return CPathObjectArc::IsValid() ? m_Points[eEnd] : Origin;
}

TPoint<double> const & CPathObjectArc::GetCentre() const
{
    return CPathObjectArc::IsValid() ? m_Points[eCentre] : Origin;
}

TPoint<double> CPathObjectArc::GetInbetweenPoint() const
{
    return CPathObjectArc::IsValid() ? m_Points[eMidPoint] : Origin;
}

bool CPathObjectArc::IsValid() const
{
    return m_Points.size() == eArcPointCount;
}

bool CPathObjectArc::IsDegenerate() const
{
    return !CPathObjectArc::IsValid() ||
           (m_Points[eStart] == m_Points[eEnd] && m_Points[eStart] == m_Points[eMidPoint]);
}

bool CPathObjectArc::IsFullCircle() const
{
    return CPathObjectArc::IsValid() && m_Points[eStart] == m_Points[eEnd] && m_Points[eCentre] != m_Points[eStart] &&
           m_Points[eMidPoint] != m_Points[eStart];
}

bool CPathObjectArc::IsSingleSegment() const
{
    return false;
}

double CPathObjectArc::CalculateLength() const
{
    return IsDegenerate() ? 0.0 : CalculateSweepLength(SweepOf(*this));
}

bool CPathObjectArc::Accept(CPathObjectVisitor & visitor)
{
    return visitor.VisitArc(*this);
}

// The polygon start, mid-point, end, centre has the sense of the sweep, whatever its size: its area gives the
// direction.
EArcDirection CPathObjectArc::GetDirection() const
{
    if (EArcDirection const known = m_Direction; known != eDirectionUnknown || !IsValid())
    {
        return known == eDirectionCounterClockwise ? eDirectionCounterClockwise : eDirectionClockwise;
    }
    std::size_t const order[] = {eStart, eMidPoint, eEnd, eCentre};
    double sum = 0.0;
    TPoint<double> const* previous = &m_Points[eCentre];
    for (std::size_t const index : order)
    {
        TPoint<double> const & p = m_Points[index];
        sum = (p.y * previous->x + sum) - p.x * previous->y;
        previous = &p;
    }
    m_Direction = sum > 0.0 ? eDirectionCounterClockwise : eDirectionClockwise;
    return m_Direction;
}

void CPathObjectArc::AppendValidWindingPoints(Points & points) const
{
    if (!IsValid())
    {
        return;
    }
    TPoint<double> const & start = m_Points[eStart];
    TPoint<double> const & centre = m_Points[eCentre];
    if (start != m_Points[eEnd])
    {
        points.insert(points.end(), {start, m_Points[eMidPoint], m_Points[eEnd]});
    }
    else if (m_Points[eMidPoint] != start)
    {
        double const d = start.x - centre.x;
        double const e = start.y - centre.y;
        TPoint<double> const quarter = IsCounterClockwise() ? TPoint<double>(centre.x - e, centre.y + d)
                                                            : TPoint<double>(centre.x + e, centre.y - d);
        points.insert(points.end(), {start, quarter, m_Points[eMidPoint], m_Points[eEnd]});
    }
}

// --- changing ---

void CPathObjectArc::Reverse()
{
    if (IsValid())
    {
        std::swap(m_Points[eStart], m_Points[eEnd]);
    }
    if (EArcDirection const known = m_Direction; known != eDirectionUnknown)
    {
        m_Direction = known == eDirectionClockwise ? eDirectionCounterClockwise : eDirectionClockwise;
    }
    m_ArcPoints.Clear();
}

void CPathObjectArc::Cleanup(bool) {}

void CPathObjectArc::TryToCorrectProblems()
{
    if (IsValid())
    {
        m_Steadiness = eSteadinessUnknown;
        CorrectArcCentre(m_Points[eStart], m_Points[eEnd], m_Points[eCentre], m_Radius);
    }
}

void CPathObjectArc::RecalculateBoundingRect()
{
    m_Steadiness = eRectIsCurrent;
    m_BoundingRect = IsValid() ? CalculateArcBoundingRect(SweepOf(*this)) : CBoundingRect<double>();
}

void CPathObjectArc::Scale(double sx, double sy)
{
    if (sx * sy < 0.0 && IsValid() && m_Points[eStart] != m_Points[eEnd])
    {
        m_Direction = IsCounterClockwise() ? eDirectionClockwise : eDirectionCounterClockwise;
    }
    CPathObjectBase::Scale(sx, sy);
}

void CPathObjectArc::DoPostTransformActions()
{
    m_ArcPoints.Clear();
    if (IsValid())
    {
        m_Radius = CalculateArcRadius(m_Points[eStart], m_Points[eEnd], m_Points[eCentre]);
    }
    RecalculateBoundingRect();
}

bool CPathObjectArc::CanAppendVertex() const
{
    return false;
}

void CPathObjectArc::AppendVertex(TPoint<double> const &) {}

bool CPathObjectArc::CanPrependVertex() const
{
    return false;
}

void CPathObjectArc::PrependVertex(TPoint<double> const &) {}

} // namespace geometry
