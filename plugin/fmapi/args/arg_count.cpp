#include "fmapi/args/arg_count.h"

#include "fmapi/args/arguments.h"
#include "fmapi/args/legacy_result.h"

#include <cstdio>

namespace vd {

namespace {

constexpr long kWrongCount = 20100;

}  // namespace

std::string ArgCountMessage(int expected) {
    if (expected == 0) return "Requires no parameters";
    if (expected == 1) return "Requires exactly one parameter";
    char message[64];
    std::snprintf(message, sizeof message, "Requires exactly %hi parameters", static_cast<short>(expected));
    return message;
}

std::string ArgCountStatusText(int expected) {
    return "$" + std::to_string(kWrongCount) + ":" + ArgCountMessage(expected);
}

int CheckArgCount(const FMX_DataVect* args, int expected) {
    if (expected == -1 || ArgCount(args) == expected) return 0;
    SetLegacyResult(kWrongCount, ArgCountMessage(expected));
    return 1;
}

}  // namespace vd
