#include "sound/synthesis/note_table.h"

#include "sound/synthesis/fixed_point.h"

#include <array>
#include <cctype>
#include <cmath>

namespace vd::sound {

namespace {

constexpr int kIndexOfA4 = 45;

// Semitones above C for the letters A to H.
constexpr std::array<int, 8> kLetterSemitones{9, 10, 0, 2, 4, 5, 7, 11};

float FiveSignificantDigits(double value) {
    const double scale = std::pow(10.0, std::floor(std::log10(value)) - 4);
    return float(std::round(value / scale) * scale);
}

const std::array<float, kNoteCount>& Table() {
    static const std::array<float, kNoteCount> table = [] {
        std::array<float, kNoteCount> t{};
        for (int i = 0; i < kNoteCount; ++i) t[size_t(i)] = FiveSignificantDigits(440.0 * std::pow(2.0, (i - kIndexOfA4) / 12.0));
        return t;
    }();
    return table;
}

}  // namespace

float NoteTableEntry(int index) { return Table()[size_t(index)]; }

std::optional<NoteFrequency> NoteFrequencyFromName(std::string_view name) {
    if (name.empty()) return std::nullopt;
    const int letter = std::toupper(static_cast<unsigned char>(name[0])) - 'A';
    if (letter < 0 || letter > 7) return std::nullopt;
    int semitone = kLetterSemitones[size_t(letter)];
    size_t octaveAt = 1;
    if (name.size() > 1) {
        const int second = std::toupper(static_cast<unsigned char>(name[1]));
        if (second == '#') semitone += 1, octaveAt = 2;
        else if (second == 'B') semitone -= 1, octaveAt = 2;
    }
    if (name.size() <= octaveAt || name[octaveAt] < '1' || name[octaveAt] > '8') return std::nullopt;
    const int index = semitone + 12 * (name[octaveAt] - '1');
    if (index < 0 || index >= kNoteCount) return std::nullopt;
    const float hertz = NoteTableEntry(index);
    return NoteFrequency{hertz, FixedFromFloat(hertz)};
}

}  // namespace vd::sound
