// The plug-ins of one host session: found in folders, started, idled and shut down together.
#pragma once

#include "plugin.h"

#include <vector>

namespace vdhost {

class PluginSet {
public:
    PluginSet() = default;
    ~PluginSet();  // shuts down and unloads in reverse order of loading
    PluginSet(const PluginSet&) = delete;
    PluginSet& operator=(const PluginSet&) = delete;

    // Loads and starts every bundle in the folder, in name order. A bundle that cannot be loaded, or
    // whose start-up refuses (a negative answer), is not used; a message for it is added to problems.
    void loadFolder(const std::filesystem::path& folder, const HostIdentity& identity,
                    std::vector<std::string>& problems);

    void idle(uint8_t kind = 0);
    void unloadAll();

    const std::vector<std::unique_ptr<Plugin>>& plugins() const { return plugins_; }

    // The folders searched when none is named: the build's own bundle folder beside the program,
    // then the install location.
    static std::vector<std::filesystem::path> defaultFolders();

private:
    std::vector<std::unique_ptr<Plugin>> plugins_;
};

}  // namespace vdhost
