#include "sound/editing/wav_conversion.h"

#include "platform/media/movie_from_file.h"

#include <initializer_list>

namespace vd::sound {

namespace {

media::Status FirstSoundFormat(const media::Movie& movie, media::FourCharCode& format) {
    const media::Track* track = movie.FirstSoundTrack();
    if (!track) return media::MediaFailure(util::kInvalidTrack, "the movie has no sound track");
    if (track->media.Descriptions().empty()) return media::MediaFailure(util::kInvalidMedia, "the sound track has no media");
    format = track->media.Descriptions().front().dataFormat;
    return util::kNoError;
}

media::Status EnsureFormat(SoundMovie& sound, std::initializer_list<media::FourCharCode> accepted) {
    media::FourCharCode format = 0;
    if (media::Status s = FirstSoundFormat(sound.movie, format)) return s;
    for (media::FourCharCode ok : accepted)
        if (format == ok) return util::kNoError;
    return ConvertMovieToWav(sound);
}

}  // namespace

media::Status WriteMovieAsWav(const media::Movie& movie, const std::string& target,
                              const media::RenderOptions& options) {
    media::FourCharCode format = 0;
    if (media::Status s = FirstSoundFormat(movie, format)) return s;
    return media::RenderMovie(movie, target, media::CdQualityWav(), options);
}

media::Status ConvertMovieToWav(SoundMovie& sound) {
    TemporaryFile wav;
    if (media::Status s = TemporaryFile::Create(".wav", wav)) {
        sound.temporaryFileFailed = true;
        return s;
    }
    if (media::Status s = WriteMovieAsWav(sound.movie, wav.Path())) return s;
    media::Movie reopened;
    if (media::Status s = media::MovieFromFile(wav.Path(), reopened)) return s;
    sound.movie = std::move(reopened);  // the old movie goes first, then the file it may have lived in
    sound.backing = std::move(wav);
    return util::kNoError;
}

media::Status EnsurePcm(SoundMovie& sound) {
    return EnsureFormat(sound, {media::kFormatSowt, media::kFormatTwos, media::kFormatRaw});
}

media::Status EnsureLittleEndianPcm(SoundMovie& sound) { return EnsureFormat(sound, {media::kFormatSowt}); }

}  // namespace vd::sound
