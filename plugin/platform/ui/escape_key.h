// Escape pressed in the terminal the host runs in: how a person stops a sound that holds the
// host's call. While a watch lives, the terminal delivers keys one by one without echoing them;
// its settings come back when the watch ends. Without a terminal (a script, a pipe) nothing is
// watched and Escape never counts as pressed.
#pragma once

#include <termios.h>

namespace vd::platform::ui {

class EscapeKeyWatch {
public:
    // Enter as well as Escape counts when asked: it is how a person ends a recording.
    explicit EscapeKeyWatch(bool enterToo = false);
    ~EscapeKeyWatch();
    EscapeKeyWatch(const EscapeKeyWatch&) = delete;
    EscapeKeyWatch& operator=(const EscapeKeyWatch&) = delete;

    // Whether Escape (or Enter) was typed since the last look; other keys typed meanwhile are
    // dropped, as they would have reached no one.
    bool Pressed();

private:
    int fd_ = -1;
    bool enterToo_ = false;
    termios saved_{};
};

}  // namespace vd::platform::ui
