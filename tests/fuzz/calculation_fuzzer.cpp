// One libFuzzer target for the host's calculation reader: the lexer alone over the whole text, then
// the parser. Bad text must end in a CalcError with a position inside the text, never in a crash,
// a hang or another exception. The input is UTF-8; invalid sequences become replacement characters.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "api/text_codec.h"
#include "calc/calc_error.h"
#include "calc/lexer.h"
#include "calc/parser.h"

namespace {

void Lex(std::u16string_view text) {
    vdhost::calc::Lexer lexer(text, {});
    // Every token takes at least one character, so the end comes within size + 1 tokens.
    for (size_t n = 0; n <= text.size() + 1; ++n)
        if (lexer.next().kind == vdhost::calc::TokenKind::End) return;
    __builtin_trap();
}

void Parse(std::u16string_view text) {
    try {
        vdhost::calc::parseCalculation(text, {});
    } catch (const vdhost::calc::CalcError& e) {
        if (e.line < 1 || e.column < 1) __builtin_trap();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::u16string text = vdhost::utf8ToUtf16(std::string_view(reinterpret_cast<const char*>(data), size));
    Lex(text);
    Parse(text);
    return 0;
}
