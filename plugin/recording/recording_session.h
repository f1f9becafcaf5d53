// Recording into a file, in the two ways the functions offer: in the background, stopped later by
// another call, or holding the call until the person ends it.
#pragma once

#include "recording/recording_entry.h"
#include "util/status_codes.h"

#include <memory>
#include <string>

namespace vd::recording {

// Empties the file, then makes, registers and starts an entry recording into it. On failure
// nothing stays registered.
util::Status BeginRecording(const std::string& path, std::shared_ptr<RecordingEntry>& entry);

// Records until the person ends it: a mouse button pressed (where there is a display), Enter or
// Escape in the terminal, a stop signal (Ctrl-C), or the input's own end (a virtual input with a length). The timer's tick drains the input in the
// meantime, as it does for a background recording. The file is complete on return.
util::Status RecordUntilEnded(const std::string& path);

}  // namespace vd::recording
