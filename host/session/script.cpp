#include "script.h"

#include "api/text_codec.h"
#include "calc/expression.h"
#include "calc/interruption.h"
#include "names.h"
#include "value_output.h"

#include <cctype>

namespace vdhost {

namespace {

bool isBlank(char16_t c) { return c == u' ' || c == u'\t' || c == u'\r'; }

std::u16string trim(std::u16string_view s) {
    size_t b = 0, e = s.size();
    while (b < e && isBlank(s[b])) ++b;
    while (e > b && isBlank(s[e - 1])) --e;
    return std::u16string(s.substr(b, e - b));
}

bool startsWithWord(std::u16string_view s, std::u16string_view word) {
    if (s.size() <= word.size() || s.substr(0, word.size()) != word) return false;
    return isBlank(s[word.size()]);
}

// The column (1-based, in code points) at which the calculation starts within the statement line.
int columnAfter(std::u16string_view line, size_t units) {
    std::string prefix = utf16ToUtf8(line.substr(0, units));
    int column = 1;
    for (unsigned char c : prefix)
        if ((c & 0xC0) != 0x80) ++column;
    return column;
}

}  // namespace

ScriptRunner::ScriptRunner(Session& session, std::ostream& out, bool raw, std::string name)
    : session_(session), out_(out), raw_(raw), name_(std::move(name)) {}

void ScriptRunner::show(const FMX_Data& value) {
    out_ << displayText(value, raw_) << '\n';
    out_.flush();
}

void ScriptRunner::run(std::istream& in, const std::string& name) {
    name_ = name;
    std::string line;
    std::u16string statement;
    int lineNumber = 0, statementLine = 0;
    while (std::getline(in, line)) {
        ++lineNumber;
        std::u16string text = utf8ToUtf16(line);
        if (statement.empty()) {
            std::u16string t = trim(text);
            if (t.empty() || t[0] == u'#') continue;
            statementLine = lineNumber;
            statement = text;
        } else {
            statement += u'\n';
            statement += text;
        }
        if (calc::needsContinuation(statement)) continue;
        runStatement(statement, statementLine);
        statement.clear();
        session_.plugins().idle(0);
    }
    if (!statement.empty()) runStatement(statement, statementLine);
}

void ScriptRunner::runStatement(const std::u16string& statement, int line) {
    auto fail = [&](ScriptError::Kind kind, const std::string& message) {
        return ScriptError(kind, name_ + ":" + std::to_string(line) + ": " + message);
    };
    size_t lead = 0;
    while (lead < statement.size() && isBlank(statement[lead])) ++lead;
    std::u16string_view body = std::u16string_view(statement).substr(lead);
    try {
        auto evaluateFrom = [&](size_t offset) {
            // Skip the blanks between the statement word and the calculation.
            while (offset < body.size() && isBlank(body[offset])) ++offset;
            int column = columnAfter(statement, lead + offset);
            return session_.evaluate(body.substr(offset), locals_, line, column);
        };

        size_t assign = body.find(u":=");
        if (assign != std::u16string_view::npos) {
            std::string target = utf16ToUtf8(trim(body.substr(0, assign)));
            if (isVariableName(target)) {
                FMX_Data value = evaluateFrom(assign + 2);
                calc::Variables& scope = target.rfind("$$", 0) == 0 ? session_.globals() : locals_;
                scope.set(utf8ToUtf16(target), std::move(value));
                return;
            }
            if (auto name = splitFieldName(target)) {
                size_t offset = assign + 2;
                while (offset < body.size() && isBlank(body[offset])) ++offset;
                session_.evaluateInto(name->first, name->second, body.substr(offset), locals_, line,
                                      columnAfter(statement, lead + offset));
                return;
            }
        }
        if (startsWithWord(body, u"print")) {
            show(evaluateFrom(5));
            return;
        }
        if (startsWithWord(body, u"write")) {
            size_t at = 5;
            while (at < body.size() && isBlank(body[at])) ++at;
            std::u16string path;
            if (at < body.size() && body[at] == u'"') {
                size_t close = body.find(u'"', at + 1);
                if (close == std::u16string_view::npos) throw fail(ScriptError::Kind::Syntax, "unterminated path of write");
                path = body.substr(at + 1, close - at - 1);
                at = close + 1;
            } else {
                size_t end = at;
                while (end < body.size() && !isBlank(body[end])) ++end;
                path = body.substr(at, end - at);
                at = end;
            }
            if (path.empty() || at >= body.size())
                throw fail(ScriptError::Kind::Syntax, "write needs a path and a calculation");
            FMX_Data value = evaluateFrom(at);
            writeFileAtomically(utf16ToUtf8(path), *outputBytes(value, raw_));
            return;
        }
        if (startsWithWord(body, u"define")) {
            std::string rest = utf16ToUtf8(trim(body.substr(6)));
            auto blank = rest.find_first_of(" \t");
            auto kind = blank == std::string::npos ? std::nullopt
                                                   : db::parseKind(utf16ToUtf8(trim(utf8ToUtf16(rest.substr(blank)))));
            auto name = splitFieldName(rest.substr(0, blank));
            if (!kind || !name)
                throw fail(ScriptError::Kind::Syntax, "define needs Table::Field and a kind (text, number or container)");
            session_.database().define(name->first, name->second, *kind);
            return;
        }
        show(evaluateFrom(0));
    } catch (const ScriptError&) {
        throw;
    } catch (const calc::Interrupted&) {
        throw;
    } catch (const std::exception& e) {
        throw scriptErrorFrom(e, name_);
    }
}

ScriptError scriptErrorFrom(const std::exception& e, const std::string& name) {
    if (const auto* c = dynamic_cast<const calc::CalcError*>(&e)) {
        // Calculation errors already carry "line L, column C".
        auto kind = c->kind == calc::CalcError::Kind::Handler ? ScriptError::Kind::Handler
                                                              : ScriptError::Kind::Calculation;
        return ScriptError(kind, name + ": " + c->what());
    }
    return ScriptError(ScriptError::Kind::File, name + ": " + e.what());
}

}  // namespace vdhost
