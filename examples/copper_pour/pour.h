/// \file
/// The work of the program: the board less everything on it, on a thread that can be stopped.
#pragma once

#include "support/polygons.h"

#include "board.h"

#include <atomic>

namespace copper_pour
{

/// What the work has come to so far; read by another thread while it runs.
enum class EStage
{
    eOutline,
    eShapes,
    eSubtract,
    eCheck,
    eDone
};

struct CPour
{
    svg::CPolygons area;   ///< the board without anything on it
    svg::CPolygons copper; ///< the obstacles as they are
    svg::CPolygons pieces; ///< the pour
    std::size_t uncut = 0; ///< obstacles that lie in the pour, at one point at least: there should be none
    double seconds = 0.0;  ///< of the subtraction
};

/// Makes the pour of a board. To be called on a `geometry::thread`: a request to stop ends it by `thread_canceled`.
/// `workers` of 0 stands for as many as there are processors. Throws std::runtime_error if the subtraction fails, and
/// CBoardError if the outline isn't taken.
CPour MakePour(CBoard const & board, double clearance, unsigned int workers, std::atomic<EStage> & stage);

} // namespace copper_pour
