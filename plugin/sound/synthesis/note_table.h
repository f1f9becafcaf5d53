// Note names to frequencies: eight octaves of equal temperament from C1 to B8 with A4 at 440 Hz.
// The letters follow the German naming: B is the B-flat and H the B natural, as the function has
// always read them, so existing calculations keep their pitch.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vd::sound {

inline constexpr int kNoteCount = 96;  // C1 (index 0) to B8 (index 95)

// Entry i = 440 × 2^((i − 45) / 12), kept to five significant digits.
float NoteTableEntry(int index);

struct NoteFrequency {
    float hertz;     // the table's value
    uint32_t fixed;  // the same as unsigned 16.16, saturating
};

// A letter A-H (any case), then "#" (up) or "b" (down) or nothing, then the octave 1-8; characters
// after the octave are ignored. Nothing for any other text, or a note outside the table (Cb1, H#8).
std::optional<NoteFrequency> NoteFrequencyFromName(std::string_view name);

}  // namespace vd::sound
