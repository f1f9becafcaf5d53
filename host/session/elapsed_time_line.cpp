#include "elapsed_time_line.h"

#include <cstdio>
#include <string_view>

#include <unistd.h>

namespace vdhost {

namespace {

constexpr auto kQuietFor = std::chrono::seconds(1);
constexpr auto kUpdateEvery = std::chrono::milliseconds(100);

void writeAll(int fd, std::string_view text) {
    while (!text.empty()) {
        ssize_t n = ::write(fd, text.data(), text.size());
        if (n <= 0) return;  // a terminal that went away is no reason to fail the calculation
        text.remove_prefix(static_cast<size_t>(n));
    }
}

}  // namespace

ElapsedTimeLine::ElapsedTimeLine(int fd) : fd_(fd) {
    if (isatty(fd_)) thread_ = std::thread([this] { show(); });
}

ElapsedTimeLine::~ElapsedTimeLine() {
    if (!thread_.joinable()) return;
    {
        std::lock_guard lock(mutex_);
        done_ = true;
    }
    stopped_.notify_one();
    thread_.join();
}

void ElapsedTimeLine::show() {
    const auto start = std::chrono::steady_clock::now();
    std::unique_lock lock(mutex_);
    if (stopped_.wait_until(lock, start + kQuietFor, [this] { return done_; })) return;
    do {
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        char text[64];
        std::snprintf(text, sizeof text, "\r  working\u2026 %.1f s", elapsed.count());
        writeAll(fd_, text);
    } while (!stopped_.wait_for(lock, kUpdateEvery, [this] { return done_; }));
    writeAll(fd_, "\r\033[K");
}

}  // namespace vdhost
