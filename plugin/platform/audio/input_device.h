// The devices that record: PortAudio's default input, or the virtual device's input
// (VANDREL_AUDIO=virtual:in=..., output_device.h names the variable's other choices):
//   in=tone        a 440 Hz sine at a quarter of full scale on every channel
//   in=PATH        the sound of the file at PATH (any file we read), looped
//   speed=realtime blocks of 512 frames at the recording's rate, in real time (the default)
//   speed=fast     a block whenever the sink has room for it
//   length=SECONDS the input ends after that much sound, as a person ending a recording would
// Without in= the virtual device has no input.
#pragma once

#include "platform/media/errors.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vd::audio {

using media::Status;

// Where a device puts its frames, called on the device's own thread: never blocks, never
// allocates.
class SampleSink {
public:
    virtual ~SampleSink() = default;
    // Interleaved float frames at the rate and channels the device was opened with.
    virtual void Deliver(const float* samples, size_t frames) = 0;
    // How many frames Deliver could take now without dropping any.
    virtual size_t Room() const = 0;
};

// A running input; destroying it stops it (no Deliver call after the destructor returns).
class InputDevice {
public:
    virtual ~InputDevice() = default;
    // Whether the input has delivered all it ever will (only a virtual input with a length ends).
    virtual bool Ended() const { return false; }
};

inline constexpr size_t kInputBlockFrames = 512;

// The input VANDREL_AUDIO names, started at rate and channels: with PortAudio, the input device
// called name, or the default input when name is empty (the virtual device has one input and takes
// no name). util::kNoSoundOutput (no sound hardware, no such input) with a detail when it cannot be
// had.
Status OpenInputDevice(int32_t rate, int channels, const std::string& name, SampleSink& sink,
                       std::unique_ptr<InputDevice>& device);

// The names of the inputs a recording can choose from (none when PortAudio cannot be had; none
// for the virtual device, whose one input is the default).
std::vector<std::string> InputDeviceNames();

Status OpenVirtualInput(const std::string& options, int32_t rate, int channels, SampleSink& sink,
                        std::unique_ptr<InputDevice>& device);
Status OpenPortAudioInput(int32_t rate, int channels, const std::string& name, SampleSink& sink,
                          std::unique_ptr<InputDevice>& device);
std::vector<std::string> PortAudioInputNames();

}  // namespace vd::audio
