// The session, its database and its plug-ins belong to one thread, as they do in vdhost's other
// commands: requests are answered on the server's threads, but whatever touches the session is
// handed to the thread that runs the worker and waited for. Between jobs the plug-ins get idle time,
// as a host application's event loop would give it.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <stdexcept>

namespace vdhost::serve {

class WorkerStopped : public std::runtime_error {
public:
    WorkerStopped() : std::runtime_error("the server is stopping") {}
};

class SessionWorker {
public:
    // Runs jobs on the calling thread until stop() is called or shouldStop answers true (it is
    // asked between jobs and at least every idleInterval); idle runs whenever that long passed
    // without a job.
    void run(const std::function<void()>& idle, const std::function<bool()>& shouldStop,
             std::chrono::milliseconds idleInterval);
    void stop();

    // Runs job on the worker's thread and answers what it answered (or throws what it threw).
    // Throws WorkerStopped when the worker has stopped or stops before the job runs.
    template <typename Job>
    auto call(Job job) -> decltype(job()) {
        using Result = decltype(job());
        auto task = std::make_shared<std::packaged_task<Result()>>(std::move(job));
        auto future = task->get_future();
        post([task] { (*task)(); });
        try {
            return future.get();
        } catch (const std::future_error&) {
            throw WorkerStopped();  // the worker stopped with the job still queued
        }
    }

private:
    void post(std::function<void()> job);

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::function<void()>> jobs_;
    bool stopped_ = false;
};

}  // namespace vdhost::serve
