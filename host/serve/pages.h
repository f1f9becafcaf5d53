// The pages: the database's tables, a table's records as a table of fields (a row per record), one
// record. With the calculation box on, each page ends with it and, after a calculation, shows its
// outcome; on a record's page the box acts on that record.
#pragma once

#include "calculation.h"
#include "plugin_media.h"

#include <optional>
#include <string>

namespace vdhost::serve {

class Pages {
public:
    // box: nullptr when calculations are not allowed.
    Pages(Session& session, PluginMedia& media, CalculationBox* box) : session_(session), media_(media), box_(box) {}

    // pagePath: the page's own address, where the calculation box sends the browser back to.
    std::string tables(const CalculationOutcome* outcome, const std::string& pagePath);
    // nullopt when the database has no such table.
    std::optional<std::string> table(const std::string& name, const CalculationOutcome* outcome,
                                     const std::string& pagePath);
    // record: nullopt for the table's current record. nullopt when there is no such table, or no
    // such record.
    std::optional<std::string> record(const std::string& table, std::optional<int64_t> record,
                                      const CalculationOutcome* outcome, const std::string& pagePath);

private:
    // on: the record the box acts on, when the page is a record's.
    std::string calculationSection(const CalculationOutcome* outcome, const std::string& pagePath,
                                   const std::optional<RecordAt>& on = std::nullopt);
    std::optional<std::vector<db::FieldInfo>> fieldsOf(const std::string& table);

    Session& session_;
    PluginMedia& media_;
    CalculationBox* box_;
};

}  // namespace vdhost::serve
