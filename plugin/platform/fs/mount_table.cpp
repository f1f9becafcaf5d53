#include "platform/fs/mount_table.h"

#include <charconv>
#include <fstream>
#include <iterator>

namespace vd::platform::fs {

namespace {

// A machine with thousands of container mounts has a table of a few MiB; anything beyond this
// is not a table we want to hold in memory on every path lookup.
constexpr size_t kMaxMountInfoBytes = 16u << 20;

// The kernel writes space, tab, newline and backslash in paths as three octal digits ("\040").
std::string DecodeOctalEscapes(std::string_view field) {
    std::string decoded;
    decoded.reserve(field.size());
    const auto isOctal = [](char c) { return c >= '0' && c <= '7'; };
    for (size_t i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && i + 3 < field.size() && isOctal(field[i + 1]) && isOctal(field[i + 2]) &&
            isOctal(field[i + 3])) {
            const int value = (field[i + 1] - '0') * 64 + (field[i + 2] - '0') * 8 + (field[i + 3] - '0');
            if (value < 256) {
                decoded.push_back(static_cast<char>(value));
                i += 3;
                continue;
            }
        }
        decoded.push_back(field[i]);
    }
    return decoded;
}

std::vector<std::string_view> SplitFields(std::string_view line) {
    std::vector<std::string_view> fields;
    size_t start = 0;
    while (start < line.size()) {
        const size_t end = line.find(' ', start);
        const size_t stop = end == std::string_view::npos ? line.size() : end;
        if (stop > start) fields.push_back(line.substr(start, stop - start));
        start = stop + 1;
    }
    return fields;
}

bool ParseDevice(std::string_view field, uint32_t& major, uint32_t& minor) {
    const size_t colon = field.find(':');
    if (colon == std::string_view::npos) return false;
    const char* begin = field.data();
    const char* middle = begin + colon;
    const char* end = begin + field.size();
    const auto majorResult = std::from_chars(begin, middle, major);
    const auto minorResult = std::from_chars(middle + 1, end, minor);
    return majorResult.ec == std::errc() && majorResult.ptr == middle && minorResult.ec == std::errc() &&
           minorResult.ptr == end;
}

}  // namespace

std::vector<MountEntry> ParseMountInfo(std::string_view text) {
    std::vector<MountEntry> entries;
    size_t lineStart = 0;
    while (lineStart < text.size()) {
        size_t lineEnd = text.find('\n', lineStart);
        if (lineEnd == std::string_view::npos) lineEnd = text.size();
        const std::vector<std::string_view> fields = SplitFields(text.substr(lineStart, lineEnd - lineStart));
        lineStart = lineEnd + 1;

        // id parent major:minor root mount-point options [optional...] - type source super-options
        size_t separator = 6;
        while (separator < fields.size() && fields[separator] != "-") ++separator;
        if (separator + 2 >= fields.size()) continue;

        MountEntry entry;
        if (!ParseDevice(fields[2], entry.deviceMajor, entry.deviceMinor)) continue;
        entry.mountPoint = DecodeOctalEscapes(fields[4]);
        if (entry.mountPoint.empty() || entry.mountPoint.front() != '/') continue;
        entry.fileSystemType = DecodeOctalEscapes(fields[separator + 1]);
        entry.source = DecodeOctalEscapes(fields[separator + 2]);
        entries.push_back(std::move(entry));
    }
    return entries;
}

std::vector<MountEntry> ReadMountTable() {
    std::ifstream in("/proc/self/mountinfo", std::ios::binary);
    if (!in) return {};
    std::string text;
    char buffer[8192];
    while (in.read(buffer, sizeof buffer) || in.gcount() > 0) {
        text.append(buffer, static_cast<size_t>(in.gcount()));
        if (text.size() > kMaxMountInfoBytes) return {};
    }
    return ParseMountInfo(text);
}

}  // namespace vd::platform::fs
