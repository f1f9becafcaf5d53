#include "platform/common/interrupt_cleanup.h"

#include <atomic>

#include "platform/common/temporary_file_ledger.h"

#include <array>
#include <cerrno>

#include <signal.h>

namespace vd::platform {

namespace {

constexpr std::array<int, 4> kStopSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT};

struct Previous {
    int signal;
    struct sigaction action;
    bool installed;
};

std::array<Previous, kStopSignals.size()> gPrevious{};
// Lock-free, so safe to set from the signal handler, and read by the threads of long loops.
std::atomic<int> gStopRequested{0};
static_assert(std::atomic<int>::is_always_lock_free);
thread_local bool tIgnoresStopRequests = false;

void OnStopSignal(int signal, siginfo_t* info, void* context) {
    const int savedErrno = errno;
    gStopRequested = 1;
    RemoveRecordedFilesNow();
    for (const Previous& previous : gPrevious) {
        if (!previous.installed || previous.signal != signal) continue;
        const struct sigaction& action = previous.action;
        if (action.sa_flags & SA_SIGINFO) {
            if (action.sa_sigaction) action.sa_sigaction(signal, info, context);
        } else if (action.sa_handler == SIG_DFL) {
            // The default action ends the process: take it once this handler returns (the signal
            // is blocked until then).
            struct sigaction defaults {};
            defaults.sa_handler = SIG_DFL;
            sigemptyset(&defaults.sa_mask);
            ::sigaction(signal, &defaults, nullptr);
            ::raise(signal);
        } else if (action.sa_handler != SIG_IGN) {
            action.sa_handler(signal);
        }
    }
    errno = savedErrno;
}

}  // namespace

void InstallInterruptCleanup() noexcept {
    for (size_t i = 0; i < kStopSignals.size(); ++i) {
        Previous& previous = gPrevious[i];
        if (previous.installed) continue;
        previous.signal = kStopSignals[i];
        if (::sigaction(previous.signal, nullptr, &previous.action) != 0) continue;
        const bool ignored = !(previous.action.sa_flags & SA_SIGINFO) && previous.action.sa_handler == SIG_IGN;
        if (ignored) continue;
        struct sigaction ours {};
        ours.sa_sigaction = OnStopSignal;
        ours.sa_flags = SA_SIGINFO | (previous.action.sa_flags & SA_RESTART);
        sigemptyset(&ours.sa_mask);
        previous.installed = ::sigaction(previous.signal, &ours, nullptr) == 0;
    }
}

void RemoveInterruptCleanup() noexcept {
    for (Previous& previous : gPrevious) {
        if (!previous.installed) continue;
        struct sigaction current {};
        if (::sigaction(previous.signal, nullptr, &current) == 0 && (current.sa_flags & SA_SIGINFO) &&
            current.sa_sigaction == OnStopSignal) {
            ::sigaction(previous.signal, &previous.action, nullptr);
        }
        previous.installed = false;
    }
}

bool StopRequested() noexcept { return !tIgnoresStopRequests && gStopRequested.load(std::memory_order_relaxed) != 0; }

void ClearStopRequest() noexcept { gStopRequested.store(0, std::memory_order_relaxed); }

void IgnoreStopRequestsOnThisThread() noexcept { tIgnoresStopRequests = true; }

}  // namespace vd::platform
