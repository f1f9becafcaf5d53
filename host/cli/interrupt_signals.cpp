#include "interrupt_signals.h"

#include "calc/interruption.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <thread>

#include <semaphore.h>
#include <unistd.h>

namespace vdhost::cli {

namespace {

// Long enough for a call that checks in small steps to return and its statement to roll back,
// short enough that nobody reaches for kill -9.
constexpr time_t kGraceSeconds = 2;

std::atomic<bool> gCtrlCEndsCalculationOnly{false};
sem_t gFallbackStart;

void onInterruptSignal(int signalNumber) {
    calc::requestInterruption(signalNumber);
    if (signalNumber == SIGTERM || !gCtrlCEndsCalculationOnly.load(std::memory_order_relaxed))
        sem_post(&gFallbackStart);  // async-signal-safe, unlike anything that starts a timer thread
}

// Waits on its own thread, so that it still runs while the main thread is inside a plug-in call.
void endProcessAfterGrace() {
    while (sem_wait(&gFallbackStart) != 0 && errno == EINTR) {
    }
    timespec left{kGraceSeconds, 0};
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
    static constexpr char kMessage[] = "vdhost: Interrupted; the running call did not end in time.\n";
    (void)!::write(STDERR_FILENO, kMessage, sizeof kMessage - 1);
    _exit(interruptedStatus(calc::interruptionSignal()));
}

}  // namespace

void installInterruptHandlers(InterruptPolicy policy) {
    gCtrlCEndsCalculationOnly = policy == InterruptPolicy::EndCalculationOnCtrlC;
    sem_init(&gFallbackStart, 0, 0);

    // The watcher must never take the signals itself: the main thread's poll or read has to be
    // woken by them. It inherits the mask in force when it starts.
    sigset_t interrupts, previous;
    sigemptyset(&interrupts);
    sigaddset(&interrupts, SIGINT);
    sigaddset(&interrupts, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &interrupts, &previous);
    std::thread(endProcessAfterGrace).detach();
    pthread_sigmask(SIG_SETMASK, &previous, nullptr);

    struct sigaction action {};
    action.sa_handler = onInterruptSignal;
    sigemptyset(&action.sa_mask);
    // Reads restart, so plug-ins never see a stray EINTR; poll and nanosleep return early anyway,
    // which is what lets the prompt notice Ctrl-C.
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

}  // namespace vdhost::cli
