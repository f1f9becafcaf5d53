// For the container-layer tests: a host session without plug-ins so that the plug-in's calls reach
// a database location (container values are the plug-in tests' ContainerOf).
#pragma once

#include "plugin/plugin_test_support.h"
#include "support/temp_folder.h"

#include <api/fnam.h>
#include <api/values.h>
#include <session/session.h>

#include <memory>

namespace vdtest {

// A session whose database file lives in a fresh folder (optionally presented as remote).
class HostWithDatabase {
public:
    explicit HostWithDatabase(bool remote = false) {
        vdhost::SessionOptions options;
        options.database = folder / "Base.vddb";
        options.loadPlugins = false;
        if (remote) options.remoteHost = "server.example";
        session = std::make_unique<vdhost::Session>(options);
    }
    std::filesystem::path Folder() const { return std::filesystem::canonical(folder.path()); }

    TempFolder folder;
    std::unique_ptr<vdhost::Session> session;
};

}  // namespace vdtest
