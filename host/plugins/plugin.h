// One loaded plug-in bundle (NAME.fmxplugin/ with NAME.fmx inside) and the calls the host makes to its
// entry point.
#pragma once

#include <fmx/callblock.h>

#include <filesystem>
#include <memory>
#include <string>

namespace vdhost {

// What the host tells a plug-in about itself at start-up.
struct HostIdentity {
    int16_t interfaceVersion = 52;
    std::u16string versionText = u"ProAdvanced 11.0v3";
};

class PluginLoadError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class Plugin {
public:
    // Loads the module; throws PluginLoadError when it is not a loadable plug-in.
    explicit Plugin(const std::filesystem::path& bundle);
    ~Plugin();  // shuts the plug-in down if it was started, then unloads it
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;

    // The start request; answers the plug-in's result (its interface version, or -1 / -2 to refuse).
    intptr_t start(const HostIdentity& identity);
    bool started() const { return started_; }
    void idle(uint8_t kind);
    void shutDown();
    void configure();
    // A string request (128 name, 129 description, 131 options) into a buffer of the given capacity.
    std::u16string requestString(uint8_t number, uint32_t capacity = 256);

    const std::filesystem::path& bundle() const { return bundle_; }
    std::string bundleName() const;  // "Fixture" for Fixture.fmxplugin
    const std::u16string& name() const { return name_; }
    const std::u16string& description() const { return description_; }
    const std::u16string& options() const { return options_; }

    // Raw access for tests of the call block.
    void call(ExternCallBlock& block);
    ExternCallBlock newBlock(uint8_t selector) const;

private:
    std::filesystem::path bundle_;
    std::string bundlePathUtf8_;
    struct ModuleCloser {
        void operator()(void* handle) const;
    };
    std::unique_ptr<void, ModuleCloser> module_;
    FMX_ExternCallProc entry_ = nullptr;
    bool started_ = false;
    std::u16string name_, description_, options_;
};

}  // namespace vdhost
