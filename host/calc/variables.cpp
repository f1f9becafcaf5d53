#include "variables.h"

namespace vdhost::calc {

const FMX_Data* Variables::find(std::u16string_view name) const {
    auto it = values_.find(name);
    return it == values_.end() ? nullptr : &it->second;
}

FMX_Data Variables::get(std::u16string_view name) const {
    const FMX_Data* value = find(name);
    return value ? *value : FMX_Data{};
}

void Variables::set(std::u16string_view name, FMX_Data value) {
    auto it = values_.find(name);
    if (it != values_.end())
        it->second = std::move(value);
    else
        values_.emplace(std::u16string(name), std::move(value));
}

bool Variables::remove(std::u16string_view name) {
    auto it = values_.find(name);
    if (it == values_.end()) return false;
    values_.erase(it);
    return true;
}

}  // namespace vdhost::calc
