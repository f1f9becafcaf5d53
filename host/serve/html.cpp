#include "html.h"

#include <cstdint>
#include <cstdio>

namespace vdhost::serve {

namespace {

// Narrow screens first: tables scroll inside their own box instead of widening the page.
constexpr const char* kStyle = R"(
body{font:16px/1.45 system-ui,sans-serif;margin:0;color:#222;background:#fafafa}
header{background:#24405f;color:#fff;padding:.6em 1em}
header a{color:#fff}
main{padding:1em;max-width:70em}
h1{font-size:1.4em;margin:.2em 0 .6em}
nav a{margin-right:1em}
.scroll{overflow-x:auto;-webkit-overflow-scrolling:touch;margin-bottom:1em}
table{border-collapse:collapse;background:#fff}
th,td{border:1px solid #ccc;padding:.35em .6em;text-align:left;vertical-align:top}
th{background:#eef1f5}
img{max-width:100%;height:auto;background:#fff}
.cells td img{max-width:12em}
audio{display:block;max-width:100%;margin-top:.3em}
.empty{color:#888}
.note{color:#666;font-size:.9em}
.streams{font-size:.85em;color:#555;margin:.3em 0 0;padding-left:1.2em}
.error{color:#a00;white-space:pre-wrap}
pre{white-space:pre-wrap;margin:0}
form textarea{width:100%;box-sizing:border-box;font:14px monospace}
form button{margin-top:.4em;padding:.3em 1em}
.result{background:#fff;border:1px solid #ccc;padding:.6em;margin:.6em 0}
)";

}  // namespace

std::string escapeHtml(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        case '\'': out += "&#39;"; break;
        default: out += c;
        }
    }
    return out;
}

std::string encodeQueryComponent(std::string_view text) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string out;
    for (unsigned char c : text) {
        if ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_' ||
            c == '.' || c == '~') {
            out += static_cast<char>(c);
        } else {
            out += '%';
            out += kHex[c >> 4];
            out += kHex[c & 15];
        }
    }
    return out;
}

std::string link(std::string_view path, const std::vector<std::pair<std::string, std::string>>& query) {
    std::string url(path);
    char separator = '?';
    for (const auto& [name, value] : query) {
        url += separator;
        url += name + "=" + encodeQueryComponent(value);
        separator = '&';
    }
    return escapeHtml(url);
}

std::string page(std::string_view title, std::string_view navigation, std::string_view body) {
    std::string out =
        "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">"
        "<title>";
    out += escapeHtml(title);
    out += " - vdhost</title><style>";
    out += kStyle;
    out += "</style></head><body><header><nav>";
    out += navigation;
    out += "</nav></header><main><h1>";
    out += escapeHtml(title);
    out += "</h1>\n";
    out += body;
    out += "</main></body></html>\n";
    return out;
}

std::string byteCountText(uint64_t bytes) {
    if (bytes < 1024) return std::to_string(bytes) + (bytes == 1 ? " byte" : " bytes");
    const char* units[] = {"KB", "MB", "GB", "TB"};
    double value = static_cast<double>(bytes) / 1024;
    int unit = 0;
    while (value >= 1024 && unit < 3) {
        value /= 1024;
        ++unit;
    }
    char text[32];
    std::snprintf(text, sizeof text, "%.1f %s", value, units[unit]);
    return text;
}

}  // namespace vdhost::serve
