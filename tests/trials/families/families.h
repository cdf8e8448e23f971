/// \file
/// The families of trials. Each makes its shapes from the random numbers of the trial and has operations judged.
#pragma once

#include <vector>

#include "trial.h"

namespace trials
{

struct TFamily
{
    char const* name;
    void (*run)(CTrial & trial);
};

// families/boards.cpp
void Boards(CTrial & trial);      ///< chained tracks, pads, vias: subtracted from a board, united
void Teardrops(CTrial & trial);   ///< a pad and the drop that meets it along its own circle
void TrackAndPad(CTrial & trial); ///< both of one radius

// families/lines.cpp
void CommonLines(CTrial & trial); ///< cells of an arrangement of lines, put together in subsets
void Grids(CTrial & trial);       ///< small whole numbers: touches everywhere
void Plain(CTrial & trial);       ///< general position
void Pinched(CTrial & trial);     ///< bores tangent to edges, outlines that pass a point twice

// families/rounds.cpp
void Chains(CTrial & trial);        ///< results as operands of the next operation
void Grown(CTrial & trial);         ///< a shape with itself grown and shrunk
void NearCopies(CTrial & trial);    ///< equal but for rounding, or nearly
void SharedCircles(CTrial & trial); ///< parts of the same few circles
void Gears(CTrial & trial);         ///< gears with plates and slots
void Paths(CTrial & trial);         ///< bands around polylines and arcs

std::vector<TFamily> const & AllFamilies();

} // namespace trials
