#include "session_worker.h"

namespace vdhost::serve {

void SessionWorker::post(std::function<void()> job) {
    {
        std::lock_guard lock(mutex_);
        if (!stopped_) {
            jobs_.push_back(std::move(job));
            wake_.notify_one();
            return;
        }
    }
    throw WorkerStopped();
}

void SessionWorker::stop() {
    std::lock_guard lock(mutex_);
    stopped_ = true;
    wake_.notify_all();
}

void SessionWorker::run(const std::function<void()>& idle, const std::function<bool()>& shouldStop,
                        std::chrono::milliseconds idleInterval) {
    std::unique_lock lock(mutex_);
    while (!stopped_) {
        if (jobs_.empty() && !wake_.wait_for(lock, idleInterval, [&] { return stopped_ || !jobs_.empty(); })) {
            lock.unlock();
            idle();
            bool stopNow = shouldStop();
            lock.lock();
            if (stopNow) stopped_ = true;
            continue;
        }
        if (stopped_) break;
        auto job = std::move(jobs_.front());
        jobs_.pop_front();
        lock.unlock();
        job();
        bool stopNow = shouldStop();
        lock.lock();
        if (stopNow) stopped_ = true;
    }
    // Jobs that never ran: their callers get WorkerStopped through the broken promise's place.
    auto left = std::move(jobs_);
    jobs_.clear();
    lock.unlock();
    left.clear();  // destroying a packaged_task that never ran makes its future throw broken_promise
}

}  // namespace vdhost::serve
