// Web images ("http://" and "https://"), fetched whole into memory through libcurl, which is loaded
// when the first one is asked for. A server that answers too slowly or sends too much is a failure
// with its own status, never a wait without end or an allocation without bound.
#pragma once

#include "util/status_codes.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vd::platform {

struct WebLimits {
    int64_t connectMilliseconds = 10'000;
    int64_t totalMilliseconds = 60'000;
    uint64_t maxBytes = uint64_t(64) << 20;
};

// The defaults, or what VANDREL_WEB_CONNECT_TIMEOUT and VANDREL_WEB_TIMEOUT (seconds, fractions
// allowed) and VANDREL_WEB_MAX_BYTES say instead (servers and the tests shorten them).
WebLimits WebLimitsFromEnvironment();

// 0 with the body of a successful answer. util::kNoComponent when libcurl cannot be loaded;
// util::kFileNotFound for an address that cannot be reached or an HTTP error (404 ...);
// util::kMemoryFull for a body past maxBytes; util::kIoError for a transfer that took too long or
// broke off; util::kBadParameter for an address of another scheme. detail says why in words.
util::Status FetchUrl(const std::string& url, const WebLimits& limits, std::vector<uint8_t>& body, std::string& detail);

}  // namespace vd::platform
