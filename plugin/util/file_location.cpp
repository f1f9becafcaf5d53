#include "util/file_location.h"

namespace vd::util {

std::string FullPath(const FileLocation& location) {
    if (location.leafName.empty()) return location.existingPath;
    std::string path = location.existingPath;
    if (path.empty() || path.back() != '/') path.push_back('/');
    path.append(location.leafName);
    return path;
}

}  // namespace vd::util
