#include "stream_bytes.h"

#include <cerrno>

#include <sys/mman.h>
#include <unistd.h>

namespace vdhost {

namespace {

// Below this the heap is as cheap: a few pages, mostly ones the process has touched before.
constexpr size_t kMemoryFileThreshold = size_t(1) << 20;

class FileDescriptor {
public:
    explicit FileDescriptor(int fd) : fd_(fd) {}
    ~FileDescriptor() {
        if (fd_ >= 0) ::close(fd_);
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    int get() const { return fd_; }

private:
    int fd_;
};

bool writeAll(int fd, const uint8_t* p, size_t n) {
    while (n > 0) {
        const ssize_t written = ::write(fd, p, n);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        p += written, n -= size_t(written);
    }
    return true;
}

}  // namespace

StreamBytes::~StreamBytes() {
    if (mapped_) ::munmap(const_cast<uint8_t*>(mapped_), mappedSize_);
}

std::shared_ptr<const StreamBytes> StreamBytes::copyOf(const uint8_t* p, size_t n) {
    if (n >= kMemoryFileThreshold) {
        // Any failure (no memory file, no room for it) falls back to the heap.
        const FileDescriptor file(::memfd_create("vdhost-stream", MFD_CLOEXEC));
        if (file.get() >= 0 && writeAll(file.get(), p, n)) {
            auto bytes = std::make_shared<StreamBytes>();
            void* mapped = ::mmap(nullptr, n, PROT_READ, MAP_SHARED, file.get(), 0);
            if (mapped != MAP_FAILED) {
                bytes->mapped_ = static_cast<const uint8_t*>(mapped);
                bytes->mappedSize_ = n;
                return bytes;
            }
        }
    }
    return std::make_shared<const StreamBytes>(Bytes(p, p + n));
}

}  // namespace vdhost
