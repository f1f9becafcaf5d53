// The pool's repeating timer: a thread that calls the tick at once and then every 100 ms until it
// is stopped. It stands in for a timer on the host's event loop, so the tick takes the pool's lock
// like any call and never touches the error object or other state of the calling thread.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace vd::playback {

class PoolTimer {
public:
    PoolTimer() = default;
    ~PoolTimer();  // stops and joins
    PoolTimer(const PoolTimer&) = delete;
    PoolTimer& operator=(const PoolTimer&) = delete;

    // Starts ticking; false when no thread can be had. A running timer is left as it is.
    bool Install(std::function<void()> tick);
    // Stops ticking. From the tick itself it only asks (the thread ends after the tick returns);
    // from any other thread it also waits for the thread to end.
    void Remove();
    bool Installed() const;

private:
    void Run();

    mutable std::mutex mutex_;
    std::condition_variable wake_;
    std::function<void()> tick_;
    std::thread thread_;
    bool stop_ = false;
};

}  // namespace vd::playback
