// What a calculation may reach beyond its own text: fields, the file path, the session's $$
// variables and the expression environment handed to plug-in functions. The host session
// implements it; tests implement it with fixed data.
#pragma once

#include "api/objects.h"
#include "variables.h"

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vdhost::calc {

class Context {
public:
    virtual ~Context() = default;

    // Table and field names in UTF-8; nullopt when there is no such field.
    virtual std::optional<FMX_Data> field(std::string_view table, std::string_view field) = 0;
    // Get ( FilePath )
    virtual std::u16string filePath() = 0;
    // The $$ variables.
    virtual Variables& globals() = 0;
    // Handed to external functions' handlers.
    virtual const FMX_ExprEnv* exprEnv() = 0;

    // The records of a table (NewRecord, GoToRecord, CurrentRecord). A context without a database
    // has none; failures are thrown as std::exception with a message for the user.
    virtual int64_t newRecord(std::string_view table) { throw noRecords(table); }
    virtual void goToRecord(std::string_view table, int64_t) { throw noRecords(table); }
    virtual int64_t currentRecord(std::string_view table) { throw noRecords(table); }

private:
    static std::runtime_error noRecords(std::string_view table) {
        return std::runtime_error("There is no database to hold records of " + std::string(table));
    }
};

}  // namespace vdhost::calc
