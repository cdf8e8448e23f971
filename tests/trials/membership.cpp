// A ray to the right of the point crosses a rising or falling piece if the point's height lies in the piece's half-open
// span and the point lies left of the piece. Neighbouring pieces share the heights of their ends bit by bit, so parity
// needs no special cases. Whether the point is left of an arc is asked by its distance from the centre, which is safe
// near the top and the bottom of the circle, too.
#include "membership.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace trials
{

template <typename Real>
TMembership<Real>::TMembership(TFaces const & faces, double angle)
    : m_Cos(std::cos(static_cast<Real>(angle))), m_Sin(std::sin(static_cast<Real>(angle))), m_Angle(angle)
{
    for (std::size_t face = 0; face < faces.faces.size(); ++face)
    {
        for (TRing const & ring : faces.faces[face])
        {
            AddRing(ring, static_cast<int>(face), &ring == &faces.faces[face].front());
        }
    }
}

template <typename Real>
void TMembership<Real>::AddRing(TRing const & ring, int face, bool isOutline)
{
    TRingPieces pieces;
    pieces.face = face;
    pieces.isOutline = isOutline;
    pieces.lowX = pieces.lowY = std::numeric_limits<Real>::max();
    pieces.highX = pieces.highY = std::numeric_limits<Real>::lowest();
    for (TEdge const & edge : ring)
    {
        if (edge.isArc)
            AddArc(pieces, edge);
        else
            AddSegment(pieces, edge);
    }
    m_Rings.push_back(std::move(pieces));
}

template <typename Real>
void TMembership<Real>::AddSegment(TRingPieces & ring, TEdge const & edge)
{
    Real ax = m_Cos * edge.a.x - m_Sin * edge.a.y;
    Real ay = m_Sin * edge.a.x + m_Cos * edge.a.y;
    Real bx = m_Cos * edge.b.x - m_Sin * edge.b.y;
    Real by = m_Sin * edge.b.x + m_Cos * edge.b.y;
    if (ay > by)
    {
        std::swap(ax, bx);
        std::swap(ay, by);
    }
    ring.lowX = std::min({ring.lowX, ax, bx});
    ring.highX = std::max({ring.highX, ax, bx});
    ring.lowY = std::min(ring.lowY, ay);
    ring.highY = std::max(ring.highY, by);
    if (ay < by) ring.pieces.push_back({ay, by, ax, ay, bx - ax, by - ay, Real(0), 0});
}

/// Cut where the circle has its top and its bottom. The ends keep the heights of the ring's vertices.
template <typename Real>
void TMembership<Real>::AddArc(TRingPieces & ring, TEdge const & edge)
{
    Real const pi = std::acos(Real(-1));
    bool const isForward = edge.sense > 0.0;
    TSpot const & from = isForward ? edge.a : edge.b;
    TSpot const & to = isForward ? edge.b : edge.a;
    Real const cx = m_Cos * edge.centre.x - m_Sin * edge.centre.y;
    Real const cy = m_Sin * edge.centre.x + m_Cos * edge.centre.y;
    Real const radius = edge.radius;
    Real const start = Real(edge.start) + m_Angle;
    Real const end = start + Real(edge.sweep);
    Real y = m_Sin * from.x + m_Cos * from.y;
    Real const lastY = m_Sin * to.x + m_Cos * to.y;
    ring.lowX = std::min(ring.lowX, cx - radius);
    ring.highX = std::max(ring.highX, cx + radius);
    ring.lowY = std::min({ring.lowY, cy - radius, y, lastY});
    ring.highY = std::max({ring.highY, cy + radius, y, lastY});
    Real at = start;
    for (auto turn = static_cast<long>(std::floor((start - pi / 2) / pi)) + 1; at < end; ++turn)
    {
        Real const next = pi / 2 + static_cast<Real>(turn) * pi;
        bool const isLast = next >= end;
        Real const until = isLast ? end : next;
        Real const nextY = isLast ? lastY : turn % 2 == 0 ? cy + radius : cy - radius;
        int const half = std::cos((at + until) / 2) > 0 ? 1 : -1;
        if (y != nextY)
            ring.pieces.push_back(
                {std::min(y, nextY), std::max(y, nextY), cx, cy, Real(0), Real(0), radius * radius, half});
        y = nextY;
        at = until;
    }
}

template <typename Real>
bool TMembership<Real>::IsOdd(TRingPieces const & ring, Real x, Real y) const
{
    if (y < ring.lowY || y > ring.highY || x < ring.lowX || x > ring.highX) return false;
    bool isOdd = false;
    for (TPiece const & piece : ring.pieces)
    {
        if (y < piece.low || y >= piece.high) continue;
        Real const dx = x - piece.ax;
        Real const dy = y - piece.ay;
        bool isLeft = false;
        if (piece.half == 0)
            isLeft = piece.bx * dy - piece.by * dx > 0;
        else if (piece.half > 0)
            isLeft = dx < 0 || dx * dx + dy * dy < piece.squareRadius;
        else
            isLeft = dx < 0 && dx * dx + dy * dy > piece.squareRadius;
        isOdd = isOdd != isLeft;
    }
    return isOdd;
}

template <typename Real>
int TMembership<Real>::Count(TSpot const & p) const
{
    Real const x = m_Cos * p.x - m_Sin * p.y;
    Real const y = m_Sin * p.x + m_Cos * p.y;
    int count = 0;
    bool isInside = false;
    for (std::size_t i = 0; i < m_Rings.size(); ++i)
    {
        TRingPieces const & ring = m_Rings[i];
        if (ring.isOutline)
            isInside = IsOdd(ring, x, y);
        else if (isInside)
            isInside = !IsOdd(ring, x, y);
        bool const isLast = i + 1 == m_Rings.size() || m_Rings[i + 1].isOutline;
        if (isLast && isInside) ++count;
    }
    return count;
}

template class TMembership<double>;
template class TMembership<long double>;

} // namespace trials
