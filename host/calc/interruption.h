// A request from outside the calculation (Ctrl-C, a termination signal) to end it. It is set from a
// signal handler, so it is one lock-free atomic; the evaluator looks at it between steps and ends
// the calculation with Interrupted, which unwinds like any failure: nothing half-stored is kept.
#pragma once

#include <stdexcept>

namespace vdhost::calc {

class Interrupted : public std::runtime_error {
public:
    explicit Interrupted(int signalNumber) : std::runtime_error("Interrupted."), signal(signalNumber) {}
    int signal;
};

// Async-signal-safe.
void requestInterruption(int signalNumber) noexcept;
// The signal of the pending request, 0 when there is none.
int interruptionSignal() noexcept;
void clearInterruption() noexcept;

// Throws Interrupted when a request is pending.
void throwIfInterrupted();

}  // namespace vdhost::calc
