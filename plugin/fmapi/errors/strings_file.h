// The localization table's file format: lines of "key" = "value"; with /* */ and // comments and
// the escapes \" \\ \n \t \r in quoted texts. UTF-8, an optional byte-order mark first.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace vd {

struct StringsTable {
    std::unordered_map<std::string, std::string> entries;
    // False when the text broke off or was malformed somewhere; the entries before that point are
    // kept, so one bad line written by a translator does not silence the whole table.
    bool complete = true;
};

StringsTable ParseStringsFile(std::string_view text);

}  // namespace vd
