// The pages: the database's tables, a table's records as a table of fields, one record. With the
// calculation box on, each page ends with it and, after a calculation, shows its outcome.
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
    std::optional<std::string> record(const std::string& table, const CalculationOutcome* outcome,
                                      const std::string& pagePath);

private:
    std::string calculationSection(const CalculationOutcome* outcome, const std::string& pagePath);
    std::optional<std::vector<db::FieldInfo>> fieldsOf(const std::string& table);

    Session& session_;
    PluginMedia& media_;
    CalculationBox* box_;
};

}  // namespace vdhost::serve
