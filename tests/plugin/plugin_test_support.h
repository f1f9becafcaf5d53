// What the plug-in's tests share: the built bundle, calculations in a session of it, the streams of
// a result, a log of the host's registry requests, scoped environment variables and the lines of a
// report text.
#pragma once

#include <api/function_registry.h>
#include <api/values.h>
#include <calc/variables.h>
#include <plugins/plugin.h>
#include <session/session.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace vdtest {

inline std::filesystem::path VandrelBundle() { return std::filesystem::path(VD_PLUGIN_DIR) / "Vandrel.fmxplugin"; }

inline constexpr uint32_t kVandrelId = 'V' << 24 | 'D' << 16 | '7' << 8 | '0';

// A host session of the real bundle over the given database file.
inline vdhost::SessionOptions BundleSession(const std::filesystem::path& database) {
    vdhost::SessionOptions options;
    options.database = database;
    options.pluginFolders = {VD_PLUGIN_DIR};
    return options;
}

// The calculation with $a, $b, $c set to the values, in order.
inline FMX_Data EvaluateWith(vdhost::Session& session, const std::u16string& calculation,
                             const std::vector<FMX_Data>& values) {
    vdhost::calc::Variables locals;
    const char16_t* names[] = {u"$a", u"$b", u"$c"};
    for (size_t i = 0; i < values.size(); ++i) locals.set(names[i], values[i]);
    return session.evaluate(calculation, locals);
}

// The bytes of a container's stream of that type; empty when it has none.
inline std::string StreamOf(const FMX_Data& value, const char* type) {
    if (!vdhost::isContainer(value)) return {};
    const int32_t index = value.binary.indexOf(vdhost::fourCharCode(type));
    if (index < 0) return {};
    const auto& bytes = *value.binary.streams[size_t(index)].bytes;
    return std::string(bytes.begin(), bytes.end());
}

inline FMX_Data ContainerOf(std::initializer_list<std::pair<const char*, std::string>> streams) {
    FMX_BinaryData binary;
    for (const auto& [type, bytes] : streams)
        binary.streams.push_back({vdhost::fourCharCode(type), std::make_shared<const vdhost::StreamBytes>(vdhost::Bytes(bytes.begin(), bytes.end()))});
    return vdhost::makeContainer(std::move(binary));
}

// Waits up to `limit` for the condition; answers whether it came.
template <typename Condition>
bool Within(std::chrono::milliseconds limit, Condition condition) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

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

// Sets (or with nullopt removes) an environment variable for one scope and puts back what was
// there, so that a test which moves HOME, TZ or VANDREL_DRIVES cannot leak into the next one.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const std::optional<std::string>& value) : name_(name) {
        if (const char* old = std::getenv(name)) old_ = old;
        Apply(value);
    }
    ~ScopedEnv() { Apply(old_); }
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

private:
    void Apply(const std::optional<std::string>& value) {
        if (value) setenv(name_.c_str(), value->c_str(), 1);
        else unsetenv(name_.c_str());
        if (name_ == "TZ") tzset();
    }

    std::string name_;
    std::optional<std::string> old_;
};

// The lines of a text whose lines end in CR; a last line without one counts too.
inline std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    size_t start = 0;
    for (size_t end; (end = text.find('\r', start)) != std::string::npos; start = end + 1)
        lines.push_back(text.substr(start, end - start));
    if (start < text.size()) lines.push_back(text.substr(start));
    return lines;
}

// Descending run from `from` to 1.
inline std::vector<int16_t> Countdown(int16_t from) {
    std::vector<int16_t> ids;
    for (int16_t id = from; id >= 1; --id) ids.push_back(id);
    return ids;
}

}  // namespace vdtest
