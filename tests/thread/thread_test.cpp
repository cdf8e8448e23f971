// Threads: what a request to stop reaches and what it doesn't, who frees the state of a thread, and that a group of
// workers is never abandoned. Runs under the thread and the address sanitizer as well.

#include <geometry/thread/thread.h>

#include <array>
#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <optional>
#include <stdexcept>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>
#include <pthread.h>

#include "thread/interruptible_wait.h"
#include "thread/join_all.h"
#include "thread/mutex.h"

namespace geometry
{

namespace
{

using Flag = std::atomic<bool>;

template <typename Condition>
void SpinWhile(Condition condition)
{
    while (condition())
    {
        this_thread::yield();
    }
}

/// Does the work on a thread of the library and waits for it.
template <typename F>
void OnThread(F work)
{
    thread(work).join();
}

template <typename F>
bool IsCanceled(F work)
{
    try
    {
        work();
        return false;
    }
    catch (thread_canceled const &)
    {
        return true;
    }
}

bool Stops()
{
    return IsCanceled(&this_thread::cancellation_point);
}

static_assert(!std::is_base_of_v<std::exception, thread_canceled> && !std::is_copy_constructible_v<thread>);

} // namespace

TEST(Thread, EndedThreadIsNotJoinableAndJoinsAtOnce)
{
    Flag go = false;
    thread::id first, second;
    thread worker([&] { SpinWhile([&] { return !go; }), first = this_thread::get_id(); });
    thread other([&] { SpinWhile([&] { return !go; }), second = this_thread::get_id(); });
    EXPECT_TRUE(worker.joinable());
    go = true;
    SpinWhile([&] { return worker.joinable(); });
    worker.cancel();
    EXPECT_FALSE(worker.cancellation_requested());
    worker.join();
    worker.join();
    other.join();
    EXPECT_FALSE(worker.joinable() || other.joinable());
    EXPECT_TRUE(first != second && first != thread::id() && second != thread::id());
}

TEST(Thread, StateIsFreedByWhoeverLetsGoLast)
{
    auto const token = std::make_shared<int>(0);
    for (int i = 0; i < 200; ++i)
    {
        thread([token] {}); // the object goes while the thread starts or ends
        OnThread([token] { throw thread_canceled(); });
        thread ended([token] {}); // the object goes after the end, without a join
        SpinWhile([&] { return ended.joinable(); });
    }
    SpinWhile([&] { return token.use_count() > 1; });
}

TEST(Thread, FailedStartLeavesNothingBehind)
{
    pthread_attr_t usual, huge;
    pthread_getattr_default_np(&usual);
    pthread_attr_init(&huge);
    pthread_attr_setstacksize(&huge, std::size_t{1} << 50); // no system has that much address space for a stack
    ASSERT_EQ(pthread_setattr_default_np(&huge), 0);
    auto const token = std::make_shared<int>(0);
    EXPECT_THROW(thread([token] {}), thread_resource_error);
    pthread_setattr_default_np(&usual);
    EXPECT_EQ(token.use_count(), 1);
}

TEST(ThreadDeathTest, OtherExceptionsEndTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(OnThread([] { throw std::runtime_error("lost"); }), "");
}

TEST(ThreadCancel, RequestWaitsForTheFirstPointAndIsTakenOnce)
{
    Flag go = false, isAfterOwn = false;
    auto const work = [&]
    {
        SpinWhile([&] { return !go; });
        EXPECT_TRUE(this_thread::cancellation_requested() && this_thread::cancellation_requested());
        EXPECT_TRUE(Stops());
        EXPECT_FALSE(Stops() || this_thread::cancellation_requested());
        this_thread::Cancel();
        this_thread::cancellation_point();
        isAfterOwn = true;
    };
    thread worker(work);
    worker.cancel();
    EXPECT_TRUE(worker.cancellation_requested());
    go = true;
    worker.join();
    EXPECT_FALSE(isAfterOwn);
}

TEST(ThreadCancel, GuardsNestAndKeepTheRequestPending)
{
    auto const work = []
    {
        this_thread::Cancel();
        {
            this_thread::disable_cancellation outer;
            {
                this_thread::disable_cancellation inner;
                this_thread::enable_cancellation const noEffect(inner); // the outer scope had disabled it
                EXPECT_FALSE(this_thread::cancellation_enabled());
            }
            EXPECT_FALSE(Stops());
            {
                this_thread::enable_cancellation const enabled(outer);
                EXPECT_TRUE(Stops());
            }
            this_thread::Cancel();
            EXPECT_FALSE(Stops() || this_thread::cancellation_enabled());
        }
        EXPECT_TRUE(Stops());
    };
    OnThread(work);
    this_thread::Cancel(); // on a thread that isn't of the library
    this_thread::disable_cancellation const guard;
    EXPECT_FALSE(Stops() || this_thread::cancellation_requested() || this_thread::get_id() != thread::id());
}

TEST(ThreadJoin, IsInterruptedUnlessDisabled)
{
    for (bool const isDisabled : {false, true})
    {
        SCOPED_TRACE(isDisabled);
        Flag go = false;
        auto const work = [&]
        {
            thread target([&] { SpinWhile([&] { return !go; }); });
            auto const join = [&]
            {
                std::optional<this_thread::disable_cancellation> guard;
                isDisabled ? void(guard.emplace()) : void();
                target.join();
            };
            EXPECT_EQ(IsCanceled(join), !isDisabled);
            EXPECT_EQ(this_thread::cancellation_requested(), isDisabled);
            EXPECT_EQ(target.joinable(), !isDisabled);
            go = true;
            target.join(); // an interrupted join can be made again
        };
        thread joiner(work);
        joiner.cancel();
        this_thread::sleep(5);
        if (isDisabled) go = true; // otherwise the joiner has set it before its second join
        joiner.join();
    }
}

TEST(ThreadWait, TimeOutCountsFromTheStartTicks)
{
    static_assert(!IsLeftToTimer(20) && IsLeftToTimer(21));
    std::promise<thread::ThreadBaseInfo*> info;
    Flag go = false;
    thread target([&] { info.set_value(GetCurrentThreadInfo()), SpinWhile([&] { return !go; }); });
    auto & running = *info.get_future().get();
    using Row = std::array<unsigned long, 3>; // milliseconds: time-out, passed when the wait begins, least duration
    for (auto const & [timeOut, passed, least] :
         {Row{0, 0, 0}, Row{20, 0, 19}, Row{60, 0, 59}, Row{80, 70, 9}, Row{0x7FFFFFFF, 0x80000000, 0}}) // ticks wrap
    {
        auto const begin = std::chrono::steady_clock::now();
        EXPECT_FALSE(InterruptibleWait(running, timeOut, platform::GetTickCount() - passed));
        EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(least)) << timeOut;
    }
    go = true;
    EXPECT_TRUE(InterruptibleWait(running, 60000, platform::GetTickCount()));
}

