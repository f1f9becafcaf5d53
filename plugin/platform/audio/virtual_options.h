// The options of VANDREL_AUDIO=virtual:option,option...: one list for the output and the input,
// so that either side accepts the other's options (virtual:out=/x.wav,in=tone).
#pragma once

#include "platform/media/errors.h"

#include <string>

namespace vd::audio {

using media::Status;

struct VirtualOptions {
    std::string out;  // capture path of the output; empty: discard
    std::string in;   // "tone", a file's path, or empty: no input
    bool fast = false;
    double length = 0;  // seconds of input before it ends, as a person stopping it would; 0: never
};

// util::kNoSoundOutput naming the option for one we do not know.
Status ParseVirtualOptions(const std::string& text, VirtualOptions& options);

}  // namespace vd::audio
