#include "platform/media/alias_record.h"

#include "platform/media/atom_builder.h"

#include <filesystem>
#include <string_view>

#include <sys/stat.h>

namespace vd::media {

namespace {

// Offsets in the classic record's fixed part.
constexpr size_t kLevelsFrom = 130, kLevelsTo = 132, kExtras = 150;
constexpr uint16_t kParentFolderName = 0, kMacPath = 2, kPosixPath = 18, kEndOfExtras = 0xFFFF;

std::vector<std::string> Components(const std::string& path) {
    std::vector<std::string> parts;
    for (const auto& part : std::filesystem::path(path).lexically_normal()) {
        const std::string text = part.string();
        if (!text.empty() && text != "/") parts.push_back(text);
    }
    return parts;
}

void Extra(AtomBuilder& record, uint16_t type, std::string_view data) {
    record.U16(type);
    record.U16(uint16_t(data.size()));
    record.Text(data);
    if (data.size() % 2) record.U8(0);
}

uint16_t Be16(const uint8_t* p) { return uint16_t(p[0] << 8 | p[1]); }

bool IsFile(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

}  // namespace

std::vector<uint8_t> BuildAliasRecord(const std::string& target, const std::string& aliasFolder) {
    const std::vector<std::string> to = Components(target), from = Components(aliasFolder);
    size_t common = 0;
    while (common < from.size() && common + 1 < to.size() && from[common] == to[common]) ++common;
    const std::string parent = to.size() >= 2 ? to[to.size() - 2] : "";

    AtomBuilder record;
    record.U32(0);   // application's creator code
    record.U16(0);   // record size, patched below
    record.U16(2);   // record version
    record.U16(0);   // the target is a file
    record.PascalString(to.empty() ? "" : to.front(), 28);
    record.U32(0);   // volume creation date
    record.U16(0);   // file-system type
    record.U16(0);   // disk type: fixed
    record.U32(0);   // parent folder number
    record.PascalString(to.empty() ? "" : to.back(), 64);
    record.U32(0);   // file number
    record.U32(0);   // file creation date
    record.U32(0);   // file type
    record.U32(0);   // file creator
    record.U16(uint16_t(from.size() - common + 1));
    record.U16(uint16_t(to.size() - common));
    record.Zeros(16);  // volume attributes, file-system id, reserved
    Extra(record, kParentFolderName, parent);
    // The Mac form, "volume:folder:file", for readers that know no other.
    std::string macPath;
    for (const std::string& part : to) macPath += (macPath.empty() ? "" : ":") + part;
    Extra(record, kMacPath, macPath);
    Extra(record, kPosixPath, std::filesystem::path(target).lexically_normal().string());
    record.U16(kEndOfExtras);
    record.U16(0);

    std::vector<uint8_t> bytes = record.Result();
    const auto size = uint16_t(std::min<size_t>(bytes.size(), 0xFFFF));
    bytes[4] = uint8_t(size >> 8);
    bytes[5] = uint8_t(size);
    return bytes;
}

std::optional<AliasTarget> ParseAliasRecord(const uint8_t* bytes, size_t size) {
    if (size < kExtras) return std::nullopt;
    AliasTarget target;
    target.levelsFrom = Be16(bytes + kLevelsFrom);
    target.levelsTo = Be16(bytes + kLevelsTo);
    for (size_t at = kExtras; at + 4 <= size;) {
        const uint16_t type = Be16(bytes + at), length = Be16(bytes + at + 2);
        if (type == kEndOfExtras || at + 4 + length > size) break;
        if (type == kPosixPath) target.absolutePath.assign(reinterpret_cast<const char*>(bytes + at + 4), length);
        at += 4 + length + (length % 2);
    }
    while (!target.absolutePath.empty() && target.absolutePath.back() == '\0') target.absolutePath.pop_back();
    if (target.absolutePath.empty() || target.absolutePath.front() != '/') return std::nullopt;
    return target;
}

std::optional<std::string> ResolveAliasTarget(const AliasTarget& target, const std::string& movieFolder) {
    const std::vector<std::string> parts = Components(target.absolutePath);
    if (target.levelsFrom > 0 && target.levelsTo > 0 && target.levelsTo <= parts.size()) {
        std::filesystem::path relative = movieFolder;
        for (uint16_t up = 1; up < target.levelsFrom; ++up) relative /= "..";
        for (size_t i = parts.size() - target.levelsTo; i < parts.size(); ++i) relative /= parts[i];
        const std::string candidate = relative.lexically_normal().string();
        if (IsFile(candidate)) return candidate;
    }
    if (IsFile(target.absolutePath)) return target.absolutePath;
    return std::nullopt;
}

}  // namespace vd::media
