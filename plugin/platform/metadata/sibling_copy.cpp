#include "platform/metadata/sibling_copy.h"

#include "platform/common/posix_status.h"
#include "platform/common/unique_fd.h"

#include <cerrno>
#include <cstdlib>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vd::platform::metadata {

namespace {

util::Status LastError() { return StatusFromErrno(errno); }

// ".<name>-XXXXXX<.extension>": hidden, unique, and of the same kind to anyone who reads the name.
std::string CopyTemplate(const std::string& original, size_t& suffixLength) {
    const size_t slash = original.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : original.substr(0, slash);
    const std::string name = slash == std::string::npos ? original : original.substr(slash + 1);
    const size_t dot = name.rfind('.');
    const std::string extension = dot == std::string::npos || dot == 0 ? "" : name.substr(dot);
    suffixLength = extension.size();
    return folder + "/." + name.substr(0, dot == 0 ? name.size() : dot) + "-XXXXXX" + extension;
}

util::Status CopyBytes(int from, int to) {
    std::vector<char> buffer(1 << 16);
    for (;;) {
        const ssize_t got = ::read(from, buffer.data(), buffer.size());
        if (got < 0) {
            if (errno == EINTR) continue;
            return LastError();
        }
        if (got == 0) return util::kNoError;
        for (ssize_t done = 0; done < got;) {
            const ssize_t put = ::write(to, buffer.data() + done, size_t(got - done));
            if (put < 0) {
                if (errno == EINTR) continue;
                return LastError();
            }
            done += put;
        }
    }
}

util::Status FlushFolderOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
    UniqueFd fd(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!fd.Valid()) return LastError();
    // Some file systems cannot flush a folder; the rename has been made all the same.
    if (::fsync(fd.Get()) != 0 && errno != EINVAL && errno != EROFS) return LastError();
    return util::kNoError;
}

}  // namespace

SiblingCopy::~SiblingCopy() {
    if (!copy_.empty()) ::unlink(copy_.c_str());
}

util::Status SiblingCopy::Make(const std::string& original) {
    UniqueFd from(::open(original.c_str(), O_RDONLY | O_CLOEXEC));
    if (!from.Valid()) return LastError();
    struct stat info {};
    if (::fstat(from.Get(), &info) != 0) return LastError();
    if (S_ISDIR(info.st_mode)) return util::kNotAFile;
    if (!S_ISREG(info.st_mode)) return util::kBadParameter;
    size_t suffixLength = 0;
    std::string name = CopyTemplate(original, suffixLength);
    UniqueFd to(::mkostemps(name.data(), int(suffixLength), O_CLOEXEC));
    if (!to.Valid()) return LastError();
    copy_ = name;
    record_ = TemporaryFileRecord::Make(copy_);
    original_ = original;
    if (::fchmod(to.Get(), info.st_mode & 07777) != 0) return LastError();
    if (util::Status s = CopyBytes(from.Get(), to.Get())) return s;
    if (to.Close() != 0) return LastError();
    return util::kNoError;
}

util::Status SiblingCopy::Commit() {
    {
        UniqueFd fd(::open(copy_.c_str(), O_RDONLY | O_CLOEXEC));
        if (!fd.Valid()) return LastError();
        if (::fsync(fd.Get()) != 0) return LastError();
    }
    if (::rename(copy_.c_str(), original_.c_str()) != 0) return LastError();
    copy_.clear();
    record_.Forget();
    return FlushFolderOf(original_);
}

}  // namespace vd::platform::metadata
