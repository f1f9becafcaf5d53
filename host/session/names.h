// The names scripts and the command line use: "Table::Field" and "$name" / "$$name".
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vdhost {

// Letters, digits and "_", not starting with a digit.
bool isPlainName(std::string_view text);

// "Table::Field" split in two; nullopt for any other text.
std::optional<std::pair<std::string, std::string>> splitFieldName(std::string_view text);

// "$name" or "$$name" (a name may also hold "."), as calculations write variables.
bool isVariableName(std::string_view text);

}  // namespace vdhost
