// Container values for the container-layer tests, and a host session without plug-ins so that the
// plug-in's calls reach a database location.
#pragma once

#include "support/temp_folder.h"

#include <api/fnam.h>
#include <api/values.h>
#include <session/session.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>

namespace vdtest {

inline FMX_Data ContainerOf(std::initializer_list<std::pair<const char*, std::string>> streams) {
    FMX_BinaryData binary;
    for (const auto& [type, bytes] : streams)
        binary.streams.push_back({vdhost::fourCharCode(type), std::make_shared<const vdhost::StreamBytes>(vdhost::Bytes(bytes.begin(), bytes.end()))});
    return vdhost::makeContainer(std::move(binary));
}

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
