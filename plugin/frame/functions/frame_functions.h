// The frame's own handlers: the functions that belong to no subsystem.
#pragma once

#include "fmapi/function_call.h"

#include <string>
#include <string_view>

namespace vd {

// Vandrel_GetLastError: "$code:message" of the error object, which it leaves as it is, so it can be
// asked twice.
fmapi::Outcome LastErrorFunction(const FunctionCall& call);

// Vandrel_Version ( versionFormat ): the plug-in's version in the form the key asks for.
// Default: "String3" of the localization table. Long, Short ("7.0.1"), Platform ("Linux"): texts.
// Number: 70001 (major * 10000 + minor * 100 + patch) as a number. Unknown: the status text
// "$-50:Vandrel_Version: Wrong parameter(s).".
fmapi::Outcome VersionFunction(const FunctionCall& call);

enum class VersionForm { Default, Long, Short, Platform, Number, Unknown };
// The key without regard to case or surrounding blanks: "" Default, "long", "short", "platform",
// "number"; anything else Unknown.
VersionForm VersionFormOf(std::string_view key);
// "Vandrel 7.0.1 for Linux (built 2024-05-01)": the build date tells support which build it is.
std::string LongVersionText();

// Vandrel_GetMouseUp: 1 when no mouse button is down, 0 while one is (asked of the display; with
// none, always 1), so a script can wait for a click to end.
fmapi::Outcome MouseUpFunction(const FunctionCall& call);

// Every function whose subsystem is not built yet: -4 ("Feature is not implemented yet."), so that
// scripts see the same shape of answer as from a working function.
fmapi::Outcome NotImplemented(const FunctionCall& call);

}  // namespace vd
