// The external functions that plug-ins have registered with the host.
#pragma once

#include <fmx/fmx.h>

#include <functional>

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vdhost {

struct ExternalFunction {
    uint32_t pluginId = 0;  // four-character code
    int16_t id = 0;
    std::u16string name;
    std::u16string prototype;
    int16_t minArgs = 0;
    int16_t maxArgs = 0;  // -1: no upper limit
    uint32_t flags = 0;
    FMX_ExtPluginType handler = nullptr;
    const void* owner = nullptr;  // the plug-in whose call registered it

    bool acceptsCount(size_t n) const {
        return n >= static_cast<size_t>(minArgs) && (maxArgs < 0 || n <= static_cast<size_t>(maxArgs));
    }
};

// One registry per process, as in a real host. Names are matched without regard to case. A name may
// be registered under several ids (a plug-in may offer one handler with two argument ranges); a call
// goes to the first registration whose range admits its argument count.
class FunctionRegistry {
public:
    static FunctionRegistry& instance();

    FMX_ErrCode add(ExternalFunction f);
    FMX_ErrCode remove(uint32_t pluginId, int16_t id);
    // Drops what a plug-in left registered, so that nothing points into an unloaded module.
    size_t removeOwnedBy(const void* owner);

    // Registrations made while a plug-in's entry point runs are marked with it as owner.
    class OwnerScope {
    public:
        explicit OwnerScope(const void* owner);
        ~OwnerScope();
        OwnerScope(const OwnerScope&) = delete;
        OwnerScope& operator=(const OwnerScope&) = delete;

    private:
        const void* previous_;
    };

    // The first registration of the name, or the first that admits argCount when it is given.
    const ExternalFunction* find(std::u16string_view name, long argCount = -1) const;
    // Sees every registration and unregistration request with its answer, in order (tests use it to
    // check what a plug-in asks of the host).
    enum class Request { Register, Unregister };
    using Observer = std::function<void(Request, uint32_t pluginId, int16_t id, FMX_ErrCode answer)>;
    void setObserver(Observer observer) { observer_ = std::move(observer); }

    // In registration order.
    std::vector<const ExternalFunction*> all() const;
    size_t size() const { return byKey_.size(); }

private:
    FMX_ErrCode insert(ExternalFunction f);
    FMX_ErrCode erase(uint32_t pluginId, int16_t id);
    static std::u16string foldCase(std::u16string_view name);

    std::map<std::pair<uint32_t, int16_t>, ExternalFunction> byKey_;
    std::multimap<std::u16string, std::pair<uint32_t, int16_t>> byName_;
    std::vector<std::pair<uint32_t, int16_t>> order_;
    const void* currentOwner_ = nullptr;
    Observer observer_;
};

}  // namespace vdhost
