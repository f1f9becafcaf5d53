#include "picture_previews.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <iterator>
#include <thread>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace vdhost::serve {

namespace fs = std::filesystem;

namespace {

// Removes the files of one shrinking, whatever happened.
struct RemovedAfterwards {
    std::vector<fs::path> paths;
    ~RemovedAfterwards() {
        std::error_code ignored;
        for (const auto& p : paths) fs::remove(p, ignored);
    }
};

// Runs the program with its output thrown away; true when it ended with status 0 in time. A program
// that runs too long is killed: a page must not wait on it forever.
bool runQuietly(const std::vector<std::string>& arguments, int seconds) {
    std::vector<char*> argv;
    for (const auto& a : arguments) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, fd, "/dev/null", fd == STDIN_FILENO ? O_RDONLY : O_WRONLY, 0);
    pid_t pid = -1;
    const int spawned = posix_spawnp(&pid, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0) return false;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    int status = 0;
    for (;;) {
        pid_t done = ::waitpid(pid, &status, WNOHANG);
        if (done == pid) break;
        if (done < 0 && errno != EINTR) return false;
        if (std::chrono::steady_clock::now() > deadline) {
            ::kill(pid, SIGKILL);
            while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
            }
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

const char* extensionOf(const std::string& mediaType) {
    if (mediaType == "image/png") return ".png";
    if (mediaType == "image/gif") return ".gif";
    return ".jpg";
}

}  // namespace

std::optional<ByteSlice> PicturePreviews::shrink(const ByteSlice& picture) {
    const std::string stem = "preview-" + std::to_string(made_++);
    RemovedAfterwards files{{folder_ / (stem + extensionOf(picture.mediaType)), folder_ / (stem + "-small.jpg")}};
    {
        std::ofstream out(files.paths[0], std::ios::binary);
        out.write(reinterpret_cast<const char*>(picture.owner->data()) + picture.offset,
                  static_cast<std::streamsize>(picture.length));
        if (!out) return std::nullopt;
    }
    const std::string size = std::to_string(kEdge) + "x" + std::to_string(kEdge);
    if (!runQuietly({"vipsthumbnail", files.paths[0].string(), "--size", size, "-o",
                     files.paths[1].string() + "[Q=80,strip]"},
                    kSecondsToShrink))
        return std::nullopt;
    std::ifstream in(files.paths[1], std::ios::binary);
    auto bytes = std::make_shared<const StreamBytes>(Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()));
    if (bytes->empty() || bytes->size() >= picture.length) return std::nullopt;
    const size_t length = bytes->size();
    return ByteSlice{std::move(bytes), 0, length, "image/jpeg"};
}

ByteSlice PicturePreviews::preview(const PreviewKey& key, const ByteSlice& picture) {
    if (auto it = previews_.find(key); it != previews_.end()) return it->second;
    ByteSlice made = picture;
    if (picture.length > kSmallEnough)
        if (auto small = shrink(picture)) made = std::move(*small);
    if (previews_.size() >= kKept) {
        previews_.erase(order_.front());
        order_.pop_front();
    }
    order_.push_back(key);
    return previews_.emplace(key, std::move(made)).first->second;
}

}  // namespace vdhost::serve
