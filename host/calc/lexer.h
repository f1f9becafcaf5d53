// Cuts a calculation's text into tokens, keeping line and column of each. Whitespace and comments
// (// to the end of the line, /* ... */) are skipped.
#pragma once

#include "token.h"

#include <string_view>

namespace vdhost::calc {

class Lexer {
public:
    // The text must outlive the lexer and its tokens (tokens keep views into it).
    Lexer(std::u16string_view source, SourcePosition start);

    // After the end, keeps answering End.
    Token next();

private:
    char16_t unit(size_t ahead = 0) const {
        return index_ + ahead < source_.size() ? source_[index_ + ahead] : u'\0';
    }
    bool atEnd() const { return index_ >= source_.size(); }
    void advance();  // one character; keeps line and column
    // Skips whitespace and comments; false with an UnterminatedComment token in `open` otherwise.
    bool skipBlanks(Token& open);

    Token start(TokenKind kind) const;
    void finish(Token& token, size_t begin) const;
    Token lexNumber();
    Token lexText();
    Token lexName();
    Token lexVariable();
    Token lexSymbol();

    std::u16string_view source_;
    size_t index_ = 0;
    SourcePosition position_;
};

}  // namespace vdhost::calc
