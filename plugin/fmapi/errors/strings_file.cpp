#include "fmapi/errors/strings_file.h"

#include <cctype>
#include <optional>

namespace vd {

namespace {

class Reader {
public:
    explicit Reader(std::string_view text) : text_(text) {
        if (text_.substr(0, 3) == "\xEF\xBB\xBF") pos_ = 3;
    }

    // Skips blanks and comments; false for a comment that never ends.
    bool SkipSpace() {
        while (pos_ < text_.size()) {
            if (std::isspace(static_cast<unsigned char>(text_[pos_]))) {
                ++pos_;
            } else if (text_.substr(pos_, 2) == "//") {
                auto end = text_.find('\n', pos_);
                pos_ = end == std::string_view::npos ? text_.size() : end + 1;
            } else if (text_.substr(pos_, 2) == "/*") {
                auto end = text_.find("*/", pos_ + 2);
                if (end == std::string_view::npos) return false;
                pos_ = end + 2;
            } else {
                break;
            }
        }
        return true;
    }

    bool AtEnd() const { return pos_ >= text_.size(); }

    bool Take(char c) {
        if (pos_ < text_.size() && text_[pos_] == c) {
            ++pos_;
            return true;
        }
        return false;
    }

    std::optional<std::string> Quoted() {
        if (!Take('"')) return std::nullopt;
        std::string out;
        while (pos_ < text_.size()) {
            char c = text_[pos_++];
            if (c == '"') return out;
            if (c != '\\') {
                out.push_back(c);
                continue;
            }
            if (pos_ >= text_.size()) break;
            char e = text_[pos_++];
            switch (e) {
            case 'n': out.push_back('\n'); break;
            case 't': out.push_back('\t'); break;
            case 'r': out.push_back('\r'); break;
            default: out.push_back(e); break;  // \" and \\ and anything else stand for themselves
            }
        }
        return std::nullopt;
    }

private:
    std::string_view text_;
    size_t pos_ = 0;
};

}  // namespace

StringsTable ParseStringsFile(std::string_view text) {
    StringsTable table;
    Reader in(text);
    for (;;) {
        if (!in.SkipSpace()) break;
        if (in.AtEnd()) return table;
        auto key = in.Quoted();
        if (!key || !in.SkipSpace() || !in.Take('=') || !in.SkipSpace()) break;
        auto value = in.Quoted();
        if (!value || !in.SkipSpace() || !in.Take(';')) break;
        table.entries.insert_or_assign(std::move(*key), std::move(*value));
    }
    table.complete = false;
    return table;
}

}  // namespace vd
