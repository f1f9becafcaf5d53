// The pieces the lexer cuts a calculation into.
#pragma once

#include "source_position.h"

#include <string>
#include <string_view>

namespace vdhost::calc {

enum class TokenKind {
    End,
    Number,
    Text,            // a quoted literal; Token::text holds its decoded contents
    Pilcrow,         // a bare ¶: the carriage-return constant
    Identifier,      // function, Let or table/field name
    LocalVariable,   // $name
    GlobalVariable,  // $$name
    LeftParen,
    RightParen,
    LeftBracket,
    RightBracket,
    Semicolon,
    DoubleColon,
    Plus,
    Minus,
    Star,
    Slash,
    Caret,
    Ampersand,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    And,
    Or,
    Xor,
    Not,
    // The lexer never throws: what it cannot read becomes one of these, and the parser reports it
    // when it reaches it. This lets needsContinuation() look at any text.
    Invalid,              // Token::problem says what is wrong
    UnterminatedText,     // a literal still open at the end of the text
    UnterminatedComment,  // a /* comment still open at the end of the text
};

struct Token {
    TokenKind kind = TokenKind::End;
    SourcePosition position;
    std::u16string_view source;  // the characters as written
    std::u16string text;         // Text: the decoded literal
    double number = 0;           // Number: its value
    std::string problem;         // Invalid: what is wrong, in plain English

    bool is(TokenKind k) const { return kind == k; }
    bool isError() const {
        return kind == TokenKind::Invalid || kind == TokenKind::UnterminatedText ||
               kind == TokenKind::UnterminatedComment;
    }
};

}  // namespace vdhost::calc
