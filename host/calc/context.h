// What a calculation may reach beyond its own text: fields, the file path, the session's $$
// variables and the expression environment handed to plug-in functions. The host session
// implements it; tests implement it with fixed data.
#pragma once

#include "api/objects.h"
#include "variables.h"

#include <optional>
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
};

}  // namespace vdhost::calc
