// Threads: what a request to stop reaches and what it doesn't, who frees the state of a thread, and that a group of
// workers is never abandoned. Runs under the thread and the address sanitizer as well.

#include <geometry/thread/thread.h>

#include <array>
#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <stdexcept>
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

static_assert(!std::is_base_of_v<std::exception, thread_canceled> && !std::is_copy_constructible_v<thread>);

} // namespace

TEST(Thread, StateIsFreedByWhoeverLetsGoLast)
{
    auto const token = std::make_shared<int>(0);
    for (int i = 0; i < 200; ++i)
    {
        thread([token] {}); // the object goes while the thread starts or ends
        thread([token] { throw thread_canceled(); }).join();
        thread ended([token] {}); // the object goes after the end, without a join
        SpinWhile([&] { return ended.joinable(); });
        ended.cancel();
        EXPECT_FALSE(ended.cancellation_requested());
    }
    SpinWhile([&] { return token.use_count() > 1; });

    pthread_attr_t usual, huge;
    pthread_getattr_default_np(&usual);
    pthread_attr_init(&huge);
    pthread_attr_setstacksize(&huge, std::size_t{1} << 50); // no system has that much address space for a stack
    ASSERT_EQ(pthread_setattr_default_np(&huge), 0);
    EXPECT_THROW(thread([token] {}), thread_resource_error);
    pthread_setattr_default_np(&usual);
    EXPECT_EQ(token.use_count(), 1);
}

TEST(ThreadDeathTest, OtherExceptionsEndTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(thread([] { throw std::runtime_error("lost"); }).join(), "");
}

TEST(ThreadCancel, RequestIsTakenOnceAndStaysPendingUnderGuards)
{
    auto const work = []
    {
        SpinWhile([] { return !this_thread::cancellation_requested(); });
        EXPECT_THROW(this_thread::cancellation_point(), thread_canceled);
        EXPECT_NO_THROW(this_thread::cancellation_point());
        EXPECT_TRUE(!this_thread::cancellation_requested() && this_thread::get_id() != thread::id());
        this_thread::Cancel();
        {
            this_thread::disable_cancellation outer;
            {
                this_thread::disable_cancellation inner;
                this_thread::enable_cancellation const noEffect(inner); // the outer scope had disabled it
                EXPECT_FALSE(this_thread::cancellation_enabled());
            }
            EXPECT_NO_THROW(this_thread::cancellation_point());
            {
                this_thread::enable_cancellation const enabled(outer);
                EXPECT_THROW(this_thread::cancellation_point(), thread_canceled);
            }
            this_thread::Cancel();
            EXPECT_NO_THROW(this_thread::cancellation_point());
        }
        EXPECT_THROW(this_thread::cancellation_point(), thread_canceled);
    };
    thread worker(work);
    worker.cancel();
    worker.join();
    this_thread::Cancel(); // on a thread that isn't of the library
    EXPECT_NO_THROW(this_thread::cancellation_point());
    EXPECT_TRUE(!this_thread::cancellation_requested() && this_thread::get_id() == thread::id());
}

TEST(ThreadJoin, IsInterruptedUnlessDisabledAndCanBeMadeAgain)
{
    auto const work = []
    {
        Flag go = false;
        thread target([&] { SpinWhile([&] { return !go; }), this_thread::sleep(20); });
        this_thread::Cancel();
        EXPECT_THROW(target.join(), thread_canceled);
        EXPECT_TRUE(target.joinable() && !this_thread::cancellation_requested());
        this_thread::Cancel();
        this_thread::disable_cancellation const guard;
        go = true;
        EXPECT_NO_THROW(target.join());
        EXPECT_TRUE(!target.joinable() && this_thread::cancellation_requested());
    };
    thread(work).join();
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
    std::atomic<int> ended{0};
    auto const work = [&]
    {
        SpinWhile([&] { return !this_thread::cancellation_requested(); });
        ++ended;
    };
    auto const coordinate = [&]
    {
        std::vector<thread*> workers{new thread(work), new thread(work), new thread(work)};
        EXPECT_THROW(JoinAll(workers), thread_canceled);
        EXPECT_TRUE(workers.empty() && ended == 3 && !this_thread::cancellation_requested()); // it is used up
    };
    thread coordinator(coordinate);
    this_thread::sleep(5); // most likely the request comes in the middle of a wait
    coordinator.cancel();
    coordinator.join();
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
    };
    std::vector<thread*> workers{new thread(work), new thread(work), new thread(work)};
    JoinAll(workers);
    EXPECT_TRUE(workers.empty() && counter == 3000);
    thread([&] { guarded.lock(); }).join();
    EXPECT_THROW(guarded.lock(), mutex_abandoned);
    EXPECT_THROW(guarded.lock(), mutex_abandoned); // and so every later one
}

} // namespace geometry
