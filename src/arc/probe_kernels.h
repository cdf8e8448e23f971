/// \file
/// The vertical ray upward from a point against circles and sweeps.
#pragma once

#include "arc/sweep_kernels.h"

namespace geometry
{

/// The ray upward from `p`, which is included, with a circle: upper point first. At the circle's left and right extreme
/// the ray touches, within tolerance.
ELineMeeting IntersectCircleProbeRay(TPoint<double> const & c, double r, TPoint<double> const & p, CrossingPoints & h);

/// The same with a sweep. The radius is that of the end which is nearer to the ray in x; the stored one isn't used. An
/// end at `p` itself is found even if rounding hides it.
ELineMeeting IntersectArcProbeRay(Sweep const & sweep, TPoint<double> const & p, CrossingPoints & h);

} // namespace geometry
