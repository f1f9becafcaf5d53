#include "platform/fs/catalog_info.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

#include "platform/fs/item_probe.h"

namespace vd::platform::fs {

namespace {

// 1 January 1904 to 1 January 1970.
constexpr int64_t kSeconds1904To1970 = 2082844800;

std::string_view LeafOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string_view(path) : std::string_view(path).substr(slash + 1);
}

}  // namespace

uint32_t MacSecondsFromUnix(int64_t unixSeconds) {
    return static_cast<uint32_t>(static_cast<uint64_t>(unixSeconds + kSeconds1904To1970));
}

util::Status ReadCatalogInfo(const std::string& path, CatalogInfo& info) {
    info = CatalogInfo{};
    struct statx sx {};
    if (::statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW,
                STATX_TYPE | STATX_MODE | STATX_SIZE | STATX_MTIME | STATX_CTIME | STATX_BTIME, &sx) != 0) {
        return StatusFromErrno(errno);
    }
    const bool isLink = S_ISLNK(sx.stx_mode);
    info.finder = ReadFinderInfo(path);
    info.isFolder = S_ISDIR(sx.stx_mode);
    info.isAlias = isLink || (info.finder.flags & kFinderFlagAlias) != 0;
    info.isInvisible = LeafOf(path).starts_with('.') || (info.finder.flags & kFinderFlagInvisible) != 0;
    // A link's own permission bits mean nothing on Linux; a link is never locked.
    info.isLocked = !isLink && (sx.stx_mode & S_IWUSR) == 0;
    info.dataSize = sx.stx_size;
    info.resourceSize = ResourceForkSize(path);
    info.creationTime = (sx.stx_mask & STATX_BTIME) ? sx.stx_btime.tv_sec : sx.stx_ctime.tv_sec;
    info.modificationTime = sx.stx_mtime.tv_sec;
    return util::kNoError;
}

}  // namespace vd::platform::fs
