#include "continuation.h"

#include "lexer.h"

namespace vdhost::calc {

bool needsContinuation(std::u16string_view text) {
    Lexer lexer(text, SourcePosition{});
    long parens = 0, brackets = 0;
    for (;;) {
        Token t = lexer.next();
        switch (t.kind) {
            case TokenKind::End: return parens > 0 || brackets > 0;
            case TokenKind::UnterminatedText:
            case TokenKind::UnterminatedComment: return true;
            case TokenKind::LeftParen: ++parens; break;
            case TokenKind::RightParen: --parens; break;
            case TokenKind::LeftBracket: ++brackets; break;
            case TokenKind::RightBracket: --brackets; break;
            default: break;
        }
    }
}

}  // namespace vdhost::calc
