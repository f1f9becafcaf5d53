#include "sound/editing/selection_edits.h"

#include "platform/media/selection.h"

namespace vd::sound {

namespace {

media::TimeRange Whole(const media::Movie& movie) { return {0, movie.Duration(), 0}; }

}  // namespace

media::Status AppendSounds(const media::Movie& first, const media::Movie& second, media::Movie& joined) {
    media::Movie copy;
    if (media::Status s = media::CopyMovieSelection(first, Whole(first), copy)) return s;
    if (media::Status s = media::AddMovieSelection(copy, second, Whole(second))) return s;
    joined = std::move(copy);
    return util::kNoError;
}

media::Status ExtractPart(const media::Movie& sound, uint32_t start, uint32_t end, media::Movie& part) {
    const media::TimeRange range{int64_t(start), int64_t(end) - int64_t(start), media::kSecondsFixedScale};
    return media::CopyMovieSelection(sound, range, part);
}

}  // namespace vd::sound
