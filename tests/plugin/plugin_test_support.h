// What the plug-in's tests share: the built bundle, a log of the host's registry requests, scoped
// environment variables and a way to run the vdhost program.
#pragma once

#include <api/function_registry.h>
#include <plugins/plugin.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vdtest {

inline std::filesystem::path VandrelBundle() { return std::filesystem::path(VD_PLUGIN_DIR) / "Vandrel.fmxplugin"; }

inline constexpr uint32_t kVandrelId = 'V' << 24 | 'D' << 16 | '7' << 8 | '0';

// Every register and unregister request the host sees while it lives, in order.
class RegistryLog {
public:
    struct Request {
        vdhost::FunctionRegistry::Request kind;
        uint32_t pluginId;
        int16_t id;
        FMX_ErrCode answer;
    };

    RegistryLog() {
        vdhost::FunctionRegistry::instance().setObserver(
            [this](vdhost::FunctionRegistry::Request kind, uint32_t plugin, int16_t id, FMX_ErrCode answer) {
                requests.push_back({kind, plugin, id, answer});
            });
    }
    ~RegistryLog() { vdhost::FunctionRegistry::instance().setObserver(nullptr); }
    RegistryLog(const RegistryLog&) = delete;
    RegistryLog& operator=(const RegistryLog&) = delete;

    std::vector<int16_t> Ids(vdhost::FunctionRegistry::Request kind) const {
        std::vector<int16_t> ids;
        for (const auto& r : requests)
            if (r.kind == kind) ids.push_back(r.id);
        return ids;
    }
    void Clear() { requests.clear(); }

    std::vector<Request> requests;
};

// Sets (or with nullopt removes) an environment variable for one scope.
class ScopedEnv {
public:
    ScopedEnv(const char* name, std::optional<std::string> value) : name_(name) {
        if (const char* old = std::getenv(name)) old_ = old;
        if (value) setenv(name, value->c_str(), 1);
        else unsetenv(name);
    }
    ~ScopedEnv() {
        if (old_) setenv(name_.c_str(), old_->c_str(), 1);
        else unsetenv(name_.c_str());
    }
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

private:
    std::string name_;
    std::optional<std::string> old_;
};

// Descending run from `from` to 1.
inline std::vector<int16_t> Countdown(int16_t from) {
    std::vector<int16_t> ids;
    for (int16_t id = from; id >= 1; --id) ids.push_back(id);
    return ids;
}

}  // namespace vdtest