TEST(ThreadJoinAll, HandsTheRequestOnAndLeavesNoWorkerRunning)
{
    for (bool const isCanceled : {false, true})
    {
        SCOPED_TRACE(isCanceled);
        std::atomic<int> started{0}, ended{0};
        Flag go = false;
        auto const work = [&]
        {
            ++started;
            SpinWhile([&] { return !this_thread::cancellation_requested() && !go; });
            ++ended;
        };
        auto const coordinate = [&]
        {
            std::vector<thread*> workers{new thread(work), new thread(work), new thread(work)};
            EXPECT_EQ(IsCanceled([&] { JoinAll(workers); }), isCanceled);
            EXPECT_EQ(workers.size() + (3 - ended), 0U);
            EXPECT_FALSE(this_thread::cancellation_requested()); // used up
        };
        thread coordinator(coordinate);
        SpinWhile([&] { return started < 3; });
        isCanceled ? coordinator.cancel() : go.store(true);
        coordinator.join();
    }
}

TEST(ThreadMutex, ExcludesAndReportsAnEndedOwner)
{
    mutex guarded;
    int counter = 0;
    auto const work = [&]
    {
        for (int i = 0; i < 1000; ++i)
        {
            mutex_guard const guard(guarded);
            ++counter;
        }
        mutex_guard const guard(guarded);
        throw thread_canceled(); // unlocks on this way out as well
    };
    std::vector<thread*> workers{new thread(work), new thread(work), new thread(work)};
    JoinAll(workers);
    EXPECT_EQ(counter, 3000);
    OnThread([&] { guarded.lock(); });
    EXPECT_THROW(guarded.lock(), mutex_abandoned);
    EXPECT_THROW(guarded.lock(), mutex_abandoned); // and so every later one
}

} // namespace geometry
