// The count of clips that came to nothing belongs to a thread: a thread that works for another one reports its own.
#pragma once

namespace geometry
{

/// Adds what workers counted to the count of the calling thread.
void AddToGaveUpCount(unsigned long long count);

} // namespace geometry
