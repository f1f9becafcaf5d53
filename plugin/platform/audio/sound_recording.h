// A recording from the sound input into a QuickTime movie with one PCM sound track: 16-bit
// little-endian ('sowt') unless 8 or 24 bits are asked for.
//
// The input's thread puts its frames into a lock-free ring of a few seconds; Drain, called from
// the host's timer tick (every 100 ms), moves them into the file. The file is a movie of
// fragments written in place, one fragment per drain, pushed to the disk at once: a recording
// cut short by a crash is readable up to its last drain. (A temporary file renamed at the end
// would lose the whole recording in a crash, which is the case this format is chosen for.)
#pragma once

#include "platform/media/errors.h"

#include <cstdint>
#include <memory>
#include <string>

namespace vd::audio {

using media::Status;

struct RecordingFormat {
    int32_t sampleRate = 44100;
    int16_t channels = 2;
    int16_t sampleSize = 16;
    std::string device;  // the input's name; empty: the default input
};

class SoundRecording {
public:
    // Opens the input (input_device.h: PortAudio's default input, or the virtual device's input)
    // and then the file (created or emptied). The input's failure when it cannot be had
    // (util::kNoSoundOutput), util::kBadParameter for a format a recording cannot have; nothing is
    // left behind on failure, and an existing file is untouched when the input fails.
    static Status Start(const std::string& path, const RecordingFormat& format, std::unique_ptr<SoundRecording>& out);
    ~SoundRecording();  // stops and closes (as Finish, ignoring its status)
    SoundRecording(const SoundRecording&) = delete;
    SoundRecording& operator=(const SoundRecording&) = delete;

    void Pause();  // frames that arrive while paused are dropped, not recorded
    void Resume();
    Status Drain();   // moves what the ring holds into the file
    Status Finish();  // stops the input, drains, completes the file

    // Whether the input has ended by itself (a virtual input given a length).
    bool InputEnded() const;
    int64_t FramesRecorded() const;  // frames in the file so far
    uint64_t FramesDropped() const;  // frames lost to a full ring (the host did not drain in time)

private:
    class Ring;
    struct Parts;
    explicit SoundRecording(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> parts_;
};

}  // namespace vd::audio
