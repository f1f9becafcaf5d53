// The devices that pull the mix: PortAudio's default output, or our virtual device.
//
// VANDREL_AUDIO chooses:
//   unset or ""                  PortAudio's default output device
//   virtual[:option,option...]   a thread that renders blocks of 512 frames; options:
//       out=PATH        captures into PATH, a 32-bit float stereo 44100 Hz WAV whose header is
//                       valid after every block (it can be read while it grows), and logs into
//                       PATH.log one line per event: "<frame> start|stop|rate|volume|balance|done
//                       <sound number> <value>", frame being the index in the WAV where it took
//                       effect. Without out= the frames are discarded.
//       in=...          the input's options (input_device.h), taken here and left to the input
//       speed=realtime  a block every 512/44100 s (the default)
//       speed=fast      as fast as the sounds' buffers allow; a block waits until every playing
//                       sound has its frames, so an underrun never turns into silence
//     The virtual device writes blocks only while some sound is playing (rate ≠ 0, not done), so a
//     capture is exactly the audible rendering.
//   anything else                the output cannot be had (the detail names the value)
#pragma once

#include "platform/audio/mixer.h"

#include <memory>
#include <string>

namespace vd::audio {

// What a device calls to get its blocks.
class BlockRenderer {
public:
    virtual ~BlockRenderer() = default;
    virtual Mixer::Outcome RenderBlock(float* out, size_t frames, bool waitForFrames, EventList* events) = 0;
};

// A running device; destroying it stops it (no RenderBlock call after the destructor returns).
class OutputDevice {
public:
    virtual ~OutputDevice() = default;
};

inline constexpr int kOutputRate = 44100;
inline constexpr size_t kVirtualBlockFrames = 512;

// The device VANDREL_AUDIO names, started. util::kNoSoundOutput with a detail when it cannot be had.
Status OpenOutputDevice(BlockRenderer& renderer, std::unique_ptr<OutputDevice>& device);

Status OpenVirtualDevice(const std::string& options, BlockRenderer& renderer, std::unique_ptr<OutputDevice>& device);
Status OpenPortAudioDevice(BlockRenderer& renderer, std::unique_ptr<OutputDevice>& device);

}  // namespace vd::audio
