#include "platform/ui/escape_key.h"

#include <poll.h>
#include <unistd.h>

namespace vd::platform::ui {

namespace {
constexpr unsigned char kEscape = 0x1B;
}

EscapeKeyWatch::EscapeKeyWatch(bool enterToo) : enterToo_(enterToo) {
    if (!::isatty(STDIN_FILENO) || ::tcgetattr(STDIN_FILENO, &saved_) != 0) return;
    termios raw = saved_;
    raw.c_lflag &= tcflag_t(~(ICANON | ECHO));
    raw.c_cc[VMIN] = 0;
    raw.c_cc[VTIME] = 0;
    if (::tcsetattr(STDIN_FILENO, TCSANOW, &raw) == 0) fd_ = STDIN_FILENO;
}

EscapeKeyWatch::~EscapeKeyWatch() {
    if (fd_ >= 0) ::tcsetattr(fd_, TCSANOW, &saved_);
}

bool EscapeKeyWatch::Pressed() {
    if (fd_ < 0) return false;
    bool escape = false;
    pollfd ready{fd_, POLLIN, 0};
    while (::poll(&ready, 1, 0) > 0 && (ready.revents & POLLIN)) {
        unsigned char keys[64];
        const ssize_t n = ::read(fd_, keys, sizeof keys);
        if (n <= 0) break;
        for (ssize_t i = 0; i < n; ++i) escape |= keys[i] == kEscape || (enterToo_ && (keys[i] == '\n' || keys[i] == '\r'));
    }
    return escape;
}

}  // namespace vd::platform::ui
