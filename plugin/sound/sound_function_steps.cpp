#include "sound/sound_function_steps.h"

#include "container/movie_parameter.h"
#include "container/sound_container.h"
#include "platform/media/mixed_sample_store.h"
#include "platform/media/movie_from_file.h"
#include "sound/editing/wav_conversion.h"
#include "util/status_codes.h"

namespace vd::sound {

namespace {

// Five minutes of CD-quality sound (53 MB): a mix of unknown length up to this is held in memory,
// a longer one is written to a temporary file, so that hour-long sounds do not fill the memory.
constexpr int64_t kLargestMixInMemory = int64_t(44100) * 60 * 5;

}  // namespace

int32_t OpenSoundParameter(const FMX_DataVect* args, uint32_t index, SoundMovie& sound) {
    bool found = false;
    if (int32_t e = container::MovieFromParameter(args, index, sound.movie, found)) return e;
    return found ? 0 : util::kBadParameter;
}

int32_t SoundParameter(const FMX_DataVect* args, uint32_t index, PcmNeed need, SoundMovie& sound, bool& found) {
    SoundMovie opened;
    if (int32_t e = container::MovieFromParameter(args, index, opened.movie, found)) return e;
    if (!found) return 0;
    const media::Status s = need == PcmNeed::kLittleEndian ? EnsureLittleEndianPcm(opened) : EnsurePcm(opened);
    if (s) {
        found = false;
        return s;
    }
    sound = std::move(opened);
    return 0;
}

media::Status RenderResult(media::Movie&& edited, const media::RenderOptions& options, SoundMovie& result,
                           RenderStep& step) {
    step = RenderStep::kWriting;
    const media::Track* sound = edited.FirstSoundTrack();
    if (!sound) return media::MediaFailure(util::kInvalidTrack, "the movie has no sound track");
    if (sound->media.Descriptions().empty()) return media::MediaFailure(util::kInvalidMedia, "the sound track has no media");
    SoundMovie rendered;
    const media::OutputFormat format = media::CdQualityWav();
    if (media::RendersAsCopy(edited, format, options)) {
        rendered.movie = std::move(edited);
    } else if (media::MixLengthKnown(edited, format)) {
        // Mixed as the result is read: nothing of it is held or written before it is stored.
        if (media::Status s = media::MixOnReadMovie(std::move(edited), options, rendered.movie)) return s;
    } else if (media::StatedMixFrames(edited, format) <= kLargestMixInMemory) {
        // A resampler or decoder decides the length, which the result's media must state up front.
        if (media::Status s = media::RenderToMemory(edited, options, rendered.movie)) return s;
    } else {
        // Too long to hold: it goes to disk and is read from there.
        step = RenderStep::kTemporaryFile;
        if (media::Status s = TemporaryFile::Create(".wav", rendered.backing)) return s;
        step = RenderStep::kWriting;
        if (media::Status s = WriteMovieAsWav(edited, rendered.backing.Path(), options)) return s;
        step = RenderStep::kReopening;
        if (media::Status s = media::MovieFromFile(rendered.backing.Path(), rendered.movie)) return s;
    }
    result = std::move(rendered);
    return util::kNoError;
}

std::optional<fmapi::Outcome> OpenTwoSoundParameters(const FMX_DataVect* args, SoundMovie& first, SoundMovie& second) {
    if (int32_t e = OpenSoundParameter(args, 0, first)) return StepFailure(e, "Could not get parameter #1 as sound.");
    if (int32_t e = OpenSoundParameter(args, 1, second)) return StepFailure(e, "Could not get parameter #2 as sound.");
    return std::nullopt;
}

fmapi::Outcome StepFailure(int32_t code, std::string_view message) {
    if (code == util::kMemoryFull && media::TakeSoundTooLarge()) message = "The sound is too large.";
    return fmapi::Outcome::Failure(code, std::string(message));
}

}  // namespace vd::sound
