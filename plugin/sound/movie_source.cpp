#include "sound/movie_source.h"

#include "platform/fs/finder_info.h"
#include "platform/media/sample_reading.h"

#include <array>
#include <cctype>

namespace vd::sound {

media::Status FileOfMovie(const media::Movie& movie, std::string& path) { return movie.FilePath(path); }

media::Status SourceFormatCode(const media::Movie& movie, media::FourCharCode& subtype) {
    if (movie.dataReference.kind != media::DataReference::Kind::kFile && movie.TrackCount() == 0)
        return media::MediaFailure(util::kInvalidTrack, "the movie has no track");
    return movie.SourceFormat(subtype);
}

bool IsMp3FileType(uint32_t type) {
    constexpr std::array kTypes{media::FourCC("MPG3"), media::FourCC("MP3 "), media::FourCC("MP3!"),
                                media::FourCC("mp3!"), media::FourCC("mpg3"), media::FourCC("Mp3 ")};
    for (uint32_t t : kTypes)
        if (t == type) return true;
    return false;
}

bool IsMp3File(const std::string& path) {
    // The name, not the whole path: a file called "mp3" is judged by its type code alone.
    const std::string name = path.substr(path.find_last_of('/') + 1);
    if (name.size() > 3) {
        std::string ending = name.substr(name.size() - 3);
        for (char& c : ending) c = char(std::toupper(static_cast<unsigned char>(c)));
        if (ending == "MP3") return true;
    }
    return IsMp3FileType(platform::fs::ReadFinderInfo(path).type);
}

bool IsMp3(const media::Movie& movie) {
    std::string path;
    if (FileOfMovie(movie, path) != util::kNoError) return false;
    return IsMp3File(path);
}

media::Status ReadAllSamples(const media::Media& media, std::vector<uint8_t>& bytes, int64_t& frames) {
    if (media::Status s = media::ReadStoredBytes(media, 0, media.Duration(), bytes)) return s;
    frames = media.Duration();
    return util::kNoError;
}

}  // namespace vd::sound
