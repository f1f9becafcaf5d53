#include "sound/editing/fade.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vd::sound {

namespace {

constexpr float kFixedOne = 65536.0f;
constexpr float kTopVolume = 255.0f;  // the loudest a ramp gets: one step short of full volume

// Movie time units back to 16.16 seconds, saturating.
uint32_t FixedSeconds(float units, float scale) {
    const double fixed = std::trunc(double(units) / double(scale) * double(kFixedOne));
    if (!(fixed > 0)) return 0;
    return fixed >= double(util::kMaxFixedTime) ? util::kMaxFixedTime : uint32_t(fixed);
}

}  // namespace

media::Status SanitizeFade(const FadeRequest& request, int64_t movieDuration, int32_t timeScale, Fade& fade) {
    if (timeScale < 1) return media::MediaFailure(util::kBadParameter, "the movie has no time scale");
    const float scale = float(timeScale);
    const float duration = float(movieDuration);
    auto units = [&](const util::SignedFixedTime& t) {
        const float magnitude = float(t.magnitude) / kFixedOne * scale;
        return t.negative ? duration - magnitude : magnitude;
    };
    float start = units(request.start), end = units(request.end);
    if (start < 0 || start > duration) start = 0;
    if (end < 0 || end > duration) end = duration;
    float level = request.level;
    if (!(level >= 0 && level <= 1)) level = request.fadeIn ? 0.0f : 1.0f;
    if (start > end) std::swap(start, end);

    fade.start = FixedSeconds(start, scale);
    fade.end = FixedSeconds(end, scale);
    const auto loudest = int16_t(kTopVolume * level);  // truncated
    fade.fromVolume = request.fadeIn ? 0 : loudest;
    fade.toVolume = request.fadeIn ? loudest : 0;
    return util::kNoError;
}

media::GainRamp FadeRamp(const Fade& fade, int16_t trackVolume) {
    // The ramp's volume takes the place of the track's, which the renderer applies already.
    const float perTrackVolume = trackVolume > 0 ? 1.0f / float(trackVolume) : 0.0f;
    return {fade.start / double(kFixedOne), fade.end / double(kFixedOne), float(fade.fromVolume) * perTrackVolume,
            float(fade.toVolume) * perTrackVolume};
}

media::Status FadeOptions(const media::Movie& movie, const Fade& fade, media::RenderOptions& options) {
    const media::Track* sound = movie.FirstSoundTrack();
    if (!sound) return media::MediaFailure(util::kInvalidTrack, "the movie has no sound track");
    for (size_t i = 0; i < movie.TrackCount(); ++i) {
        if (&movie.TrackAt(i) != sound) continue;
        options.trackRamps.assign(i + 1, std::nullopt);
        options.trackRamps[i] = FadeRamp(fade, sound->volume);
    }
    return util::kNoError;
}

}  // namespace vd::sound
