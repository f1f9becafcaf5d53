// The pieces every page is made of: escaping, links, and the page frame with its style sheet. The
// pages fetch nothing from elsewhere and run no script: the style is inline, and everything else
// comes from this server.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vdhost::serve {

// Text for element content and quoted attribute values: & < > " ' escaped.
std::string escapeHtml(std::string_view text);

// One query component: everything but unreserved characters percent-encoded (UTF-8 bytes).
std::string encodeQueryComponent(std::string_view text);

// path?name=value&... with the values encoded, escaped for an attribute.
std::string link(std::string_view path, const std::vector<std::pair<std::string, std::string>>& query);

// A whole page: title, a line of navigation links (already HTML), the body (already HTML).
std::string page(std::string_view title, std::string_view navigation, std::string_view body);

// A size in bytes as people read it: "812 bytes", "43.1 KB", "5.2 MB".
std::string byteCountText(uint64_t bytes);

}  // namespace vdhost::serve
