// Which track and channels a waveform picture shows: "track" or "track/channel", where the channel
// is LEFT, RIGHT, ALL (any case) or a number counted from 0.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vd::sound {

struct WaveformSelection {
    static constexpr int32_t kAllChannels = -1;
    int32_t track = 0;                    // 1-based among the sound tracks
    int32_t channel = kAllChannels;       // 0-based, or every channel
};

// Leading blanks and carriage returns are skipped and a "+" before the track is ignored; the track
// is decimal digits; after "/" the keyword is matched against the start of the rest, so "1/Leftover"
// is LEFT followed by junk. Blanks and carriage returns may end the text. Numbers too large for 32
// bits stay as large as they can be (such a track or channel never exists). Nothing for any other
// text.
std::optional<WaveformSelection> ParseWaveformSelector(std::string_view text);

}  // namespace vd::sound
