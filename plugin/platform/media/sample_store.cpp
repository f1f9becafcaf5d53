#include "platform/media/sample_store.h"

#include <cerrno>
#include <cstring>
#include <memory>
#include <new>

#include <fcntl.h>
#include <unistd.h>

namespace vd::media {

Status SampleStore::ReadBytes(int64_t, size_t, uint8_t*) const {
    return MediaFailure(util::kCorruptData, "compressed samples have no stored bytes to read");
}

Status SampleStore::ReadFloatFrames(int64_t, int64_t, float*, int64_t*) {
    return MediaFailure(util::kCorruptData, "these samples are read by byte, not decoded");
}

const std::string& SampleStore::FilePath() const {
    static const std::string none;
    return none;
}

Status MemorySampleStore::ReadBytes(int64_t byteOffset, size_t size, uint8_t* out) const {
    if (byteOffset < 0 || uint64_t(byteOffset) > bytes_.size() || size > bytes_.size() - size_t(byteOffset))
        return MediaFailure(util::kEndOfFile, "read past the samples in memory");
    std::memcpy(out, bytes_.data() + byteOffset, size);
    return util::kNoError;
}

Status MemorySampleStore::Append(const uint8_t* bytes, size_t size) {
    try {
        bytes_.insert(bytes_.end(), bytes, bytes + size);
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory for the samples");
    } catch (const std::length_error&) {
        return MediaFailure(util::kMemoryFull, "too many samples for memory");
    }
    return util::kNoError;
}

Status FileSampleStore::Open(const std::string& path, int64_t dataOffset, int64_t dataSize,
                             std::shared_ptr<FileSampleStore>& out) {
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return StatusFromErrno(errno, MediaStep::kOpening);
    try {
        out.reset(new FileSampleStore(fd, path, dataOffset, dataSize));
    } catch (const std::bad_alloc&) {
        ::close(fd);
        return MediaFailure(util::kMemoryFull, "no memory for a file store");
    }
    return util::kNoError;
}

FileSampleStore::~FileSampleStore() { ::close(fd_); }

Status FileSampleStore::ReadBytes(int64_t byteOffset, size_t size, uint8_t* out) const {
    if (byteOffset < 0 || byteOffset > dataSize_ || int64_t(size) > dataSize_ - byteOffset)
        return MediaFailure(util::kEndOfFile, "read past the sound data of " + path_);
    size_t done = 0;
    while (done < size) {
        ssize_t n = ::pread(fd_, out + done, size - done, dataOffset_ + byteOffset + int64_t(done));
        if (n < 0) {
            if (errno == EINTR) continue;
            return StatusFromErrno(errno, MediaStep::kReading);
        }
        // The file shrank after it was opened: its samples are no longer there.
        if (n == 0) return MediaFailure(util::kEndOfFile, path_ + " ended before its sound data");
        done += size_t(n);
    }
    return util::kNoError;
}

}  // namespace vd::media
