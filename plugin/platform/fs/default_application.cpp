#include "platform/fs/default_application.h"

#include <cerrno>

#include <spawn.h>
#include <sys/wait.h>

#include "platform/fs/item_probe.h"

extern char** environ;

namespace vd::platform::fs {

namespace {

// A short-lived shell starts xdg-open in the background and ends at once; we reap the shell, and
// xdg-open, orphaned, is reaped by init. No zombie is left in the host, and no fork of the host's
// threads is ever made by hand.
constexpr const char* kLauncher = "xdg-open \"$1\" </dev/null >/dev/null 2>&1 &";

struct SpawnAttributes {
    posix_spawnattr_t value;
    SpawnAttributes() { posix_spawnattr_init(&value); }
    ~SpawnAttributes() { posix_spawnattr_destroy(&value); }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;
};

}  // namespace

util::Status OpenWithDefaultApplication(const std::string& path) {
    SpawnAttributes attributes;
    posix_spawnattr_setflags(&attributes.value, POSIX_SPAWN_SETSID);
    const char* argv[] = {"sh", "-c", kLauncher, "vandrel-open", path.c_str(), nullptr};
    pid_t shell = 0;
    const int error = ::posix_spawn(&shell, "/bin/sh", nullptr, &attributes.value, const_cast<char**>(argv), environ);
    if (error != 0) return StatusFromErrno(error);
    int status = 0;
    while (::waitpid(shell, &status, 0) < 0) {
        if (errno != EINTR) return StatusFromErrno(errno);
    }
    return util::kNoError;
}

}  // namespace vd::platform::fs
