// The thread that decodes the sounds ahead of the callback: it keeps every sound's ring topped up
// from its movie's mix, a block of frames at a time, and restarts a sound's source when the sound
// goes back to its beginning. It sleeps until the callback has taken frames (a semaphore the
// callback posts, which neither blocks nor allocates) or a few milliseconds have passed.
#pragma once

#include "platform/audio/voice.h"

#include <semaphore.h>

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

namespace vd::audio {

class Feeder {
public:
    Feeder();
    ~Feeder();
    Feeder(const Feeder&) = delete;
    Feeder& operator=(const Feeder&) = delete;

    void Add(Voice* voice);
    // Returns once the feeder no longer touches the sound.
    void Remove(Voice* voice);
    // From the callback: frames were taken.
    void Wake() { sem_post(&wake_); }

private:
    void Run();
    bool Feed(Voice& voice);

    sem_t wake_;
    std::mutex mutex_;  // the list, and each sound's source while it is fed
    std::vector<Voice*> voices_;
    std::atomic<bool> stopping_{false};
    std::thread thread_;
};

}  // namespace vd::audio
