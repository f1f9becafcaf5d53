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

}  // namespace vd::platform
