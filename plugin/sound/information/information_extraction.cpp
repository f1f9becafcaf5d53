#include "sound/information/information_extraction.h"

#include "util/status_codes.h"

#include <cstdio>
#include <limits>
#include <vector>

namespace vd::sound {

namespace {

constexpr int32_t kNoLine = util::kUnknownError;
constexpr int32_t kWrongKey = util::kUnknownError2;
constexpr int32_t kNotFound = util::kFileNotFound;
constexpr int32_t kBadNumber = util::kBadParameter;

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view Trim(std::string_view s) {
    while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
    while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
    return s;
}

// Reads the report one line at a time from a position that the label search keeps throughout.
class LineReader {
public:
    explicit LineReader(std::string_view text) : text_(text) {}
    bool Next(std::string_view& line) {
        if (done_) return false;
        size_t end = text_.find('\r', at_);
        if (end == std::string_view::npos) {
            line = text_.substr(at_);
            done_ = true;
        } else {
            line = text_.substr(at_, end - at_);
            at_ = end + 1;
        }
        return true;
    }

private:
    std::string_view text_;
    size_t at_ = 0;
    bool done_ = false;
};

size_t LeadingSpaces(std::string_view line) {
    size_t n = 0;
    while (n < line.size() && line[n] == ' ') ++n;
    return n;
}

// What follows the first colon, the blanks right after it skipped; the whole text without a colon.
std::string_view ValueOf(std::string_view text) {
    size_t colon = text.find(':');
    if (colon == std::string_view::npos) return text;
    std::string_view value = text.substr(colon + 1);
    while (!value.empty() && value.front() == ' ') value.remove_prefix(1);
    return value;
}

Extraction Failure(int32_t code, std::string message) { return {code, std::move(message)}; }

Extraction ByLineNumber(std::string_view report, std::string_view digits) {
    int64_t n = 0;
    for (char c : digits) {
        n = n * 10 + (c - '0');
        if (n > std::numeric_limits<int32_t>::max()) return Failure(kBadNumber, "");
    }
    if (n == 0) {
        size_t lines = 1;
        for (char c : report) lines += c == '\r';
        return {0, std::to_string(lines)};
    }
    LineReader reader(report);
    std::string_view line;
    for (int64_t i = 0; i < n; ++i)
        if (!reader.Next(line)) return Failure(kNoLine, "Could not copy indexed line.");
    return {0, std::string(ValueOf(line))};
}

// The label search: components of the key, how many the key asked for (empty pieces count there but
// are no components), and the one reading position.
class LabelSearch {
public:
    LabelSearch(std::string_view report, std::string_view key) : reader_(report) {
        expected_ = 1;
        for (char c : key) expected_ += c == '/';
        size_t start = 0;
        while (start <= key.size()) {
            size_t slash = key.find('/', start);
            if (slash == std::string_view::npos) slash = key.size();
            if (slash > start) components_.emplace_back(key.substr(start, slash - start));
            start = slash + 1;
        }
    }

    Extraction Find(size_t depth) {
        if (depth > components_.size()) return Failure(kNoLine, "Wrong line or key.");
        bool last = depth == expected_;
        std::string component = components_[depth - 1];
        if (last) {
            component = NormaliseLabel(component);
            if (component.empty()) return Failure(kWrongKey, "Wrong key.");
        }
        std::string_view line;
        while (reader_.Next(line)) {
            size_t blanks = LeadingSpaces(line);
            if ((blanks + 2) / 2 != depth) continue;
            std::string_view item = line.substr(blanks);
            if (NormaliseLabel(item.substr(0, item.find(':'))) != component) continue;
            if (last) return {0, std::string(ValueOf(item))};
            Extraction deeper = Find(depth + 1);
            // A key that is wrong stays wrong; a label not found below goes on at this depth.
            if (deeper.code == 0 || deeper.code == kNoLine || deeper.code == kWrongKey) return deeper;
        }
        return Failure(kNotFound, "Requested key was not found.");
    }

private:
    LineReader reader_;
    std::vector<std::string> components_;
    size_t expected_ = 1;
};

}  // namespace

std::string NormaliseLabel(std::string_view label) {
    size_t end = label.size();
    while (end > 0 && IsBlank(label[end - 1])) --end;
    if (end == 0) return {};
    if (label[end - 1] != ')') return std::string(label);
    // The "(" that opens the tail; the first character is never looked at.
    size_t open = label.rfind('(', end - 1);
    if (open == std::string_view::npos || open == 0) return {};
    while (open > 0 && IsBlank(label[open - 1])) --open;
    return std::string(label.substr(0, open));
}

Extraction ExtractInfo(std::string_view report, std::string_view key) {
    key = Trim(key);
    bool digitsOnly = true;
    for (char c : key) digitsOnly &= c >= '0' && c <= '9';
    if (digitsOnly) return ByLineNumber(report, key);
    return LabelSearch(report, key).Find(1);
}

}  // namespace vd::sound
