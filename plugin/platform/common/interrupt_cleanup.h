// A process that is told to stop (Ctrl-C, SIGTERM, a closed terminal) while a function runs must
// not leave that function's temporary files behind. While the plug-in is started it stands in front
// of whatever handled those signals before: it removes the recorded temporary files, then hands the
// signal on unchanged, so the host still decides what the signal means (end the process, or end
// only the running calculation at a prompt).
#pragma once

namespace vd::platform {

// Idempotent; signals the process ignores stay ignored.
void InstallInterruptCleanup() noexcept;
// Puts back what was there, where our handler is still the one in place.
void RemoveInterruptCleanup() noexcept;

// Whether a stop signal came since the running call began. Long loops look at it so that a host
// that goes on after the signal (a prompt) gets the call back soon, as cancelled (-128).
bool StopRequested() noexcept;
// At the start of every call: a signal that ended an earlier calculation does not stop this one.
void ClearStopRequest() noexcept;
// For threads that serve no host call (the one that feeds the sound output): a stop meant for the
// running calculation must not end a sound that plays in the background, so on such a thread
// StopRequested is always false.
void IgnoreStopRequestsOnThisThread() noexcept;

}  // namespace vd::platform
