// The state of a thread lives in a block that two hold: the `thread` object and the running thread. Whoever lets go
// last deletes it, so that either may go first. A request to stop is an event in that block; the running thread finds
// its own block through a thread-local pointer.
// Everything that others read of a thread (its handle, its id) is in place before it can run.

#include <geometry/thread/thread.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <optional>

#include "thread/interruptible_wait.h"
#include "thread/platform.h"

namespace geometry
{

namespace
{

thread_local thread::ThreadBaseInfo* s_CurrentThreadInfo = nullptr;

/// Counts on; the value 0 is left out when the number wraps.
unsigned int NextThreadId() noexcept
{
    static std::atomic<unsigned int> s_Last{0};
    unsigned int next = ++s_Last;
    while (next == 0)
    {
        next = ++s_Last;
    }
    return next;
}

bool IsRunning(thread::ThreadBaseInfo const & info) noexcept
{
    return info.m_ThreadId != 0 && info.m_ThreadHandle != nullptr;
}

bool IsRequested(thread::ThreadBaseInfo const & info) noexcept
{
    return info.m_CancelEvent != nullptr && info.m_CancelEvent->IsSet();
}

void Request(thread::ThreadBaseInfo const & info) noexcept
{
    if (info.m_CancelEvent != nullptr)
    {
        info.m_CancelEvent->Set();
    }
}

/// The request is used up by the exception that it causes.
[[noreturn]] void TakeRequest(platform::CEvent & request)
{
    request.Reset();
    throw thread_canceled();
}

} // namespace

// --- exceptions ---

thread_canceled::~thread_canceled() = default;

char const* thread_canceled::what() const noexcept
{
    return "thread canceled";
}

thread_resource_error::~thread_resource_error() = default;

char const* thread_resource_error::what() const noexcept
{
    return "failed to create thread";
}

mutex_resource_error::~mutex_resource_error() = default;

char const* mutex_resource_error::what() const noexcept
{
    return "failed to create mutex";
}

// --- the state of a thread and its holders ---

thread::ThreadBaseInfo::ThreadBaseInfo() : m_CancelEvent(new (std::nothrow) platform::CEvent) {}

thread::ThreadBaseInfo::~ThreadBaseInfo()
{
    delete m_ThreadHandle;
    delete m_CancelEvent;
}

struct thread::SharedBlock
{
    std::unique_ptr<ThreadBaseInfo> m_Info;
    std::atomic<unsigned int> m_Count{1};
};

thread::SharedBlock* thread::NewSharedBlock(std::unique_ptr<ThreadBaseInfo> info)
{
    return new SharedBlock{std::move(info)};
}

void thread::Release(SharedBlock* shared) noexcept
{
    if (shared != nullptr && --shared->m_Count == 0)
    {
        delete shared;
    }
}

void thread::StartThread()
{
    ThreadBaseInfo & info = *m_Shared->m_Info;
    info.m_ThreadHandle = new platform::CThreadHandle;
    info.m_ThreadId = NextThreadId();
    ++m_Shared->m_Count;
    if (!info.m_ThreadHandle->Start(&RunSharedBlock, m_Shared))
    {
        --m_Shared->m_Count;
        info.m_ThreadId = 0;
        throw thread_resource_error();
    }
}

/// What a thread does from start to end. `noexcept` ends the process when anything but `thread_canceled` comes out.
void thread::RunSharedBlock(void* shared) noexcept
{
    auto* const block = static_cast<SharedBlock*>(shared);
    ThreadBaseInfo & info = *block->m_Info;
    s_CurrentThreadInfo = &info;
    try
    {
        info.Run();
    }
    catch (thread_canceled const &)
    {
    }
    info.m_ThreadId = 0;
    s_CurrentThreadInfo = nullptr;
    info.m_ThreadHandle->SignalEnd();
    Release(block);
}

// --- thread ---

bool thread::joinable() const noexcept
{
    return m_Shared != nullptr && IsRunning(*m_Shared->m_Info);
}

void thread::join()
{
    if (m_Shared == nullptr)
    {
        return;
    }
    ThreadBaseInfo & info = *m_Shared->m_Info;
    if (InterruptibleWait(info, platform::Infinite, platform::GetTickCount()))
    {
        info.m_ThreadHandle->Reap();
        Release(m_Shared);
        m_Shared = nullptr;
    }
}

void thread::cancel() noexcept
{
    if (joinable())
    {
        Request(*m_Shared->m_Info);
    }
}

bool thread::cancellation_requested() const noexcept
{
    return joinable() && IsRequested(*m_Shared->m_Info);
}

unsigned int thread::hardware_concurrency() noexcept
{
    return platform::GetProcessorCount();
}

// --- the wait ---

thread::ThreadBaseInfo* GetCurrentThreadInfo() noexcept
{
    return s_CurrentThreadInfo;
}

bool InterruptibleWait(thread::ThreadBaseInfo & target, unsigned long timeout, unsigned long startTicks)
{
    if (!IsRunning(target))
    {
        return true;
    }
    auto const* const caller = s_CurrentThreadInfo;
    platform::CEvent* const cancel =
        caller != nullptr && caller->m_CancellationEnabled ? caller->m_CancelEvent : nullptr;

    bool const isLimited = timeout < platform::Infinite;
    auto const remaining = [timeout, startTicks]() -> unsigned long
    {
        // The tick count wraps at 32 bits, and so does the difference.
        auto const passed = static_cast<std::uint32_t>(platform::GetTickCount() - startTicks);
        return timeout > passed ? timeout - passed : 0;
    };
    std::optional<platform::CTimer> timer;
    if (isLimited && IsLeftToTimer(remaining()))
    {
        timer.emplace(remaining());
    }
    while (true)
    {
        unsigned long const limit = isLimited && !timer ? remaining() : platform::Infinite;
        switch (platform::WaitForFirst(*target.m_ThreadHandle, cancel, timer ? &*timer : nullptr, limit))
        {
        case platform::EWaitEnd::eThreadEnded:
            return true;
        case platform::EWaitEnd::eCancelled:
            TakeRequest(*cancel);
        case platform::EWaitEnd::eTimer:
            return false;
        case platform::EWaitEnd::eNothing:
            if (isLimited && remaining() == 0)
            {
                return false;
            }
        }
    }
}

// --- the calling thread ---

namespace this_thread
{

thread::id get_id() noexcept
{
    return s_CurrentThreadInfo != nullptr ? thread::id(s_CurrentThreadInfo->m_ThreadId) : thread::id();
}

bool cancellation_enabled() noexcept
{
    return s_CurrentThreadInfo != nullptr && s_CurrentThreadInfo->m_CancellationEnabled;
}

bool cancellation_requested() noexcept
{
    return s_CurrentThreadInfo != nullptr && IsRequested(*s_CurrentThreadInfo);
}

void cancellation_point()
{
    if (cancellation_enabled() && cancellation_requested())
    {
        TakeRequest(*s_CurrentThreadInfo->m_CancelEvent);
    }
}

void Cancel() noexcept
{
    if (s_CurrentThreadInfo != nullptr)
    {
        Request(*s_CurrentThreadInfo);
    }
}

void sleep(unsigned long milliseconds) noexcept
{
    platform::Sleep(milliseconds);
}

void yield() noexcept
{
    platform::Sleep(0);
}

disable_cancellation::disable_cancellation() noexcept : m_WasEnabled(cancellation_enabled())
{
    if (m_WasEnabled)
    {
        s_CurrentThreadInfo->m_CancellationEnabled = false;
    }
}

disable_cancellation::~disable_cancellation()
{
    if (s_CurrentThreadInfo != nullptr)
    {
        s_CurrentThreadInfo->m_CancellationEnabled = m_WasEnabled;
    }
}

enable_cancellation::enable_cancellation(disable_cancellation & disabled) noexcept
{
    if (disabled.m_WasEnabled && s_CurrentThreadInfo != nullptr)
    {
        s_CurrentThreadInfo->m_CancellationEnabled = true;
    }
}

enable_cancellation::~enable_cancellation()
{
    if (s_CurrentThreadInfo != nullptr)
    {
        s_CurrentThreadInfo->m_CancellationEnabled = false;
    }
}

} // namespace this_thread

} // namespace geometry
