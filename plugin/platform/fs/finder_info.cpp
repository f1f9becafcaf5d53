#include "platform/fs/finder_info.h"

#include <cerrno>

#include <sys/types.h>
#include <sys/xattr.h>

namespace vd::platform::fs {

namespace {

constexpr size_t kFinderInfoSize = 32;
constexpr size_t kFlagsOffset = 8;

uint32_t BigEndian32(const unsigned char* p) {
    return uint32_t{p[0]} << 24 | uint32_t{p[1]} << 16 | uint32_t{p[2]} << 8 | uint32_t{p[3]};
}

}  // namespace

FinderInfo DecodeFinderInfo(const unsigned char* bytes, size_t size) {
    FinderInfo info;
    if (size < kFlagsOffset + 2) return info;
    info.type = BigEndian32(bytes);
    info.creator = BigEndian32(bytes + 4);
    info.flags = static_cast<uint16_t>(bytes[kFlagsOffset] << 8 | bytes[kFlagsOffset + 1]);
    return info;
}

FinderInfo ReadFinderInfo(const std::string& path) {
    unsigned char bytes[kFinderInfoSize] = {};
    const ssize_t size = ::lgetxattr(path.c_str(), kFinderInfoAttribute, bytes, sizeof bytes);
    if (size <= 0) {
        // ERANGE means a value longer than the Mac layout: its first 32 bytes are still the layout.
        if (size < 0 && errno == ERANGE) {
            std::string longer(static_cast<size_t>(64 * 1024), '\0');
            const ssize_t n = ::lgetxattr(path.c_str(), kFinderInfoAttribute, longer.data(), longer.size());
            if (n > 0) return DecodeFinderInfo(reinterpret_cast<const unsigned char*>(longer.data()),
                                               static_cast<size_t>(n));
        }
        return FinderInfo{};
    }
    return DecodeFinderInfo(bytes, static_cast<size_t>(size));
}

uint64_t ResourceForkSize(const std::string& path) {
    const ssize_t size = ::lgetxattr(path.c_str(), kResourceForkAttribute, nullptr, 0);
    return size > 0 ? static_cast<uint64_t>(size) : 0;
}

}  // namespace vd::platform::fs
