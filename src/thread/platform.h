/// \file
/// What the threads need of the system: an event that stays signalled until reset, a thread whose end can be waited
/// for together with an event, a timer, a clock of milliseconds, a mutex that tells when its owner died.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

#include <pthread.h>

namespace geometry::platform
{

/// No limit, for a wait in milliseconds.
constexpr unsigned long Infinite = 0xFFFFFFFF;

/// A flag that threads can wait for. It stays signalled until reset.
class CEvent
{
public:
    void Set() noexcept;
    void Reset() noexcept { m_IsSignalled = false; }
    bool IsSet() const noexcept { return m_IsSignalled; }

private:
    std::atomic<bool> m_IsSignalled{false};
};

/// A thread and its end. Outlives the thread in the hands of who holds the state of the thread.
class CThreadHandle
{
public:
    CThreadHandle() = default;
    CThreadHandle(CThreadHandle const &) = delete;
    CThreadHandle & operator=(CThreadHandle const &) = delete;
    ~CThreadHandle();

    /// Runs `entry(argument)` on a new thread; false if the system gives none. `entry` calls SignalEnd.
    bool Start(void (*entry)(void*) noexcept, void* argument) noexcept;

    /// By the thread itself: its work is done. What it does afterwards is short and waits for nothing.
    void SignalEnd() noexcept { m_Ended.Set(); }

    /// Waits, after the end was signalled, until the thread is gone from the system. To be called once at most.
    void Reap() noexcept;

    CEvent const & GetEnd() const noexcept { return m_Ended; }

private:
    struct SEntry
    {
        void (*m_Function)(void*) noexcept;
        void* m_Argument;
    };
    static void* RunEntry(void* handle);

    CEvent m_Ended;
    SEntry m_Entry{nullptr, nullptr};
    pthread_t m_Thread{};
    bool m_IsToDetach = false; // started and not reaped
};

/// Signalled from a moment on.
class CTimer
{
public:
    explicit CTimer(unsigned long milliseconds) noexcept;
    std::chrono::steady_clock::time_point GetDue() const noexcept { return m_Due; }

private:
    std::chrono::steady_clock::time_point m_Due;
};

/// What a wait ended with: the first of these that is signalled, in this order.
enum class EWaitEnd
{
    eThreadEnded,
    eCancelled,
    eTimer,
    eNothing // the time given to the wait is over
};

/// Waits for the end of a thread, an event (or null) or a timer (or null), for `milliseconds` at most.
EWaitEnd WaitForFirst(CThreadHandle const & thread, CEvent const* cancel, CTimer const* timer,
                      unsigned long milliseconds) noexcept;

/// Milliseconds of a clock that never goes back, as a 32-bit number that wraps.
std::uint32_t GetTickCount() noexcept;

/// At least 1.
unsigned int GetProcessorCount() noexcept;

/// Blocks; 0 gives up the time slice. Values beyond 32 bits are cut down to 49 days.
void Sleep(unsigned long milliseconds) noexcept;

/// A mutex between threads of the process. Its owner may lock it again.
class CMutex
{
public:
    CMutex() noexcept;
    CMutex(CMutex const &) = delete;
    CMutex & operator=(CMutex const &) = delete;
    ~CMutex();

    /// False if the system gave no mutex; nothing else may be called then.
    bool IsValid() const noexcept { return m_IsValid; }

    /// False if the wait didn't end in ownership: a thread ended as owner. Each later lock fails, too.
    bool Lock() noexcept;
    void Unlock() noexcept;

private:
    pthread_mutex_t m_Mutex;
    bool m_IsValid;
};

} // namespace geometry::platform
