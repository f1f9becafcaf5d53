// Who needs the shared timer: a process-wide word the playback pool and the recorder change from
// the host's thread. The timer runs exactly while one of them holds it.
#pragma once

#include <atomic>
#include <cstdint>

namespace vd::playback {

inline constexpr uint16_t kPoolTimerClient = 0x0001;
inline constexpr uint16_t kRecorderTimerClient = 0x0002;
inline constexpr uint16_t kTimerInstalled = 0x8000;

// Cleared when the pool is made. The host's calls and the timer's tick change it under the pool's
// lock; it is atomic so that the recorder and tests may read it without taking that lock.
extern std::atomic<uint16_t> gTimerClients;

}  // namespace vd::playback
