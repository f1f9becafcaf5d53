#include "fmapi/args/boolean_words.h"

#include <array>
#include <cctype>
#include <string>

namespace vd {

namespace {

struct Word {
    std::string_view text;
    bool value;
};

// Searched in order; the first match decides.
constexpr std::array kWords{
    Word{"0", false},    Word{"1", true},  Word{"true", true}, Word{"false", false},
    Word{"yes", true},   Word{"no", false}, Word{"ja", true},  Word{"nein", false},
    Word{"o", true},     Word{"n", false},  Word{"j", true},   Word{"y", true},
};

}  // namespace

bool BooleanFromWord(std::string_view word) {
    std::string folded(word);
    for (auto& c : folded) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    for (const auto& w : kWords)
        if (folded == w.text) return w.value;
    return false;
}

}  // namespace vd
