#include "plugin_set.h"

#include "memory_blocks.h"

#include <algorithm>
#include <unistd.h>

#ifndef VD_INSTALL_PLUGIN_DIR
#define VD_INSTALL_PLUGIN_DIR "/usr/local/lib/vdhost/plugins"
#endif

namespace vdhost {

namespace fs = std::filesystem;

PluginSet::~PluginSet() { unloadAll(); }

void PluginSet::loadFolder(const fs::path& folder, const HostIdentity& identity,
                           std::vector<std::string>& problems) {
    std::error_code ec;
    if (!fs::is_directory(folder, ec)) {
        problems.push_back("plug-in folder " + folder.string() + " does not exist");
        return;
    }
    std::vector<fs::path> bundles;
    for (const auto& entry : fs::directory_iterator(folder, ec))
        if (entry.path().extension() == ".fmxplugin" && entry.is_directory(ec)) bundles.push_back(entry.path());
    std::sort(bundles.begin(), bundles.end());
    for (const auto& bundle : bundles) {
        try {
            auto plugin = std::make_unique<Plugin>(bundle);
            intptr_t answer = plugin->start(identity);
            if (answer < 0) {
                // Whatever it registered before refusing is dropped with it.
                problems.push_back("plug-in " + plugin->bundleName() + " refused to start (" +
                                   std::to_string(answer) + ") and is not used");
                plugin->shutDown();
                continue;
            }
            plugins_.push_back(std::move(plugin));
        } catch (const PluginLoadError& e) {
            problems.push_back(std::string("plug-in not loaded: ") + e.what());
        }
    }
}

void PluginSet::idle(uint8_t kind) {
    for (auto& p : plugins_) p->idle(kind);
}

void PluginSet::unloadAll() {
    while (!plugins_.empty()) plugins_.pop_back();
    disposeAllMemoryBlocks();
}

std::vector<fs::path> PluginSet::defaultFolders() {
    std::vector<fs::path> folders;
    std::error_code ec;
    fs::path exe = fs::read_symlink("/proc/self/exe", ec);
    if (!ec) {
        fs::path built = exe.parent_path().parent_path() / "plugins";
        if (fs::is_directory(built, ec)) folders.push_back(built);
    }
    if (folders.empty()) folders.emplace_back(VD_INSTALL_PLUGIN_DIR);
    return folders;
}

}  // namespace vdhost
