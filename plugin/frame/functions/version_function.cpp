#include "frame/functions/frame_functions.h"

#include "util/words.h"
#include "fmapi/args/arguments.h"
#include "fmapi/errors/localized_strings.h"
#include "util/status_codes.h"

#include "vandrel_version.h"

#include <cctype>

namespace vd {

namespace {

using util::SameWord;

constexpr int kVersionStringNumber = 3;
constexpr uint32_t kVersionStringCapacity = 256;

std::string_view Trimmed(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
    return s;
}

}  // namespace

VersionForm VersionFormOf(std::string_view key) {
    key = Trimmed(key);
    if (key.empty()) return VersionForm::Default;
    if (SameWord(key, "long")) return VersionForm::Long;
    if (SameWord(key, "short")) return VersionForm::Short;
    if (SameWord(key, "platform")) return VersionForm::Platform;
    if (SameWord(key, "number")) return VersionForm::Number;
    return VersionForm::Unknown;
}

std::string LongVersionText() {
    return "Vandrel " VANDREL_VERSION_TEXT " for Linux (built " VANDREL_BUILD_DATE ")";
}

fmapi::Outcome VersionFunction(const FunctionCall& call) {
    switch (VersionFormOf(ArgCText(ArgText(call.args, 0)))) {
    case VersionForm::Default:
        return fmapi::Outcome::Text(LocalizedString(kVersionStringNumber, kVersionStringCapacity));
    case VersionForm::Long: return fmapi::Outcome::Text(LongVersionText());
    case VersionForm::Short: return fmapi::Outcome::Text(VANDREL_VERSION_TEXT);
    case VersionForm::Platform: return fmapi::Outcome::Text("Linux");
    case VersionForm::Number: return fmapi::Outcome::Number(VANDREL_VERSION_NUMBER);
    case VersionForm::Unknown: break;
    }
    return fmapi::Outcome::Failure(util::kBadParameter);
}

}  // namespace vd
