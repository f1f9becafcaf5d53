#include "interruption.h"

#include <atomic>

namespace vdhost::calc {

namespace {

std::atomic<int> gSignal{0};
static_assert(std::atomic<int>::is_always_lock_free, "set from a signal handler");

}  // namespace

void requestInterruption(int signalNumber) noexcept { gSignal.store(signalNumber, std::memory_order_relaxed); }

int interruptionSignal() noexcept { return gSignal.load(std::memory_order_relaxed); }

void clearInterruption() noexcept { gSignal.store(0, std::memory_order_relaxed); }

void throwIfInterrupted() {
    if (int signalNumber = interruptionSignal()) throw Interrupted(signalNumber);
}

}  // namespace vdhost::calc
