// Named values that outlive a single Let: the $ variables of one evaluation scope (one eval, one
// script run) and the $$ variables of a session. Names are kept as a calculation writes them, with
// their "$" or "$$", and are matched without regard to case.
#pragma once

#include "api/objects.h"
#include "case_folding.h"

#include <map>
#include <string>
#include <string_view>

namespace vdhost::calc {

class Variables {
public:
    using Map = std::map<std::u16string, FMX_Data, LessIgnoringCase>;

    // nullptr when the variable was never set.
    const FMX_Data* find(std::u16string_view name) const;
    // An unset variable is empty text.
    FMX_Data get(std::u16string_view name) const;
    // Keeps the spelling under which the variable was first set.
    void set(std::u16string_view name, FMX_Data value);
    bool remove(std::u16string_view name);
    void clear() { values_.clear(); }

    size_t size() const { return values_.size(); }
    bool empty() const { return values_.empty(); }
    // In name order.
    Map::const_iterator begin() const { return values_.begin(); }
    Map::const_iterator end() const { return values_.end(); }

private:
    Map values_;
};

}  // namespace vdhost::calc
