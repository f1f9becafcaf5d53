#include "playback/pool_timer.h"

#include <chrono>
#include <system_error>

namespace vd::playback {

namespace {
constexpr auto kInterval = std::chrono::milliseconds(100);
}

PoolTimer::~PoolTimer() { Remove(); }

bool PoolTimer::Install(std::function<void()> tick) {
    std::unique_lock lock(mutex_);
    if (thread_.joinable() && !stop_) return true;
    if (thread_.joinable()) {
        // A timer that removed itself from its own tick: its thread ends once that tick returns.
        std::thread ending = std::move(thread_);
        lock.unlock();
        if (ending.get_id() != std::this_thread::get_id()) ending.join();
        else ending.detach();
        lock.lock();
    }
    tick_ = std::move(tick);
    stop_ = false;
    try {
        thread_ = std::thread([this] { Run(); });
    } catch (const std::system_error&) {
        return false;
    }
    return true;
}

void PoolTimer::Remove() {
    std::unique_lock lock(mutex_);
    stop_ = true;
    wake_.notify_all();
    if (!thread_.joinable() || thread_.get_id() == std::this_thread::get_id()) return;
    std::thread ending = std::move(thread_);
    lock.unlock();
    ending.join();
}

bool PoolTimer::Installed() const {
    std::lock_guard lock(mutex_);
    return thread_.joinable() && !stop_;
}

void PoolTimer::Run() {
    auto next = std::chrono::steady_clock::now();
    std::unique_lock lock(mutex_);
    while (!stop_) {
        const std::function<void()> tick = tick_;
        lock.unlock();
        tick();
        lock.lock();
        next += kInterval;
        wake_.wait_until(lock, next, [this] { return stop_; });
    }
}

}  // namespace vd::playback
