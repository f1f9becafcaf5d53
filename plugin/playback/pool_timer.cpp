#include "playback/pool_timer.h"

#include <chrono>
#include <system_error>

namespace vd::playback {

namespace {
constexpr auto kInterval = std::chrono::milliseconds(100);
}

PoolTimer::~PoolTimer() {
    std::unique_lock lock(mutex_);
    running_ = false;
    ++generation_;
    wake_.notify_all();
    std::list<Ending> threads = std::move(ending_);
    if (thread_.joinable()) threads.push_back({std::move(thread_), finished_});
    lock.unlock();
    for (Ending& ending : threads) ending.thread.join();
}

void PoolTimer::JoinFinished() {
    for (auto it = ending_.begin(); it != ending_.end();) {
        if (it->finished->load()) {
            it->thread.join();
            it = ending_.erase(it);
        } else {
            ++it;
        }
    }
}

bool PoolTimer::Install(std::function<void()> tick) {
    std::lock_guard lock(mutex_);
    if (running_) return true;
    JoinFinished();
    if (thread_.joinable()) ending_.push_back({std::move(thread_), finished_});
    tick_ = std::move(tick);
    const uint64_t generation = ++generation_;
    auto finished = std::make_shared<std::atomic<bool>>(false);
    try {
        thread_ = std::thread([this, generation, finished] { Run(generation, finished); });
    } catch (const std::system_error&) {
        return false;
    }
    finished_ = std::move(finished);
    running_ = true;
    return true;
}

void PoolTimer::Remove() {
    std::lock_guard lock(mutex_);
    if (!running_) return;
    running_ = false;
    ++generation_;
    wake_.notify_all();
}

bool PoolTimer::Installed() const {
    std::lock_guard lock(mutex_);
    return running_;
}

void PoolTimer::Run(uint64_t generation, std::shared_ptr<std::atomic<bool>> finished) {
    auto next = std::chrono::steady_clock::now();
    std::unique_lock lock(mutex_);
    while (generation == generation_) {
        const std::function<void()> tick = tick_;
        lock.unlock();
        tick();
        lock.lock();
        next += kInterval;
        wake_.wait_until(lock, next, [&] { return generation != generation_; });
    }
    finished->store(true);
}

}  // namespace vd::playback
