#include "platform/fs/real_paths.h"

#include <cerrno>
#include <cstdlib>
#include <memory>

#include "platform/fs/item_probe.h"

namespace vd::platform::fs {

std::string RealPath(const std::string& path) {
    std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
    return real ? std::string(real.get()) : std::string();
}

util::Status RealFolderPath(const std::string& absolutePath, std::string& resolved) {
    const size_t slash = absolutePath.rfind('/');
    if (absolutePath.empty() || absolutePath.front() != '/') return util::kBadParameter;
    if (absolutePath == "/") {
        resolved = "/";
        return util::kNoError;
    }
    const std::string folder = RealPath(slash == 0 ? std::string("/") : absolutePath.substr(0, slash));
    if (folder.empty()) return StatusFromErrno(errno);
    resolved = folder + (folder == "/" ? "" : "/") + absolutePath.substr(slash + 1);
    return util::kNoError;
}

}  // namespace vd::platform::fs
