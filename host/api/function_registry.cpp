#include "function_registry.h"

#include <algorithm>

namespace vdhost {

FunctionRegistry& FunctionRegistry::instance() {
    static FunctionRegistry registry;
    return registry;
}

std::u16string FunctionRegistry::foldCase(std::u16string_view name) {
    std::u16string folded(name);
    for (auto& c : folded)
        if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c - u'A' + u'a');
    return folded;
}

FMX_ErrCode FunctionRegistry::add(ExternalFunction f) {
    uint32_t pluginId = f.pluginId;
    int16_t id = f.id;
    FMX_ErrCode answer = insert(std::move(f));
    if (observer_) observer_(Request::Register, pluginId, id, answer);
    return answer;
}

FMX_ErrCode FunctionRegistry::insert(ExternalFunction f) {
    if (!f.handler || f.name.empty() || f.minArgs < 0 || (f.maxArgs >= 0 && f.maxArgs < f.minArgs))
        return FMX_ERR_PARAMETER;
    auto key = std::make_pair(f.pluginId, f.id);
    auto folded = foldCase(f.name);
    if (byKey_.count(key)) return FMX_ERR_ALREADY_EXISTS;
    f.owner = currentOwner_;
    byName_.emplace(std::move(folded), key);
    order_.push_back(key);
    byKey_.emplace(key, std::move(f));
    return FMX_NO_ERROR;
}

FMX_ErrCode FunctionRegistry::remove(uint32_t pluginId, int16_t id) {
    FMX_ErrCode answer = erase(pluginId, id);
    if (observer_) observer_(Request::Unregister, pluginId, id, answer);
    return answer;
}

FMX_ErrCode FunctionRegistry::erase(uint32_t pluginId, int16_t id) {
    auto key = std::make_pair(pluginId, id);
    auto it = byKey_.find(key);
    if (it == byKey_.end()) return FMX_ERR_PARAMETER;
    auto range = byName_.equal_range(foldCase(it->second.name));
    for (auto n = range.first; n != range.second; ++n)
        if (n->second == key) {
            byName_.erase(n);
            break;
        }
    order_.erase(std::find(order_.begin(), order_.end(), key));
    byKey_.erase(it);
    return FMX_NO_ERROR;
}

const ExternalFunction* FunctionRegistry::find(std::u16string_view name, long argCount) const {
    auto range = byName_.equal_range(foldCase(name));
    if (range.first == range.second) return nullptr;
    // Registration order decides among registrations of the same name.
    const ExternalFunction* first = nullptr;
    for (const auto& key : order_) {
        bool sameName = false;
        for (auto n = range.first; n != range.second; ++n) sameName |= n->second == key;
        if (!sameName) continue;
        const auto* f = &byKey_.at(key);
        if (!first) first = f;
        if (argCount >= 0 && f->acceptsCount(static_cast<size_t>(argCount))) return f;
    }
    return first;
}

std::vector<const ExternalFunction*> FunctionRegistry::all() const {
    std::vector<const ExternalFunction*> out;
    out.reserve(order_.size());
    for (const auto& key : order_) out.push_back(&byKey_.at(key));
    return out;
}


size_t FunctionRegistry::removeOwnedBy(const void* owner) {
    std::vector<std::pair<uint32_t, int16_t>> keys;
    for (const auto& [key, f] : byKey_)
        if (f.owner == owner) keys.push_back(key);
    for (const auto& key : keys) erase(key.first, key.second);
    return keys.size();
}

FunctionRegistry::OwnerScope::OwnerScope(const void* owner) : previous_(instance().currentOwner_) {
    instance().currentOwner_ = owner;
}

FunctionRegistry::OwnerScope::~OwnerScope() { instance().currentOwner_ = previous_; }

}  // namespace vdhost
