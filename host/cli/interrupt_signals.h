// SIGINT and SIGTERM end the running calculation instead of the process, so that a statement that
// stores is rolled back, temporary files are removed and the prompt survives Ctrl-C.
//
// The handlers are installed once, before any plug-in loads, and never again: a plug-in may put
// its own handler in front at start-up (to remove its temporary files) and then call ours, so ours
// are plain functions that only do async-signal-safe work.
#pragma once

namespace vdhost::cli {

enum class InterruptPolicy {
    // A signal ends the call; if the running plug-in call does not return within a short grace
    // period the process ends itself with status 128 + signal (SQLite rolls an uncommitted write
    // back on the next open).
    EndCall,
    // As EndCall, but SIGINT only ends the calculation and the process goes on (the prompt).
    EndCalculationOnCtrlC,
};

void installInterruptHandlers(InterruptPolicy policy);

// The exit status for an interruption by signalNumber.
inline int interruptedStatus(int signalNumber) { return 128 + signalNumber; }

}  // namespace vdhost::cli
