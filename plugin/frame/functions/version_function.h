// Vandrel_Version ( versionFormat ): the plug-in's version in the form the key asks for.
#pragma once

#include "fmapi/function_call.h"

#include <string>
#include <string_view>

namespace vd {

enum class VersionForm { Default, Long, Short, Platform, Number, Unknown };

// The key without regard to case or surrounding blanks: "" Default, "long", "short", "platform",
// "number"; anything else Unknown.
VersionForm VersionFormOf(std::string_view key);

// "Vandrel 7.0.1 for Linux (built 2024-05-01)": the build date tells support which build it is.
std::string LongVersionText();

// Default: "String3" of the localization table. Long, Short ("7.0.1"), Platform ("Linux"): texts.
// Number: 70001 (major * 10000 + minor * 100 + patch) as a number. Unknown: the status text
// "$-50:Vandrel_Version: Wrong parameter(s).".
fmapi::Outcome VersionFunction(const FunctionCall& call);

}  // namespace vd
