/// \file
/// A mutex that reports failures by exceptions, and the guard that unlocks it on every way out.
#pragma once

#include <geometry/thread/thread.h>

#include "thread/platform.h"

namespace geometry
{

/// A mutex between threads of the process, not owned at first.
class mutex
{
public:
    /// Fails: `mutex_resource_error`.
    mutex()
    {
        if (!m_Handle.IsValid())
        {
            throw mutex_resource_error();
        }
    }

    /// Waits for the ownership. Fails: `mutex_abandoned`, if a thread ended as owner.
    void lock()
    {
        if (!m_Handle.Lock())
        {
            throw mutex_abandoned();
        }
    }

    void unlock() noexcept { m_Handle.Unlock(); }

private:
    platform::CMutex m_Handle;
};

/// Owns a mutex in a scope.
class mutex_guard
{
public:
    explicit mutex_guard(mutex & guarded) : m_Mutex(guarded) { m_Mutex.lock(); }
    mutex_guard(mutex_guard const &) = delete;
    mutex_guard & operator=(mutex_guard const &) = delete;
    ~mutex_guard() { m_Mutex.unlock(); }

private:
    mutex & m_Mutex;
};

} // namespace geometry
