// Sounds on the computer's sound output.
//
// Every playing sound is summed into one 44100 Hz stereo float stream by the output's callback.
// The output is PortAudio's default device, or, with VANDREL_AUDIO=virtual[:options], a device of
// our own that renders blocks of 512 frames on a thread and may capture them into a WAV file (see
// output_device.h for its options and its event log).
//
// Threads:
//  - The control calls of one PlayingSound come from one thread at a time (the plug-in's); the
//    parameters are atomics, so calls on different sounds may come from different threads. Make and
//    ShutDownOutput are serialised among themselves.
//  - The device's callback (PortAudio's thread or the virtual device's) never allocates, locks or
//    decodes: it reads each sound from a ring buffer that a feeder thread keeps a few seconds ahead,
//    picks the sounds up from a fixed array of atomic slots, and reads each sound's parameters once
//    per block. A parameter change therefore takes effect at the next block boundary.
//  - A sound leaves the callback's set at once when it is destroyed; its memory goes only after
//    the callback has provably moved past it.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/movie.h"

#include <cstdint>
#include <memory>

namespace vd::audio {

using media::Status;
using Fixed = int32_t;  // 16.16, as the movies' rates were kept
inline constexpr Fixed kFixedOne = 0x10000;

class Output;
struct Voice;

// A sound on the output: made stopped at its beginning; plays when started.
class PlayingSound {
public:
    // Takes the movie over (its enabled sound tracks are what plays). Opens the output on first
    // use (PortAudio or the virtual device); the output's failure when it cannot be had.
    static Status Make(media::Movie&& movie, std::unique_ptr<PlayingSound>& sound);
    ~PlayingSound();  // takes it off the output; safe at any time
    PlayingSound(const PlayingSound&) = delete;
    PlayingSound& operator=(const PlayingSound&) = delete;

    void Start();  // rate := preferred rate, from where it stands
    void Stop();   // rate 0, keeps its place
    void GoToBeginning();
    void SetRate(Fixed rate);  // non-zero sets a stopped sound going; negative counts as 0
    Fixed Rate() const;        // 0 while stopped
    void SetPreferredRate(Fixed rate);
    Fixed PreferredRate() const;  // starts as kFixedOne
    void SetVolume(int16_t volume);  // gain = volume / 256, sign kept (a negative word inverts)
    int16_t Volume() const;          // starts as 256
    void SetBalance(float balance);  // -1 full left .. +1 full right; not clamped (see mixer.h)
    float Balance() const;
    bool IsDone() const;  // played to its end (a stopped sound before its end is not done)

private:
    PlayingSound(std::shared_ptr<Output> output, std::unique_ptr<Voice> voice);

    std::shared_ptr<Output> output_;
    std::unique_ptr<Voice> voice_;
};

// Stops the output device and the threads behind it (plug-in shut-down); every PlayingSound must be
// gone first (one that is not keeps the output running until it goes).
void ShutDownOutput();

}  // namespace vd::audio
