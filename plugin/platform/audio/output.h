// The process's one sound output: the mixer, the feeder that decodes ahead, and the device that
// pulls the mix. Opened by the first sound and kept until ShutDownOutput (and the last sound) let
// it go.
#pragma once

#include "platform/audio/feeder.h"
#include "platform/audio/mixer.h"
#include "platform/audio/output_device.h"

#include <atomic>
#include <memory>

namespace vd::audio {

class Output final : public BlockRenderer {
public:
    // The output, opened when there is none.
    static Status Get(std::shared_ptr<Output>& output);
    // Lets go of the process's reference (sounds still alive keep theirs).
    static void Release();

    ~Output() override;

    // A sound joins: fed first, then played. Fails when every slot is taken.
    Status Add(Voice& voice);
    void Remove(Voice& voice);
    int NextSoundNumber() { return ++soundsMade_; }

    Mixer::Outcome RenderBlock(float* out, size_t frames, bool waitForFrames, EventList* events) override;

private:
    Output() = default;

    Mixer mixer_;
    Feeder feeder_;
    std::unique_ptr<OutputDevice> device_;  // stopped first on the way out
    std::atomic<int> soundsMade_{0};
};

}  // namespace vd::audio
