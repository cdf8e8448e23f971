/// \file
/// Square distances of circles and sweeps to points, segments and each other, exact on the circle. Each kernel answers
/// the square of the smallest distance (square units) and the closest points. Where a step can't tell a closest point,
/// the output keeps what it held.
#pragma once

#include "arc/sweep_kernels.h"

namespace geometry
{

double SquareDistanceCirclePoint(TPoint<double> const & c, double r, TPoint<double> const & x,
                                 TPoint<double> & closest);

/// A radius of exactly zero stands for the centre. A closed sweep is the whole circle.
double SquareDistanceArcPoint(Sweep const & sweep, TPoint<double> const & x, TPoint<double> & closest);

double SquareDistanceCircleSegment(TPoint<double> const & c, double r, TPoint<double> const & p,
                                   TPoint<double> const & q, TPoint<double> & onCircle, TPoint<double> & onSegment);

double SquareDistanceArcSegment(Sweep const & sweep, TPoint<double> const & p, TPoint<double> const & q,
                                TPoint<double> & onArc, TPoint<double> & onSegment);

double SquareDistanceCircleCircle(TPoint<double> const & c1, double r1, TPoint<double> const & c2, double r2,
                                  TPoint<double> & out1, TPoint<double> & out2);

double SquareDistanceArcArc(Sweep const & s1, Sweep const & s2, TPoint<double> & out1, TPoint<double> & out2);

} // namespace geometry
