// The one place of the threads that touches the system, here through POSIX threads. All waits go through one monitor,
// a mutex and a condition: whoever signals an event wakes all who wait, and each looks at its own list. Signals are
// rare (a request to stop, the end of a thread), so that one monitor is enough; a poll of an event takes no lock.
// A timer is a moment on the steady clock, which a wait on the condition takes as its limit.

#include "thread/platform.h"

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <mutex>
#include <new>
#include <optional>
#include <thread>

namespace geometry::platform
{

namespace
{

using Clock = std::chrono::steady_clock;

struct SMonitor
{
    std::mutex m_Mutex;
    std::condition_variable m_Signalled;
};

/// Never destroyed: threads that nobody joined may signal while the process ends.
SMonitor & GetMonitor() noexcept
{
    alignas(SMonitor) static unsigned char storage[sizeof(SMonitor)];
    static SMonitor & monitor = *::new (storage) SMonitor;
    return monitor;
}

std::chrono::milliseconds AsDuration(unsigned long milliseconds) noexcept
{
    return std::chrono::milliseconds(std::min(milliseconds, Infinite));
}

} // namespace

// --- events ---

void CEvent::Set() noexcept
{
    SMonitor & monitor = GetMonitor();
    {
        // Under the lock, so that no waiter looks before the change and sleeps after the wake-up.
        std::lock_guard<std::mutex> const lock(monitor.m_Mutex);
        m_IsSignalled = true;
    }
    monitor.m_Signalled.notify_all();
}

// --- threads ---

CThreadHandle::~CThreadHandle()
{
    if (m_IsToDetach)
    {
        pthread_detach(m_Thread);
    }
}

bool CThreadHandle::Start(void (*entry)(void*) noexcept, void* argument) noexcept
{
    m_Entry = {entry, argument};
    m_IsToDetach = pthread_create(&m_Thread, nullptr, &RunEntry, this) == 0;
    return m_IsToDetach;
}

void* CThreadHandle::RunEntry(void* handle)
{
    SEntry const entry = static_cast<CThreadHandle*>(handle)->m_Entry;
    entry.m_Function(entry.m_Argument);
    return nullptr;
}

void CThreadHandle::Reap() noexcept
{
    pthread_join(m_Thread, nullptr);
    m_IsToDetach = false;
}

// --- waits ---

CTimer::CTimer(unsigned long milliseconds) noexcept : m_Due(Clock::now() + AsDuration(milliseconds)) {}

EWaitEnd WaitForFirst(CThreadHandle const & thread, CEvent const* cancel, CTimer const* timer,
                      unsigned long milliseconds) noexcept
{
    std::optional<Clock::time_point> due;
    if (milliseconds < Infinite)
    {
        due = Clock::now() + AsDuration(milliseconds);
    }
    if (timer != nullptr)
    {
        due = due ? std::min(*due, timer->GetDue()) : timer->GetDue();
    }
    SMonitor & monitor = GetMonitor();
    std::unique_lock<std::mutex> lock(monitor.m_Mutex);
    while (true)
    {
        if (thread.GetEnd().IsSet()) return EWaitEnd::eThreadEnded;
        if (cancel != nullptr && cancel->IsSet()) return EWaitEnd::eCancelled;
        if (timer != nullptr && Clock::now() >= timer->GetDue()) return EWaitEnd::eTimer;
        if (!due)
        {
            monitor.m_Signalled.wait(lock);
            continue;
        }
        if (Clock::now() >= *due) return EWaitEnd::eNothing;
        monitor.m_Signalled.wait_until(lock, *due);
    }
}

std::uint32_t GetTickCount() noexcept
{
    auto const sinceEpoch = Clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(sinceEpoch).count());
}

unsigned int GetProcessorCount() noexcept
{
    return std::max(std::thread::hardware_concurrency(), 1U);
}

void Sleep(unsigned long milliseconds) noexcept
{
    if (milliseconds == 0)
    {
        std::this_thread::yield();
        return;
    }
    std::this_thread::sleep_for(AsDuration(milliseconds));
}

// --- mutex ---

CMutex::CMutex() noexcept
{
    pthread_mutexattr_t attributes;
    m_IsValid = pthread_mutexattr_init(&attributes) == 0;
    if (m_IsValid)
    {
        pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
        // Robust: the end of the owner ends the wait of the others instead of leaving them blocked.
        pthread_mutexattr_setrobust(&attributes, PTHREAD_MUTEX_ROBUST);
        m_IsValid = pthread_mutex_init(&m_Mutex, &attributes) == 0;
        pthread_mutexattr_destroy(&attributes);
    }
}

CMutex::~CMutex()
{
    if (m_IsValid)
    {
        pthread_mutex_destroy(&m_Mutex);
    }
}

bool CMutex::Lock() noexcept
{
    int const error = pthread_mutex_lock(&m_Mutex);
    if (error == EOWNERDEAD)
    {
        // Not made consistent: what the mutex guards may be half done, and each later lock is to fail as well.
        pthread_mutex_unlock(&m_Mutex);
    }
    return error == 0;
}

void CMutex::Unlock() noexcept
{
    pthread_mutex_unlock(&m_Mutex);
}

} // namespace geometry::platform
