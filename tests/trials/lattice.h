/// \file
/// Outlines on a lattice of 20 by 20 steps from the origin.
#pragma once

#include "kit.h"

namespace trials
{

/// Outlines that neither cross nor touch themselves: rectangles, triangles, others.
Ring SimpleLattice(CRandom & random, double unit);
/// The outline of squares, which passes the points where two of them meet twice.
Ring Polyomino(CRandom & random, double unit);
Ring AnyLattice(CRandom & random, double unit);
/// A circle with a circle in it that touches it, or a plate with one that touches an edge, as one ring.
Ring TangentBores(CRandom & random, double unit);

} // namespace trials
