/// \file
/// The wait for the end of a thread that a request to stop the waiting thread can end.
#pragma once

#include <geometry/thread/thread.h>

namespace geometry
{

/// The state of the calling thread; null on a thread that isn't a `geometry::thread`.
thread::ThreadBaseInfo* GetCurrentThreadInfo() noexcept;

/// Whether a wait of this many milliseconds is left to a timer; shorter ones rest on the time-out of the wait itself.
constexpr bool IsLeftToTimer(unsigned long remaining) noexcept
{
    return remaining > 20;
}

/// Waits for the end of `target`; `timeout` is in milliseconds from the tick count `startTicks`, 0xFFFFFFFF (and
/// above) is no limit. True if the thread has ended, false on time-out.
/// Fails: `thread_canceled`, if the calling thread is cancelled and had cancellation enabled at the call; its request
/// is taken then.
bool InterruptibleWait(thread::ThreadBaseInfo & target, unsigned long timeout, unsigned long startTicks);

} // namespace geometry
