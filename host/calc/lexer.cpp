#include "lexer.h"

#include "api/text_codec.h"
#include "case_folding.h"

#include <charconv>
#include <cstdio>

namespace vdhost::calc {

namespace {

constexpr char16_t kPilcrow = 0x00B6;
constexpr char16_t kNotEqualSign = 0x2260;
constexpr char16_t kLessEqualSign = 0x2264;
constexpr char16_t kGreaterEqualSign = 0x2265;

bool isDigit(char16_t c) { return c >= u'0' && c <= u'9'; }
bool isHighSurrogate(char16_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool isLowSurrogate(char16_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

bool isBlank(char16_t c) {
    switch (c) {
        case u' ': case u'\t': case u'\r': case u'\n': case u'\v': case u'\f':
        case 0x00A0: case 0x2028: case 0x2029: case 0x3000: case 0xFEFF:
            return true;
        default:
            return c >= 0x2000 && c <= 0x200B;
    }
}

// Names may hold any letter; outside ASCII everything but the operator signs and blanks counts as
// one, which admits accented and non-Latin names without a Unicode table.
bool isNameStart(char16_t c) {
    if ((c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_') return true;
    if (c < 0x80) return false;
    return c != kPilcrow && c != kNotEqualSign && c != kLessEqualSign && c != kGreaterEqualSign &&
           !isBlank(c);
}

bool isNamePart(char16_t c) { return isNameStart(c) || isDigit(c); }

std::string printable(std::u16string_view source) {
    if (source.size() == 1 && (source[0] < 0x20 || source[0] == 0x7F)) {
        char buf[16];
        std::snprintf(buf, sizeof buf, "U+%04X", static_cast<unsigned>(source[0]));
        return buf;
    }
    return utf16ToUtf8(source);
}

TokenKind keywordOrName(std::u16string_view name) {
    if (equalIgnoringCase(name, u"and")) return TokenKind::And;
    if (equalIgnoringCase(name, u"or")) return TokenKind::Or;
    if (equalIgnoringCase(name, u"xor")) return TokenKind::Xor;
    if (equalIgnoringCase(name, u"not")) return TokenKind::Not;
    return TokenKind::Identifier;
}

}  // namespace

Lexer::Lexer(std::u16string_view source, SourcePosition start) : source_(source), position_(start) {}

void Lexer::advance() {
    char16_t c = source_[index_++];
    if (c == u'\r' || c == u'\n') {
        if (c == u'\r' && unit() == u'\n') ++index_;
        ++position_.line;
        position_.column = 1;
        return;
    }
    if (isHighSurrogate(c) && isLowSurrogate(unit())) ++index_;
    ++position_.column;
}

Token Lexer::start(TokenKind kind) const {
    Token t;
    t.kind = kind;
    t.position = position_;
    return t;
}

void Lexer::finish(Token& token, size_t begin) const { token.source = source_.substr(begin, index_ - begin); }

bool Lexer::skipBlanks(Token& open) {
    while (!atEnd()) {
        char16_t c = unit();
        if (isBlank(c)) {
            advance();
        } else if (c == u'/' && unit(1) == u'/') {
            while (!atEnd() && unit() != u'\r' && unit() != u'\n') advance();
        } else if (c == u'/' && unit(1) == u'*') {
            Token comment = start(TokenKind::UnterminatedComment);
            size_t begin = index_;
            advance();
            advance();
            while (!atEnd() && !(unit() == u'*' && unit(1) == u'/')) advance();
            if (atEnd()) {
                finish(comment, begin);
                open = std::move(comment);
                return false;
            }
            advance();
            advance();
        } else {
            break;
        }
    }
    return true;
}

Token Lexer::next() {
    Token open;
    if (!skipBlanks(open)) return open;
    if (atEnd()) return start(TokenKind::End);
    char16_t c = unit();
    if (isDigit(c) || (c == u'.' && isDigit(unit(1)))) return lexNumber();
    if (c == u'"') return lexText();
    if (c == u'$') return lexVariable();
    if (isNameStart(c)) return lexName();
    return lexSymbol();
}

Token Lexer::lexNumber() {
    Token t = start(TokenKind::Number);
    size_t begin = index_;
    while (isDigit(unit())) advance();
    if (unit() == u'.') {
        advance();
        while (isDigit(unit())) advance();
    }
    bool malformed = false;
    if (unit() == u'e' || unit() == u'E') {
        size_t digitsAt = (unit(1) == u'+' || unit(1) == u'-') ? 2 : 1;
        if (isDigit(unit(digitsAt))) {
            for (size_t i = 0; i < digitsAt; ++i) advance();
            while (isDigit(unit())) advance();
        } else {
            malformed = true;
        }
    }
    // "12abc" or "1.2.3" is a typing mistake, not a number followed by something else.
    if (malformed || isNamePart(unit()) || unit() == u'.') {
        while (isNamePart(unit()) || unit() == u'.') advance();
        finish(t, begin);
        t.kind = TokenKind::Invalid;
        t.problem = "Malformed number " + utf16ToUtf8(t.source);
        return t;
    }
    finish(t, begin);

    std::string ascii(t.source.begin(), t.source.end());
    if (ascii.front() == '.') ascii.insert(ascii.begin(), '0');
    auto result = std::from_chars(ascii.data(), ascii.data() + ascii.size(), t.number);
    if (result.ec == std::errc::result_out_of_range) {
        // Too small to represent is zero; too large is a mistake.
        if (ascii.find("e-") != std::string::npos || ascii.find("E-") != std::string::npos) {
            t.number = 0;
        } else {
            t.kind = TokenKind::Invalid;
            t.problem = "Number out of range " + ascii;
        }
    } else if (result.ec != std::errc() || result.ptr != ascii.data() + ascii.size()) {
        t.kind = TokenKind::Invalid;
        t.problem = "Malformed number " + ascii;
    }
    return t;
}

Token Lexer::lexText() {
    Token t = start(TokenKind::Text);
    size_t begin = index_;
    advance();  // the opening quote
    for (;;) {
        if (atEnd()) {
            t.kind = TokenKind::UnterminatedText;
            break;
        }
        char16_t c = unit();
        if (c == u'"') {
            advance();
            break;
        }
        if (c == u'\\' && (unit(1) == u'"' || unit(1) == u'\\' || unit(1) == kPilcrow)) {
            t.text.push_back(unit(1));
            advance();
            advance();
        } else if (c == kPilcrow) {
            t.text.push_back(u'\r');
            advance();
        } else {
            size_t from = index_;
            advance();
            t.text.append(source_.substr(from, index_ - from));
        }
    }
    finish(t, begin);
    return t;
}

Token Lexer::lexName() {
    Token t = start(TokenKind::Identifier);
    size_t begin = index_;
    while (isNamePart(unit())) advance();
    finish(t, begin);
    t.kind = keywordOrName(t.source);
    return t;
}

Token Lexer::lexVariable() {
    Token t = start(TokenKind::LocalVariable);
    size_t begin = index_;
    advance();
    if (unit() == u'$') {
        t.kind = TokenKind::GlobalVariable;
        advance();
    }
    if (!isNamePart(unit())) {
        finish(t, begin);
        t.kind = TokenKind::Invalid;
        t.problem = "Expected a variable name after " + utf16ToUtf8(t.source);
        return t;
    }
    // Dots may join the pieces of a variable name ($order.total), as in the script's assignments.
    while (isNamePart(unit()) || (unit() == u'.' && isNamePart(unit(1)))) advance();
    finish(t, begin);
    return t;
}

Token Lexer::lexSymbol() {
    Token t = start(TokenKind::Invalid);
    size_t begin = index_;
    char16_t c = unit();
    advance();
    auto followedBy = [&](char16_t next) {
        if (unit() != next) return false;
        advance();
        return true;
    };
    switch (c) {
        case u'(': t.kind = TokenKind::LeftParen; break;
        case u')': t.kind = TokenKind::RightParen; break;
        case u'[': t.kind = TokenKind::LeftBracket; break;
        case u']': t.kind = TokenKind::RightBracket; break;
        case u';': t.kind = TokenKind::Semicolon; break;
        case u'+': t.kind = TokenKind::Plus; break;
        case u'-': t.kind = TokenKind::Minus; break;
        case u'*': t.kind = TokenKind::Star; break;
        case u'/': t.kind = TokenKind::Slash; break;
        case u'^': t.kind = TokenKind::Caret; break;
        case u'&': t.kind = TokenKind::Ampersand; break;
        case u'=': t.kind = TokenKind::Equal; break;
        case kNotEqualSign: t.kind = TokenKind::NotEqual; break;
        case kLessEqualSign: t.kind = TokenKind::LessEqual; break;
        case kGreaterEqualSign: t.kind = TokenKind::GreaterEqual; break;
        case kPilcrow: t.kind = TokenKind::Pilcrow; break;
        case u'<':
            t.kind = followedBy(u'=') ? TokenKind::LessEqual
                     : followedBy(u'>') ? TokenKind::NotEqual
                                        : TokenKind::Less;
            break;
        case u'>': t.kind = followedBy(u'=') ? TokenKind::GreaterEqual : TokenKind::Greater; break;
        case u':':
            if (followedBy(u':')) t.kind = TokenKind::DoubleColon;
            break;
        default: break;
    }
    finish(t, begin);
    if (t.kind == TokenKind::Invalid) t.problem = "Unexpected character " + printable(t.source);
    return t;
}

}  // namespace vdhost::calc
