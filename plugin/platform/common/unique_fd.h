// Owners for the file-system handles the item operations hold: a descriptor closes, a folder
// stream closes (and with it the descriptor it was opened on), whichever way the operation ends.
#pragma once

#include <dirent.h>
#include <unistd.h>

#include <memory>
#include <utility>

namespace vd::platform {

class UniqueFd {
public:
    UniqueFd() = default;
    explicit UniqueFd(int fd) noexcept : fd_(fd) {}
    ~UniqueFd() { Reset(); }
    UniqueFd(UniqueFd&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    UniqueFd& operator=(UniqueFd&& other) noexcept {
        if (this != &other) {
            Reset();
            fd_ = std::exchange(other.fd_, -1);
        }
        return *this;
    }
    UniqueFd(const UniqueFd&) = delete;
    UniqueFd& operator=(const UniqueFd&) = delete;

    int Get() const noexcept { return fd_; }
    bool Valid() const noexcept { return fd_ >= 0; }
    // Hands the descriptor to an owner that closes it itself (fdopendir).
    int Release() noexcept { return std::exchange(fd_, -1); }
    void Reset() noexcept {
        if (fd_ >= 0) ::close(fd_);
        fd_ = -1;
    }
    // For write paths, where a failed close means the data may not be there.
    int Close() noexcept {
        const int fd = std::exchange(fd_, -1);
        return fd >= 0 ? ::close(fd) : 0;
    }

private:
    int fd_ = -1;
};

struct FolderStreamCloser {
    void operator()(DIR* stream) const noexcept { ::closedir(stream); }
};
using FolderStream = std::unique_ptr<DIR, FolderStreamCloser>;

}  // namespace vd::platform
