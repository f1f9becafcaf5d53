// The recording format as a person chooses it in the settings dialog, and as the bytes that the
// settings text carries, big-endian: "vdrc", version (1), channels, rate, sample size, the input's
// name's length in bytes (0: the default input) and the name in UTF-8.
#pragma once

#include "platform/audio/sound_recording.h"
#include "util/status_codes.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vd::recording {

std::vector<uint8_t> RecordingFormatBytes(const audio::RecordingFormat& format);

// Shows the dialog starting from format and stores the choices there. -128 when cancelled or when
// no dialog can be shown (detail says why); -50 for a script answer the dialog does not offer.
util::Status RunRecordingSettingsDialog(audio::RecordingFormat& format, std::string& detail);

}  // namespace vd::recording
