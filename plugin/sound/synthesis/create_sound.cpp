#include "sound/synthesis/create_sound.h"

#include "sound/synthesis/fixed_point.h"
#include "sound/synthesis/float_text.h"
#include "sound/synthesis/note_table.h"
#include "sound/sound_flags.h"
#include "sound/synthesis/tone_synthesis.h"
#include "sound/waveform/waveform_names.h"
#include "util/status_codes.h"

#include <optional>
#include <string_view>

namespace vd::sound {

namespace {

constexpr size_t kTextLimit = 255;  // the longest argument text the function reads
constexpr std::string_view kDefaultNote = "A4";

std::string_view Cut(const std::string& text) { return std::string_view(text).substr(0, kTextLimit); }

// The duration argument as 16.16 seconds.
std::optional<SoundOutcome> ReadDuration(const std::string& text, uint32_t& duration) {
    std::optional<float> seconds = ScanFloat(Cut(text));
    if (!seconds) return SoundOutcome{util::kBadParameter, "Error converting parameter #2 to duration."};
    if (*seconds <= 0) return SoundOutcome{util::kBadParameter, ""};
    duration = FixedFromFloat(*seconds);
    if (duration == 0) return SoundOutcome{util::kBadParameter, ""};  // below 1/65536 s, or not a number at all
    return std::nullopt;
}

// The frequency argument: a note name first, else a number of hertz.
std::optional<SoundOutcome> ReadFrequency(const std::string& text, uint32_t& frequency) {
    const std::string_view cut = Cut(text);
    if (auto note = NoteFrequencyFromName(cut)) {
        frequency = note->fixed;
        return std::nullopt;
    }
    std::optional<float> hertz = ScanFloat(cut);
    if (hertz && *hertz > 0) frequency = FixedFromFloat(*hertz);
    // No tone has a pitch of 0 Hz or below (the sawtooth's period would be endless), so such a
    // frequency is refused like one that cannot be read.
    if (!hertz || !(*hertz > 0) || frequency == 0)
        return SoundOutcome{util::kBadParameter, "Error converting parameter #3 to frequency."};
    return std::nullopt;
}

}  // namespace

SoundOutcome CreateSound(std::span<const std::string> arguments, media::Movie& movie) {
    if (arguments.empty()) return {util::kBadParameter, "This function requires 1 or more parameters."};
    std::optional<uint16_t> waveform = WaveformCodeFromName(Cut(arguments[0]));
    if (!waveform) return {util::kBadParameter, ""};
    const uint16_t flags = *waveform | kStereo16BothChannels;

    uint32_t duration = kFixedOne;
    if (arguments.size() >= 2)
        if (auto failure = ReadDuration(arguments[1], duration)) return *failure;

    uint32_t frequency = 0;
    if (arguments.size() >= 3) {
        if (auto failure = ReadFrequency(arguments[2], frequency)) return *failure;
    } else {
        auto note = NoteFrequencyFromName(kDefaultNote);
        if (!note) return {util::kBadParameter, "Error getting frequency for a note."};
        frequency = note->fixed;
    }

    if (media::Status s = GenerateSoundMovie(duration, kRate44100, frequency, flags, movie))
        return {s, "Error generating waveform."};
    return {};
}

}  // namespace vd::sound
