#include "sound/functions/sound_result.h"

#include "container/sound_container.h"
#include "sound/sound_function_steps.h"

namespace vd::sound {

fmapi::Outcome SoundResult(const media::Movie& movie, std::string_view failureMessage) {
    fmapi::OwnedData result(fmapi::NewData());
    if (int32_t e = container::StoreMovieAsSound(result.get(), movie)) return StepFailure(e, failureMessage);
    return fmapi::Outcome::Data(std::move(result));
}

fmapi::Outcome SoundResult(const container::SoundSamplesMaker& fill, std::string_view failureMessage) {
    fmapi::OwnedData result(fmapi::NewData());
    if (int32_t e = container::StoreSoundSamples(result.get(), fill)) return StepFailure(e, failureMessage);
    return fmapi::Outcome::Data(std::move(result));
}

}  // namespace vd::sound
