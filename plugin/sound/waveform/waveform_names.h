// The waveform names Vandrel_CreateSound accepts.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vd::sound {

// The waveform code of a name, compared whole and without regard to case ("SINE", "Sine" and
// "sin" are all the sine); nothing for any other text.
std::optional<uint16_t> WaveformCodeFromName(std::string_view name);

}  // namespace vd::sound
