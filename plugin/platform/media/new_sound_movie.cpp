#include "platform/media/new_sound_movie.h"

#include <new>

namespace vd::media {

Status NewMemorySoundMovie(int32_t mediaTimeScale, Movie& movie) {
    if (mediaTimeScale <= 0) return MediaFailure(util::kBadParameter, "a sound media needs a positive time scale");
    try {
        Movie made;
        made.dataReference.kind = DataReference::Kind::kMemory;
        made.AddTrack(Characteristic::kAudio, Media(kSoundMediaType, mediaTimeScale));
        movie = std::move(made);
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory for a new movie");
    }
    return util::kNoError;
}

Status NewEmptySoundMovie(Movie& movie) {
    Movie made;
    if (Status s = NewMemorySoundMovie(44100, made)) return s;
    const uint8_t silentFrame[4] = {};
    Track& track = made.TrackAt(0);
    if (Status s = track.media.AppendSamples(PcmSoundDescription(kFormatSowt, 2, 16, 44100), silentFrame,
                                             sizeof silentFrame, 1))
        return s;
    track.InsertMedia(0);
    movie = std::move(made);
    return util::kNoError;
}

}  // namespace vd::media
