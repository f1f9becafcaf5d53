// Which host we are running in, worked out from its interface version and its version text
// ("ProAdvanced 11.0v3"), and whether we agree to run there.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vd {

// The product version as a number: 703 for 7.0v3, 1002 for 10.0v2; 0 when it cannot be worked out.
// The edition word before the first blank is dropped first; the figure after the version letter is
// added in 16-bit arithmetic, as hosts have always been identified.
uint16_t HostVersionCode(int16_t interfaceVersion, std::string_view versionText);

// The hosts this plug-in is offered for. The gaps are deliberate and kept exactly: 700, 800 and
// 860..899 are refused, 900 is accepted, and every 10.1 host (1010..1099) is refused.
bool IsAcceptedHostVersion(uint16_t code);

// The version text from the start request: at most 20 UTF-16 units of the NUL-terminated text,
// as UTF-8. An empty text stands for "ask the host application": on Linux there is no version
// resource to read, so the host may put its version in VDHOST_VERSION_TEXT; without it the text
// stays empty (and the host is refused).
std::string HostVersionText(const char16_t* units);

}  // namespace vd
