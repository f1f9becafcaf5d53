#include "sound/waveform/waveform_names.h"

#include "sound/sound_flags.h"

#include <array>
#include <cctype>
#include <string>

namespace vd::sound {

namespace {

struct WaveformName {
    const char* name;
    uint16_t code;
};

constexpr std::array kNames{
    WaveformName{"sin", kSine},          WaveformName{"sine", kSine},
    WaveformName{"saw", kSawtooth},      WaveformName{"sawtooth", kSawtooth},
    WaveformName{"square", kSquare},     WaveformName{"rectangle", kSquare},
    WaveformName{"silence", kSilence},   WaveformName{"none", kSilence},
    WaveformName{"noise", kNoise},
};

}  // namespace

std::optional<uint16_t> WaveformCodeFromName(std::string_view name) {
    std::string lower(name);
    for (char& c : lower) c = char(std::tolower(static_cast<unsigned char>(c)));
    for (const auto& entry : kNames)
        if (lower == entry.name) return entry.code;
    return std::nullopt;
}

}  // namespace vd::sound
