/// \file
/// Threads that can be asked to stop. One thread asks with `thread::cancel`; the other notices at its next
/// cancellation point, where `thread_canceled` unwinds its stack, or by polling. `thread::join` is a cancellation
/// point of the joining thread, so that a request travels from a caller through a thread that waits for its workers.
#pragma once

#include <atomic>
#include <exception>
#include <memory>
#include <utility>

#include <geometry/export.h>

namespace geometry
{

namespace platform
{
class CEvent;
class CThreadHandle;
} // namespace platform

/// Thrown at a cancellation point. Not a `std::exception`, so that a `catch` of that one doesn't stop it. One that
/// leaves the function of a `thread` ends the thread like a return.
class GEOMETRY_EXPORT thread_canceled
{
public:
    thread_canceled() = default;
    thread_canceled(thread_canceled const &) = default;
    thread_canceled & operator=(thread_canceled const &) = default;
    virtual ~thread_canceled();
    /// "thread canceled"
    virtual char const* what() const noexcept;
};

/// The platform gave no thread.
class GEOMETRY_EXPORT thread_resource_error : public std::exception
{
public:
    ~thread_resource_error() override;
    /// "failed to create thread"
    char const* what() const noexcept override;
};

/// The platform gave no mutex.
class GEOMETRY_EXPORT mutex_resource_error : public std::exception
{
public:
    ~mutex_resource_error() override;
    /// "failed to create mutex"
    char const* what() const noexcept override;
};

/// Waiting for a mutex didn't end in ownership: a thread ended while it owned the mutex.
class GEOMETRY_EXPORT mutex_abandoned
{
};

/// A running function. The object is a handle: dropping it neither stops the thread nor waits for it.
///
/// Threads: one `thread` object belongs to one thread at a time, except that `cancel` and `joinable` may be called
/// while the thread that it stands for runs or ends.
class thread
{
public:
    class id;

    /// The state of one thread, shared by the `thread` object and the running thread. For the library's own use.
    class GEOMETRY_EXPORT ThreadBaseInfo
    {
    public:
        ThreadBaseInfo();
        ThreadBaseInfo(ThreadBaseInfo const &) = delete;
        ThreadBaseInfo & operator=(ThreadBaseInfo const &) = delete;
        virtual ~ThreadBaseInfo();
        virtual void Run() = 0;

        platform::CThreadHandle* m_ThreadHandle = nullptr; ///< null until started; owned
        platform::CEvent* m_CancelEvent;                   ///< the request; owned. Null: can't be cancelled
        std::atomic<unsigned int> m_ThreadId{0};           ///< 0 before the start and from the end on
        bool m_CancellationEnabled = true;                 ///< touched by the thread itself only
    };

    /// Starts a thread that calls a copy of `function` without arguments. It runs when the constructor returns.
    /// An exception other than `thread_canceled` that leaves the function ends the process.
    /// Fails: `thread_resource_error` or an allocation exception; nothing is left behind then.
    template <typename F>
    explicit thread(F function) : thread(NewSharedBlock(std::make_unique<ThreadInfo<F>>(std::move(function))))
    {
        StartThread();
    }

    thread(thread const &) = delete;
    thread & operator=(thread const &) = delete;

    /// Neither joins nor cancels: a running thread goes on.
    ~thread() { Release(m_Shared); }

    /// Whether the thread runs still. False after it has ended, and after `join`.
    GEOMETRY_EXPORT bool joinable() const noexcept;

    /// Waits for the end of the thread; returns at once if it has ended or was joined before.
    /// Fails: `thread_canceled`, if the calling thread is cancelled while it waits. The thread that was waited for
    /// isn't touched then, and `join` can be called again.
    GEOMETRY_EXPORT void join();

    /// Asks the thread to stop. Nothing else: the thread must notice. Does nothing if it isn't `joinable`.
    GEOMETRY_EXPORT void cancel() noexcept;

    /// Whether a request to stop waits for this thread to notice it. False if it isn't `joinable`.
    GEOMETRY_EXPORT bool cancellation_requested() const noexcept;

    /// The number of processors of the machine, at least 1.
    GEOMETRY_EXPORT static unsigned int hardware_concurrency() noexcept;

private:
    template <typename F>
    class ThreadInfo;
    struct SharedBlock;

    explicit thread(SharedBlock* shared) noexcept : m_Shared(shared) {}
    GEOMETRY_EXPORT static SharedBlock* NewSharedBlock(std::unique_ptr<ThreadBaseInfo> info);
    GEOMETRY_EXPORT static void Release(SharedBlock* shared) noexcept;
    static void RunSharedBlock(void* shared) noexcept;
    GEOMETRY_EXPORT void StartThread();

    SharedBlock* m_Shared;
};

/// The state of a thread that runs a copy of an `F`.
template <typename F>
class thread::ThreadInfo final : public thread::ThreadBaseInfo
{
public:
    explicit ThreadInfo(F && function) : m_Function(std::move(function)) {}
    void Run() override { m_Function(); }

private:
    F m_Function;
};

/// The id of a thread of this library; 0 is no such thread. Two threads that run at the same time have different ids.
class thread::id
{
public:
    id() noexcept = default;
    explicit id(unsigned int value) noexcept : m_Value(value) {}
    /// The bare number.
    unsigned int value() const noexcept { return m_Value; }
    friend bool operator==(id a, id b) noexcept { return a.m_Value == b.m_Value; }
    friend bool operator!=(id a, id b) noexcept { return a.m_Value != b.m_Value; }
    friend bool operator<(id a, id b) noexcept { return a.m_Value < b.m_Value; }

private:
    unsigned int m_Value = 0;
};

/// What a thread asks and does about itself. On a thread that isn't a `geometry::thread` the questions are answered
/// with false or 0, and nothing but `sleep` and `yield` has an effect.
namespace this_thread
{

/// The id of the calling thread, or 0.
GEOMETRY_EXPORT thread::id get_id() noexcept;

/// Whether cancellation points act on a request.
GEOMETRY_EXPORT bool cancellation_enabled() noexcept;

/// Whether a request is pending, be cancellation enabled or not. The request stays.
GEOMETRY_EXPORT bool cancellation_requested() noexcept;

/// Takes a pending request and throws `thread_canceled`. While cancellation is disabled the request stays pending.
GEOMETRY_EXPORT void cancellation_point();

/// Asks the calling thread itself to stop at its next cancellation point.
GEOMETRY_EXPORT void Cancel() noexcept;

/// Blocks for the time given, in milliseconds; 0 gives up the time slice. Not a cancellation point.
GEOMETRY_EXPORT void sleep(unsigned long milliseconds) noexcept;

/// Gives up the time slice.
GEOMETRY_EXPORT void yield() noexcept;

/// Disables cancellation of the calling thread in a scope. Guards nest. Belongs to the thread that made it.
class GEOMETRY_EXPORT disable_cancellation
{
public:
    disable_cancellation() noexcept;
    disable_cancellation(disable_cancellation const &) = delete;
    disable_cancellation & operator=(disable_cancellation const &) = delete;
    ~disable_cancellation();

private:
    friend class enable_cancellation;
    bool m_WasEnabled; // what the destructor restores
};

/// Enables cancellation again in a scope within a `disable_cancellation`, unless a scope further out had disabled it.
class GEOMETRY_EXPORT enable_cancellation
{
public:
    explicit enable_cancellation(disable_cancellation & disabled) noexcept;
    enable_cancellation(enable_cancellation const &) = delete;
    enable_cancellation & operator=(enable_cancellation const &) = delete;
    ~enable_cancellation();
};

} // namespace this_thread

} // namespace geometry
