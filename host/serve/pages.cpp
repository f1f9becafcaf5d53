#include "pages.h"

#include "db/field_value.h"
#include "db/names.h"
#include "html.h"
#include "value_view.h"

#include <algorithm>

namespace vdhost::serve {

namespace {

std::string navigation(const std::string& table = {}) {
    std::string out = "<a href=\"/\">Tables</a>";
    if (!table.empty()) out += "<a href=\"" + link("/table", {{"t", table}}) + "\">" + escapeHtml(table) + "</a>";
    return out;
}

FMX_Data valueOr(std::optional<FMX_Data> value, db::FieldKind kind) {
    return value ? std::move(*value) : db::emptyValueOf(kind);
}

}  // namespace

std::optional<std::vector<db::FieldInfo>> Pages::fieldsOf(const std::string& table) {
    std::vector<db::FieldInfo> fields;
    for (auto& f : session_.database().fields())
        if (db::sameName(f.table, table)) fields.push_back(std::move(f));
    if (fields.empty()) return std::nullopt;
    return fields;
}

std::string Pages::calculationSection(const CalculationOutcome* outcome, const std::string& pagePath,
                                     const std::optional<RecordAt>& on) {
    if (!box_) return {};
    std::string out = "<section><h2>Calculation</h2>";
    if (outcome) {
        out += "<div class=\"result\" id=\"result\">";
        if (!outcome->error.empty()) {
            out += "<p class=\"error\">" + escapeHtml(outcome->error) + "</p>";
        } else {
            if (!outcome->storedInto.empty()) out += "<p class=\"note\">Stored into " + escapeHtml(outcome->storedInto) + ":</p>";
            if (outcome->value)
                out += renderValue(*outcome->value, {{"r", std::to_string(outcome->id)}}, media_, ViewSize::Page);
        }
        out += "</div>";
    }
    out += "<form method=\"post\" action=\"/calc\"><input type=\"hidden\" name=\"page\" value=\"" + escapeHtml(pagePath) +
           "\">" +
           (on ? "<input type=\"hidden\" name=\"t\" value=\"" + escapeHtml(on->table) +
                     "\"><input type=\"hidden\" name=\"rec\" value=\"" + std::to_string(on->record) + "\">"
               : "") +
           "<textarea name=\"calculation\" id=\"calculation\" rows=\"3\" placeholder=\"Vandrel_Version ( &quot;long&quot; )"
           " or Table::Field := ...\">" +
           (outcome ? escapeHtml(outcome->calculation) : "") +
           "</textarea><button type=\"submit\">Evaluate</button></form></section>";
    return out;
}

std::string Pages::tables(const CalculationOutcome* outcome, const std::string& pagePath) {
    std::vector<std::pair<std::string, size_t>> tables;  // name, field count, in the order they were made
    for (const auto& f : session_.database().fields()) {
        auto it = std::find_if(tables.begin(), tables.end(), [&](const auto& t) { return db::sameName(t.first, f.table); });
        if (it == tables.end()) tables.emplace_back(f.table, 1);
        else ++it->second;
    }
    std::string body = "<p class=\"note\">" + escapeHtml(session_.database().path().string()) + "</p>";
    if (tables.empty()) {
        body += "<p class=\"empty\">The database has no tables yet.</p>";
    } else {
        body += "<div class=\"scroll\"><table><tr><th>Table</th><th>Fields</th><th>Records</th></tr>";
        for (const auto& [name, count] : tables)
            body += "<tr><td><a href=\"" + link("/table", {{"t", name}}) + "\">" + escapeHtml(name) + "</a></td><td>" +
                    std::to_string(count) + "</td><td>" + std::to_string(session_.database().records(name).size()) +
                    "</td></tr>";
        body += "</table></div>";
    }
    return page("Tables", navigation(), body + calculationSection(outcome, pagePath));
}

std::optional<std::string> Pages::table(const std::string& name, const CalculationOutcome* outcome,
                                        const std::string& pagePath) {
    auto fields = fieldsOf(name);
    if (!fields) return std::nullopt;
    db::Database& database = session_.database();
    const std::string& shownName = fields->front().table;
    const std::vector<int64_t> records = database.records(shownName);
    const int64_t current = database.currentRecord(shownName);
    std::string body;
    if (records.empty()) body += "<p class=\"empty\">The table has no records yet.</p>";
    body += "<div class=\"scroll\"><table class=\"cells\"><tr><th>Record</th>";
    for (const auto& f : *fields) body += "<th>" + escapeHtml(f.field) + "</th>";
    body += "</tr>";
    for (int64_t id : records) {
        const std::string idText = std::to_string(id);
        body += "<tr><td><a href=\"" + link("/record", {{"t", shownName}, {"rec", idText}}) + "\">" + idText + "</a>" +
                (id == current ? " <span class=\"note\">current</span>" : "") + "</td>";
        for (const auto& f : *fields) {
            FMX_Data value = valueOr(database.read(f.table, f.field, id), f.kind);
            body += "<td>" + renderValue(value, {{"t", f.table}, {"f", f.field}, {"rec", idText}}, media_, ViewSize::Cell) +
                    "</td>";
        }
        body += "</tr>";
    }
    body += "</table></div>";
    return page(shownName, navigation(), body + calculationSection(outcome, pagePath));
}

std::optional<std::string> Pages::record(const std::string& table, std::optional<int64_t> record,
                                         const CalculationOutcome* outcome, const std::string& pagePath) {
    auto fields = fieldsOf(table);
    if (!fields) return std::nullopt;
    db::Database& database = session_.database();
    const std::string& shownName = fields->front().table;
    if (record) {
        const auto records = database.records(shownName);
        if (std::find(records.begin(), records.end(), *record) == records.end()) return std::nullopt;
    }
    const int64_t id = record.value_or(database.currentRecord(shownName));
    const std::string idText = std::to_string(id);
    std::string body = "<div class=\"scroll\"><table>";
    for (const auto& f : *fields) {
        FMX_Data value = valueOr(database.read(f.table, f.field, id), f.kind);
        body += "<tr><th>" + escapeHtml(f.field) + "<br><span class=\"note\">" + db::kindName(f.kind) + "</span></th><td>" +
                renderValue(value, {{"t", f.table}, {"f", f.field}, {"rec", idText}}, media_, ViewSize::Page) + "</td></tr>";
    }
    body += "</table></div>";
    // Only a page addressed by its record keeps to it; the current record's page follows the current.
    std::optional<RecordAt> on;
    if (record) on = RecordAt{shownName, id};
    return page(shownName + " - record " + idText, navigation(shownName), body + calculationSection(outcome, pagePath, on));
}

}  // namespace vdhost::serve
