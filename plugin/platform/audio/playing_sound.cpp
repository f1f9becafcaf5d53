#include "platform/audio/playing_sound.h"

#include "platform/audio/output.h"

#include <algorithm>

namespace vd::audio {

Status PlayingSound::Make(media::Movie&& movie, std::unique_ptr<PlayingSound>& sound) {
    std::shared_ptr<Output> output;
    if (const Status status = Output::Get(output); status != util::kNoError) return status;
    auto voice = std::make_unique<Voice>(std::move(movie), 0);
    const media::OutputFormat format{media::FourCC("WAVE"), kOutputRate, 2, 16};
    if (const Status status = media::MixedBlockSource::Open(voice->movie, format, {}, voice->source);
        status != util::kNoError)
        return status;
    voice->number = output->NextSoundNumber();
    if (const Status status = output->Add(*voice); status != util::kNoError) return status;
    sound.reset(new PlayingSound(std::move(output), std::move(voice)));
    return util::kNoError;
}

PlayingSound::PlayingSound(std::shared_ptr<Output> output, std::unique_ptr<Voice> voice)
    : output_(std::move(output)), voice_(std::move(voice)) {}

PlayingSound::~PlayingSound() { output_->Remove(*voice_); }

void PlayingSound::Start() { voice_->rate = std::max(voice_->preferredRate.load(), 0); }  // a negative tempo holds it
void PlayingSound::Stop() { voice_->rate = 0; }
void PlayingSound::GoToBeginning() { ++voice_->rewindRequest; }
void PlayingSound::SetRate(Fixed rate) { voice_->rate = std::max(rate, 0); }
Fixed PlayingSound::Rate() const { return voice_->rate; }
void PlayingSound::SetPreferredRate(Fixed rate) { voice_->preferredRate = rate; }
Fixed PlayingSound::PreferredRate() const { return voice_->preferredRate; }
void PlayingSound::SetVolume(int16_t volume) { voice_->volume = volume; }
int16_t PlayingSound::Volume() const { return voice_->volume; }
void PlayingSound::SetBalance(float balance) { voice_->balance = balance; }
float PlayingSound::Balance() const { return voice_->balance; }

bool PlayingSound::IsDone() const {
    return voice_->doneFor.load(std::memory_order_acquire) == int64_t(voice_->rewindRequest.load());
}

void ShutDownOutput() { Output::Release(); }

}  // namespace vd::audio
