#include "sound/waveform/waveform_selector.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace vd::sound {

namespace {

// How many characters of a channel number are read; a longer number is junk after its first 63.
constexpr size_t kChannelDigitsRead = 63;

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
char Upper(char c) { return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c; }

// Decimal digits at the start of text (at most limit of them), saturating; the count read.
size_t ReadNumber(std::string_view text, size_t limit, int32_t& value) {
    int64_t n = 0;
    size_t i = 0;
    for (; i < text.size() && i < limit && IsDigit(text[i]); ++i)
        n = std::min<int64_t>(n * 10 + (text[i] - '0'), std::numeric_limits<int32_t>::max());
    value = int32_t(n);
    return i;
}

bool StartsWithKeyword(std::string_view text, std::string_view keyword) {
    if (text.size() < keyword.size()) return false;
    for (size_t i = 0; i < keyword.size(); ++i)
        if (Upper(text[i]) != keyword[i]) return false;
    return true;
}

bool OnlyBlanks(std::string_view text) {
    for (char c : text)
        if (!IsBlank(c)) return false;
    return true;
}

}  // namespace

std::optional<WaveformSelection> ParseWaveformSelector(std::string_view text) {
    size_t at = 0;
    while (at < text.size() && IsBlank(text[at])) ++at;
    if (at < text.size() && text[at] == '+') ++at;
    WaveformSelection selection;
    const size_t trackDigits = ReadNumber(text.substr(at), text.size(), selection.track);
    if (trackDigits == 0) return std::nullopt;
    at += trackDigits;
    if (at < text.size() && text[at] == '/') {
        std::string_view rest = text.substr(at + 1);
        static constexpr struct {
            std::string_view word;
            int32_t channel;
        } kKeywords[] = {{"LEFT", 0}, {"RIGHT", 1}, {"ALL", WaveformSelection::kAllChannels}};
        bool named = false;
        for (const auto& keyword : kKeywords)
            if (StartsWithKeyword(rest, keyword.word)) {
                selection.channel = keyword.channel;
                rest.remove_prefix(keyword.word.size());
                named = true;
                break;
            }
        if (!named) {
            if (!rest.empty() && rest.front() == '+') rest.remove_prefix(1);
            const size_t digits = ReadNumber(rest, kChannelDigitsRead, selection.channel);
            if (digits == 0) return std::nullopt;
            rest.remove_prefix(digits);
        }
        return OnlyBlanks(rest) ? std::optional(selection) : std::nullopt;
    }
    return OnlyBlanks(text.substr(at)) ? std::optional(selection) : std::nullopt;
}

}  // namespace vd::sound
