/// \file
/// Board files in the text format of version 4 and later.
#pragma once

#include "board.h"

namespace copper_pour
{

/// Reads the edge of a board and what lies on one copper layer: track segments and arcs, vias, pads. The layer may be
/// given by the name in the file, by its second name, or as `F.Cu`, `B.Cu`, `In1.Cu` and so on by position. Throws
/// CBoardError: file, line, reason.
CBoard ReadBoard(std::string const & file, std::string const & layer);

} // namespace copper_pour
