#include "calculation.h"

#include "api/text_codec.h"
#include "calc/interruption.h"
#include "db/names.h"
#include "session/names.h"

#include <cctype>

namespace vdhost::serve {

namespace {

std::string_view trimmed(std::string_view s) {
    while (!s.empty() && std::isspace(static_cast<unsigned char>(s.front()))) s.remove_prefix(1);
    while (!s.empty() && std::isspace(static_cast<unsigned char>(s.back()))) s.remove_suffix(1);
    return s;
}

}  // namespace

const CalculationOutcome& CalculationBox::run(const std::string& statement, const std::optional<RecordAt>& on) {
    CalculationOutcome outcome;
    outcome.id = nextId_++;
    outcome.calculation = statement;
    // Text areas send CR LF; calculations read the line breaks the prompt would give them.
    std::string text;
    for (char c : statement)
        if (c != '\r') text += c;
    try {
        std::optional<db::Database::RecordFocus> focus;
        if (on) focus.emplace(session_.database(), on->table, on->record);
        size_t assign = text.find(":=");
        std::string target = assign == std::string::npos ? "" : std::string(trimmed(std::string_view(text).substr(0, assign)));
        std::u16string body = utf8ToUtf16(assign == std::string::npos ? text : text.substr(assign + 2));
        if (auto field = assign == std::string::npos ? std::nullopt : splitFieldName(target)) {
            session_.evaluateInto(field->first, field->second, body, locals_);
            outcome.value = session_.field(field->first, field->second);
            outcome.storedInto = db::qualifiedName(field->first, field->second);
        } else if (assign != std::string::npos && isVariableName(target)) {
            FMX_Data value = session_.evaluate(body, locals_);
            calc::Variables& scope = target.rfind("$$", 0) == 0 ? session_.globals() : locals_;
            scope.set(utf8ToUtf16(target), value);
            outcome.value = std::move(value);
        } else {
            outcome.value = session_.evaluate(utf8ToUtf16(text), locals_);
        }
    } catch (const calc::Interrupted&) {
        throw;
    } catch (const std::exception& e) {
        outcome.error = e.what();
        outcome.value.reset();
    }
    outcomes_.push_back(std::move(outcome));
    if (outcomes_.size() > kKept) outcomes_.pop_front();
    return outcomes_.back();
}

const CalculationOutcome* CalculationBox::find(int id) const {
    for (const auto& o : outcomes_)
        if (o.id == id) return &o;
    return nullptr;
}

}  // namespace vdhost::serve
