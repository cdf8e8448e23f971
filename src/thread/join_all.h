/// \file
/// The wait for a group of workers.
#pragma once

#include <vector>

#include <geometry/thread/thread.h>

namespace geometry
{

/// Joins and deletes every thread of the vector, first to last, and empties it. No entry may be null.
/// Owner: this function, from the call on.
/// Fails: `thread_canceled`, if the calling thread is cancelled while it waits. The workers are asked to stop then,
/// and they are waited for in any case: nothing leaves this function while a worker runs.
void JoinAll(std::vector<thread*> & threads);

} // namespace geometry
