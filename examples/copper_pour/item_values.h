/// \file
/// The values of an item of a board file: lengths in nanometres, angles, points.
#pragma once

#include "board.h"
#include "s_expression.h"

namespace copper_pour
{

/// Where a footprint lies: its items are turned and moved along with it.
struct CPlace
{
    CPoint position;
    double degrees = 0.0; ///< counter-clockwise as seen, with y down

    CPoint Apply(CPoint const & point) const;
};

[[noreturn]] void Refuse(CNode const & item, std::string const & reason);

/// The number at `index` of a list. Throws CBoardError if there is none.
double NumberAt(CNode const & item, std::size_t index);
/// A coordinate or a length at `index`: millimetres in the file, whole nanometres as the answer. Refused beyond 1 m.
double LengthAt(CNode const & item, std::size_t index);

/// The list `name` of `item`, which must be there.
CNode const & Need(CNode const & item, std::string_view name);
/// The point that the list `name` of `item` gives.
CPoint PointOf(CNode const & item, std::string_view name);
/// Position and angle of the list `at`.
CPlace PlaceOf(CNode const & item);

} // namespace copper_pour
