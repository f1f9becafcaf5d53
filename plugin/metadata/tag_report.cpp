#include "metadata/tag_report.h"

#include "util/blank_trim.h"

#include <array>
#include <cctype>
#include <unordered_map>

namespace vd::metadata {

namespace {

constexpr std::array<std::string_view, 8> kFamilies = {"EXIF", "IPTC", "XMP", "ID3v1", "ID3v2", "Vorbis", "MP4", "APE"};

// Length of the UTF-8 sequence starting at i, or 0 when it is none.
size_t SequenceAt(std::string_view text, size_t i) {
    const auto byte = [&](size_t k) { return static_cast<unsigned char>(text[k]); };
    const unsigned char lead = byte(i);
    size_t length = lead < 0x80 ? 1 : (lead >> 5) == 0x6 ? 2 : (lead >> 4) == 0xE ? 3 : (lead >> 3) == 0x1E ? 4 : 0;
    if (length == 0 || i + length > text.size()) return 0;
    for (size_t k = 1; k < length; ++k)
        if ((byte(i + k) & 0xC0) != 0x80) return 0;
    // Overlong forms and code points past U+10FFFF are not UTF-8 either.
    if (length == 2 && lead < 0xC2) return 0;
    if (length == 3 && lead == 0xE0 && byte(i + 1) < 0xA0) return 0;
    if (length == 4 && (lead == 0xF0 ? byte(i + 1) < 0x90 : lead > 0xF4 || (lead == 0xF4 && byte(i + 1) > 0x8F))) return 0;
    return length;
}

bool IsUtf8(std::string_view text) {
    for (size_t i = 0; i < text.size();) {
        const size_t n = SequenceAt(text, i);
        if (n == 0) return false;
        i += n;
    }
    return true;
}

// One line of text: breaks and tabs become blanks, trailing NULs (fixed-size fields) go.
std::string OneLine(std::string_view text) {
    while (!text.empty() && text.back() == '\0') text.remove_suffix(1);
    std::string line = AsUtf8(text);
    for (char& c : line)
        if (c == '\r' || c == '\n' || c == '\t' || c == '\0') c = ' ';
    return line;
}

// A label the report's reader can walk to: ":" would end it, "/" would split the path.
std::string ReportLabel(std::string_view label) {
    std::string text = OneLine(label);
    for (char& c : text)
        if (c == ':' || c == '/') c = '_';
    return text;
}

const std::string& ValueIn(const TagEntry& tag, ValueForm form) { return form == ValueForm::kRaw ? tag.raw : tag.interpreted; }

// The values of every tag with this key, in order, joined.
std::string JoinedValues(const std::vector<TagEntry>& tags, const std::string& key, ValueForm form) {
    std::string joined;
    bool first = true;
    for (const TagEntry& tag : tags) {
        if (tag.key != key) continue;
        if (!first) joined += "; ";
        joined += OneLine(ValueIn(tag, form));
        first = false;
    }
    return joined;
}

// The tags that share a key, in the order of the key's first appearance; the first names the line.
struct KeyGroup {
    size_t first;
    std::vector<size_t> members;
};

// One pass over the tags: a picture holds a few hundred and the report is built on every call.
std::vector<KeyGroup> GroupsByKey(const std::vector<TagEntry>& tags) {
    std::vector<KeyGroup> groups;
    std::unordered_map<std::string_view, size_t> groupOfKey;
    groupOfKey.reserve(tags.size());
    for (size_t i = 0; i < tags.size(); ++i) {
        const auto [at, added] = groupOfKey.try_emplace(tags[i].key, groups.size());
        if (added) groups.push_back(KeyGroup{i, {}});
        groups[at->second].members.push_back(i);
    }
    return groups;
}

}  // namespace

std::optional<ValueForm> ValueFormOf(std::string_view text) {
    std::string word(util::TrimBlanks(text));
    for (char& c : word) c = char(std::tolower(static_cast<unsigned char>(c)));
    if (word.empty() || word == "interpreted") return ValueForm::kInterpreted;
    if (word == "raw") return ValueForm::kRaw;
    return std::nullopt;
}

std::string AsUtf8(std::string_view text) {
    if (IsUtf8(text)) return std::string(text);
    std::string converted;
    for (char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            converted += c;
        } else {
            converted += char(0xC0 | (byte >> 6));
            converted += char(0x80 | (byte & 0x3F));
        }
    }
    return converted;
}

std::string MetadataReport(const std::vector<TagEntry>& tags, ValueForm form, size_t capacity) {
    const std::vector<KeyGroup> groups = GroupsByKey(tags);
    std::string report, line;
    bool full = false;
    const auto add = [&](const std::string& text) {
        if (full || report.size() + text.size() > capacity) return void(full = true);
        report += text;
    };
    for (std::string_view family : kFamilies) {
        bool headed = false;
        for (const KeyGroup& group : groups) {
            const TagEntry& named = tags[group.first];
            if (named.family != family) continue;
            if (!headed) add(std::string(family) + "\r");
            headed = true;
            line.assign("  ").append(ReportLabel(named.label)).append(": ");
            for (size_t k = 0; k < group.members.size(); ++k) {
                if (k > 0) line += "; ";
                line += OneLine(ValueIn(tags[group.members[k]], form));
            }
            line += '\r';
            add(line);
        }
    }
    return report;
}

std::optional<std::string> FindTag(const std::vector<TagEntry>& tags, std::string_view name, ValueForm form) {
    name = util::TrimBlanks(name);
    for (const TagEntry& tag : tags) {
        if (tag.key == name || tag.family + "/" + ReportLabel(tag.label) == name)
            return JoinedValues(tags, tag.key, form);
    }
    return std::nullopt;
}

}  // namespace vd::metadata
