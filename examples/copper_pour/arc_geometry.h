/// \file
/// Small constructions on points.
#pragma once

#include "board.h"

#include <cmath>

namespace copper_pour
{

constexpr double Pi = 3.141592653589793;

inline double Distance(CPoint const & a, CPoint const & b)
{
    return std::hypot(b.x - a.x, b.y - a.y);
}

/// `point` turned about `centre`, counter-clockwise taking the numbers as if y pointed up. Quarter turns are exact.
inline CPoint Turned(CPoint const & point, CPoint const & centre, double degrees)
{
    double const dx = point.x - centre.x;
    double const dy = point.y - centre.y;
    double const turns = std::remainder(degrees, 360.0);
    if (turns == 0.0) return point;
    if (turns == 90.0) return {centre.x - dy, centre.y + dx};
    if (turns == -90.0) return {centre.x + dy, centre.y - dx};
    if (std::fabs(turns) == 180.0) return {centre.x - dx, centre.y - dy};
    double const c = std::cos(turns * Pi / 180.0);
    double const s = std::sin(turns * Pi / 180.0);
    return {centre.x + dx * c - dy * s, centre.y + dx * s + dy * c};
}

inline double Round(double nanometres)
{
    return std::round(nanometres);
}

/// The point next to `guess` that is as far from `a` as from `b`: the ends of an arc that were rounded apart from its
/// centre come to lie on one circle again.
inline CPoint EquidistantNear(CPoint const & guess, CPoint const & a, CPoint const & b)
{
    CPoint const middle(0.5 * (a.x + b.x), 0.5 * (a.y + b.y));
    double const nx = a.y - b.y;
    double const ny = b.x - a.x;
    double const t = ((guess.x - middle.x) * nx + (guess.y - middle.y) * ny) / (nx * nx + ny * ny);
    return {middle.x + t * nx, middle.y + t * ny};
}

/// Twice the signed area of the triangle, positive if it is counter-clockwise.
inline double Cross(CPoint const & a, CPoint const & b, CPoint const & c)
{
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// The centre of the circle through three points; they must not lie on a line.
inline CPoint CircleCentre(CPoint const & a, CPoint const & b, CPoint const & c)
{
    double const bx = b.x - a.x, by = b.y - a.y;
    double const cx = c.x - a.x, cy = c.y - a.y;
    double const d = 2.0 * (bx * cy - by * cx);
    double const bb = bx * bx + by * by, cc = cx * cx + cy * cy;
    return {a.x + (cy * bb - by * cc) / d, a.y + (bx * cc - cx * bb) / d};
}

/// Whether `middle` bulges less than 0.1 um out of the chord from `a` to `b`: the circle of such an arc would be as
/// large as the rounding of its points happens to make it.
inline bool IsFlat(CPoint const & a, CPoint const & middle, CPoint const & b)
{
    return std::fabs(Cross(a, middle, b)) < 100.0 * Distance(a, b);
}

} // namespace copper_pour
