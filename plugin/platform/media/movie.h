// The movie: what every sound function works on. Time scale 600, tracks, a default data
// reference (the file it was opened from, or memory), dates, and the importer subtype of its file.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/four_char_code.h"
#include "platform/media/movie_time.h"
#include "platform/media/track.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vd::media {

struct DataReference {
    enum class Kind { kNone, kFile, kMemory };
    Kind kind = Kind::kNone;
    std::string path;  // kFile only
};

class Movie {
public:
    Movie();
    Movie(Movie&&) noexcept = default;
    Movie& operator=(Movie&&) noexcept = default;
    Movie(const Movie&) = delete;
    Movie& operator=(const Movie&) = delete;

    int32_t timeScale = kMovieTimeScale;
    uint32_t creationTime;
    uint32_t modificationTime;
    DataReference dataReference;
    FourCharCode importerSubtype = 0;  // 0 when the movie was not imported from a file

    // Adds a track and answers it; the reference stays valid while the track is in the movie.
    Track& AddTrack(Characteristic characteristic, Media media);
    void RemoveTrack(size_t index);
    size_t TrackCount() const { return tracks_.size(); }
    Track& TrackAt(size_t index) { return *tracks_[index]; }
    const Track& TrackAt(size_t index) const { return *tracks_[index]; }

    // The tracks with a characteristic, in movie order (1-based "track n with the characteristic").
    std::vector<Track*> TracksWith(Characteristic characteristic);
    std::vector<const Track*> TracksWith(Characteristic characteristic) const;
    // The first audio track: the sound of a sound movie. nullptr when there is none.
    const Track* FirstSoundTrack() const;
    Track* FirstSoundTrack();

    // The longest track, in the movie's time scale.
    int64_t Duration() const;

    // The file that holds the movie: the default data reference, else the file behind the first
    // track's samples. util::kNoSoundTrack / util::kInvalidTrack when there is no track, util::kFeatureUnsupported
    // when the movie lives in memory only.
    Status FilePath(std::string& path) const;

    // The importer subtype, or util::kFeatureUnsupported when the movie did not come from a file.
    Status SourceFormat(FourCharCode& subtype) const;

private:
    std::vector<std::unique_ptr<Track>> tracks_;
};

}  // namespace vd::media
