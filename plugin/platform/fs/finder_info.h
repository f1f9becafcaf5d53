// The Mac catalog information that has no place in a Linux inode, kept in extended attributes the
// way Mac file sharing and archivers store it: the 32-byte Finder information (type, creator and
// Finder flags in the Mac layout) and the resource fork.
#pragma once

#include <cstdint>
#include <string>

namespace vd::platform::fs {

inline constexpr const char* kFinderInfoAttribute = "user.com.apple.FinderInfo";
inline constexpr const char* kResourceForkAttribute = "user.com.apple.ResourceFork";

inline constexpr uint16_t kFinderFlagInvisible = 0x4000;
inline constexpr uint16_t kFinderFlagAlias = 0x8000;

struct FinderInfo {
    uint32_t type = 0;     // first character most significant
    uint32_t creator = 0;
    uint16_t flags = 0;
};

// Decodes the attribute's bytes. Files and folders both keep their flags at offset 8; type and
// creator mean something only for files. A value too short to hold the flags counts as absent.
FinderInfo DecodeFinderInfo(const unsigned char* bytes, size_t size);

// The item's own attribute (a symbolic link is not followed); all zero when there is none, or when
// the file system keeps no attributes.
FinderInfo ReadFinderInfo(const std::string& path);

// The resource fork's size in bytes; 0 when there is none.
uint64_t ResourceForkSize(const std::string& path);

}  // namespace vd::platform::fs
