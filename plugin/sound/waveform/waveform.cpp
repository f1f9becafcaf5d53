#include "sound/waveform/waveform.h"

#include "platform/graphics/graphics_warm_up.h"
#include "platform/media/sample_reading.h"
#include "platform/media/selection.h"
#include "platform/media/sound_description.h"
#include "sound/sound_movie.h"
#include "sound/editing/wav_conversion.h"
#include "util/status_codes.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace vd::sound {

namespace {


// Frames read at a time: large enough that reading costs what copying the bytes costs, small
// enough to stay in the cache while every band is drawn from it.
constexpr int64_t kBlockFrames = 1 << 16;

// The interval of the movie in a new movie; the movie itself when no interval was asked for.
media::Status SelectRange(media::Movie& movie, const WaveformRequest& request, SoundMovie& work) {
    if (!request.start && !request.end) {
        work.movie = std::move(movie);
        return util::kNoError;
    }
    const auto scale = int64_t(media::kSecondsFixedScale);
    const int64_t start = request.start.value_or(0);
    const int64_t end =
        request.end ? int64_t(*request.end) : media::ConvertTimeScale(movie.Duration(), movie.timeScale, scale);
    return media::CopyMovieSelection(movie, {start, end - start, int32_t(scale)}, work.movie);
}

// Removes every track but the sound track of the given index among the sound tracks.
void KeepOnlySoundTrack(media::Movie& movie, size_t keep) {
    size_t soundIndex = 0;
    for (size_t i = 0; i < movie.TrackCount();) {
        const bool sound = movie.TrackAt(i).characteristic == media::Characteristic::kAudio;
        if (sound && soundIndex++ == keep) {
            ++i;
            continue;
        }
        movie.RemoveTrack(i);
    }
}

// Only 16-bit PCM is drawn: 'sowt' as it is stored, 'twos' swapped.
int32_t CheckSampleFormat(const media::SampleDescription& d) {
    if (d.dataFormat == media::kFormatRaw) return util::kUnimplemented;
    if ((d.dataFormat != media::kFormatSowt && d.dataFormat != media::kFormatTwos) || d.sampleSize != 16) return -2001;
    return 0;
}

}  // namespace

int32_t CheckWaveformSize(int32_t width, int32_t height) {
    if (width < 1 || height < 1) return util::kBadParameter;
    if (width > platform::PixelBuffer::kMaxSide || height > platform::PixelBuffer::kMaxSide ||
        int64_t(width) * height > platform::PixelBuffer::kMaxPixels)
        return util::kMemoryFull;
    return 0;
}

WaveformOutcome DrawWaveform(media::Movie movie, const WaveformRequest& request,
                             std::optional<platform::PixelBuffer>& picture) {
    if (int32_t e = CheckWaveformSize(request.width, request.height)) return {e, ""};
    // The picture is encoded once the samples are drawn; the encoder starts meanwhile.
    platform::GraphicsWarmUp encoderStart;
    SoundMovie work;
    if (media::Status s = SelectRange(movie, request, work)) return {s, "Could not extract movie selection."};
    const size_t soundTracks = work.movie.TracksWith(media::Characteristic::kAudio).size();
    if (soundTracks == 0) return {util::kNoSoundTrack, ""};
    if (request.selection.track < 1 || size_t(request.selection.track) > soundTracks) return {util::kNoSuchTrack, ""};
    // Only the drawn track stays: converting to PCM renders every sound track into one, which
    // would mix the others into it and leave no second track to draw.
    KeepOnlySoundTrack(work.movie, size_t(request.selection.track - 1));
    if (media::Status s = EnsurePcm(work)) return {s, UnlessTemporaryFileFailed(work.temporaryFileFailed, "Could not convert sound.")};

    const media::Track* track = work.movie.FirstSoundTrack();
    if (!track) return {util::kNoSoundTrack, ""};
    const media::Media& media = track->media;
    if (media.Descriptions().empty()) return {util::kInvalidMedia, ""};
    const media::SampleDescription& description = media.Descriptions().front();
    if (int32_t e = CheckSampleFormat(description)) return {e, ""};

    const int32_t channels = description.numberOfChannels;
    std::vector<int32_t> drawn;
    if (request.selection.channel == WaveformSelection::kAllChannels) {
        for (int32_t c = 0; c < channels; ++c) drawn.push_back(c);
    } else if (request.selection.channel < channels) {
        drawn.push_back(request.selection.channel);
    } else {
        return {util::kBadChannel, ""};
    }
    if (drawn.empty()) return {util::kBadChannel, ""};
    if (!WaveformBands(request.height, int32_t(drawn.size())).Fit())
        return {util::kBadParameter, "The height in parameter #4 leaves no room to draw every channel."};

    picture = platform::PixelBuffer::Make(request.width, request.height);
    if (!picture) return {util::kMemoryFull, ""};
    const int64_t frames = media.Duration();
    WaveformPainter painter(*picture, std::move(drawn), channels, frames, request.colors);
    std::vector<int16_t> block;
    for (int64_t first = 0; first < frames; first += kBlockFrames) {
        if (media::Status s = media::ReadFramesInt16(media, first, kBlockFrames, block)) {
            picture.reset();
            return {s, "Could not display waveform."};
        }
        if (block.empty()) break;  // the sound ends before its stated length
        painter.Feed(block.data(), int64_t(block.size()) / channels);
    }
    return {};
}

}  // namespace vd::sound
