#include "platform/audio/output.h"

#include <mutex>
#include <string>

namespace vd::audio {

namespace {

std::mutex gOutputMutex;
std::shared_ptr<Output> gOutput;

}  // namespace

Status Output::Get(std::shared_ptr<Output>& output) {
    std::lock_guard lock(gOutputMutex);
    if (!gOutput) {
        std::shared_ptr<Output> opened(new Output);
        if (const Status status = OpenOutputDevice(*opened, opened->device_); status != util::kNoError) return status;
        gOutput = std::move(opened);
    }
    output = gOutput;
    return util::kNoError;
}

void Output::Release() {
    std::shared_ptr<Output> last;
    {
        std::lock_guard lock(gOutputMutex);
        last = std::move(gOutput);
    }
}

Output::~Output() { device_.reset(); }

Status Output::Add(Voice& voice) {
    feeder_.Add(&voice);
    if (!mixer_.Add(&voice)) {
        feeder_.Remove(&voice);
        return media::MediaFailure(util::kNoSoundOutput,
                                   "the sound output already plays " + std::to_string(Mixer::kSlots) + " sounds");
    }
    return util::kNoError;
}

void Output::Remove(Voice& voice) {
    mixer_.Remove(&voice);
    feeder_.Remove(&voice);
}

Mixer::Outcome Output::RenderBlock(float* out, size_t frames, bool waitForFrames, EventList* events) {
    const Mixer::Outcome outcome = mixer_.Render(out, frames, waitForFrames, events);
    if (outcome != Mixer::Outcome::kSilent) feeder_.Wake();
    return outcome;
}

}  // namespace vd::audio
