// The one recorder of the process: the sound input's grabber and two channels, and the recordings
// now registered. It is made on first use and lives until the plug-in shuts down.
//
// Threads: the host's calls and the timer's tick (its idle step) both work under the recorder's
// recursive lock. The lock is the process's, not the instance's, so that a tick that comes while
// the recorder is being destroyed waits and then finds none. Lock order: the recorder's lock may be
// held while the playback pool's is taken (to take or let go of the timer), never the other way.
#pragma once

#include "recording/recording_entry.h"
#include "recording/sound_grabber.h"

#include <array>
#include <memory>
#include <mutex>
#include <vector>

namespace vd::recording {

class Recorder {
public:
    // The recorder, made on first use; nullptr when it cannot be made.
    static Recorder* Instance();
    // Disposes of every registered recording (each file closed as it stands) and the recorder.
    static void Destroy();
    static std::recursive_mutex& Lock();

    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    SoundGrabber* TakeGrabber();
    void GiveBackGrabber(SoundGrabber* grabber);
    // The channel given back last comes out first, so the settings made on it in the dialog are the
    // ones the next recording takes.
    SoundChannel* TakeChannel();
    void GiveBackChannel(SoundChannel* channel);

    // Appends the entry and takes the shared timer, whose tick runs the idle step.
    void Register(std::shared_ptr<RecordingEntry> entry);
    void Unregister(const RecordingEntry* entry);
    // Every registered entry, in order of registration; none stays registered.
    std::vector<std::shared_ptr<RecordingEntry>> UnregisterAll();
    // The registered entries as they stand, for an operation that may unregister some.
    std::vector<std::shared_ptr<RecordingEntry>> Entries();
    bool AnyRecording();

    // The tick's work: idles every entry while one records, else lets the timer go (so a paused
    // recording does not keep the timer running).
    void IdleStep();
    // Takes the shared timer for the recorder.
    void WantTimer();

private:
    Recorder() = default;

    std::vector<std::shared_ptr<RecordingEntry>> entries_;
    SoundGrabber grabber_;
    std::array<SoundChannel, 2> channels_{};
    std::vector<SoundGrabber*> freeGrabbers_{&grabber_};
    std::vector<SoundChannel*> freeChannels_{&channels_[1], &channels_[0]};
};

}  // namespace vd::recording
