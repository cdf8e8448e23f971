/// \file
/// A board made up on the spot, for a run without a file and for measuring.
#pragma once

#include "board.h"

#include <cstdint>

namespace copper_pour
{

/// 100 mm by 80 mm with rounded corners and four mounting holes; larger from 300 `shapes` on, so that it doesn't fill
/// up. Shapes are tracks of up to three pieces, straight and along arcs, and pads of all kinds. The same seed gives the
/// same board on every machine.
CBoard GenerateBoard(std::size_t shapes, std::uint64_t seed);

} // namespace copper_pour
