// Workers use what the stack of their starter holds, so they are never abandoned: a request to stop the waiting
// thread is handed on to each worker, and the joins are finished under a guard before the exception goes on.

#include "thread/join_all.h"

namespace geometry
{

namespace
{

void JoinInOrder(std::vector<thread*> & threads)
{
    while (!threads.empty())
    {
        threads.front()->join();
        delete threads.front();
        threads.erase(threads.begin());
    }
}

} // namespace

void JoinAll(std::vector<thread*> & threads)
{
    try
    {
        JoinInOrder(threads);
    }
    catch (thread_canceled const &)
    {
        for (thread* worker : threads)
        {
            worker->cancel();
        }
        {
            this_thread::disable_cancellation const uninterrupted;
            JoinInOrder(threads);
        }
        throw thread_canceled();
    }
}

} // namespace geometry
