// The pool's repeating timer: a thread that calls the tick at once and then every 100 ms until it
// is stopped. It stands in for a timer on the host's event loop, so the tick takes the pool's lock
// like any call and never touches the error object or other state of the calling thread.
//
// Removing never waits for a tick to finish: a tick may itself be waiting for a lock that the
// caller of Remove or Install holds (the recorder's, while it registers a recording). A removed
// thread ends after its tick returns and is joined later, by the next Install once it has ended or
// by the destructor.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <thread>

namespace vd::playback {

class PoolTimer {
public:
    PoolTimer() = default;
    ~PoolTimer();  // stops and joins every thread it started; never call it from a tick
    PoolTimer(const PoolTimer&) = delete;
    PoolTimer& operator=(const PoolTimer&) = delete;

    // Starts ticking; false when no thread can be had. A running timer is left as it is.
    bool Install(std::function<void()> tick);
    // Stops ticking: no tick starts after this returns, though one under way runs to its end.
    void Remove();
    bool Installed() const;

private:
    struct Ending {
        std::thread thread;
        std::shared_ptr<std::atomic<bool>> finished;
    };
    void Run(uint64_t generation, std::shared_ptr<std::atomic<bool>> finished);
    void JoinFinished();

    mutable std::mutex mutex_;
    std::condition_variable wake_;
    std::function<void()> tick_;
    std::thread thread_;
    std::shared_ptr<std::atomic<bool>> finished_;
    std::list<Ending> ending_;
    uint64_t generation_ = 0;
    bool running_ = false;
};

}  // namespace vd::playback
