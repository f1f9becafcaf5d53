#include "platform/media/selection.h"

#include "platform/media/mac_time.h"

#include <algorithm>
#include <new>

namespace vd::media {

namespace {

// The runs of media frames [first, first + count) of a media.
Status CopyRuns(const Media& from, int64_t first, int64_t count, Media& to) {
    int64_t runStart = 0;
    for (const auto& run : from.Runs()) {
        const int64_t runEnd = runStart + run.frameCount;
        const int64_t a = std::max(first, runStart), b = std::min(first + count, runEnd);
        if (a < b) {
            SampleRun piece = run;
            piece.firstFrame = run.firstFrame + (a - runStart);
            piece.frameCount = b - a;
            if (Status s = to.AppendRun(piece, from.Descriptions()[size_t(run.descriptionIndex - 1)])) return s;
        }
        runStart = runEnd;
    }
    return util::kNoError;
}

Media EmptyLike(const Media& media) {
    Media copy(media.mediaType, media.timeScale);
    copy.creationTime = media.creationTime;
    copy.language = media.language;
    copy.quality = media.quality;
    return copy;
}

bool SameTiming(const Track& a, const Track& b) {
    if (a.media.timeScale != b.media.timeScale || a.enabled != b.enabled || a.volume != b.volume) return false;
    if (a.media.Descriptions().empty() || b.media.Descriptions().empty()) return false;
    return a.media.Descriptions().front() == b.media.Descriptions().front();
}

}  // namespace

Status CopyMovieSelection(const Movie& source, const TimeRange& range, Movie& copy) {
    const int32_t scale = range.scale == 0 ? source.timeScale : range.scale;
    if (range.start < 0 || range.duration < 0 || scale < 0)
        return MediaFailure(util::kInvalidTime, "a selection cannot start or last below 0");
    try {
        Movie made;
        made.timeScale = source.timeScale;
        made.dataReference = source.dataReference;
        made.importerSubtype = source.importerSubtype;
        const int64_t movieDuration = source.Duration();
        const int64_t start = std::min(ConvertTimeScale(range.start, scale, source.timeScale), movieDuration);
        const int64_t end = std::min(ConvertTimeScale(range.start, scale, source.timeScale) +
                                         ConvertTimeScale(range.duration, scale, source.timeScale),
                                     movieDuration);
        for (const Track* track : source.TracksWith(Characteristic::kAudio)) {
            if (!track->MediaInserted()) continue;
            // The range in the track's media frames, converted from the caller's own scale so
            // that 16.16 seconds select to the frame, not to the 600th of a second.
            const int64_t offsetFrames = ConvertTimeScale(track->MovieOffset(), source.timeScale, track->media.timeScale);
            const int64_t firstFrame = ConvertTimeScale(range.start, scale, track->media.timeScale);
            int64_t lastFrame = end >= movieDuration
                                    ? INT64_MAX
                                    : firstFrame + ConvertTimeScale(range.duration, scale, track->media.timeScale);
            if (start >= movieDuration) lastFrame = firstFrame;
            const int64_t from = std::max<int64_t>(0, firstFrame - offsetFrames);
            const int64_t to = std::min(track->media.Duration(), lastFrame - offsetFrames);
            Track& added = made.AddTrack(track->characteristic, EmptyLike(track->media));
            added.enabled = track->enabled;
            added.volume = track->volume;
            if (to > from)
                if (Status s = CopyRuns(track->media, from, to - from, added.media)) return s;
            // A track that began inside the range keeps its distance from the range's start.
            added.InsertMedia(std::max<int64_t>(0, track->MovieOffset() - start));
            if (added.media.Descriptions().empty())
                for (const auto& d : track->media.Descriptions()) added.media.AddDescription(d);
        }
        copy = std::move(made);
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory for the selection");
    }
    return util::kNoError;
}

Status AddMovieSelection(Movie& destination, const Movie& source, const TimeRange& range) {
    Movie selection;
    if (Status s = CopyMovieSelection(source, range, selection)) return s;
    const int64_t end = destination.Duration();
    try {
        for (size_t i = 0; i < selection.TrackCount(); ++i) {
            Track& piece = selection.TrackAt(i);
            if (piece.media.Duration() == 0) continue;
            Track* join = nullptr;
            for (Track* candidate : destination.TracksWith(Characteristic::kAudio))
                if (candidate->MediaInserted() && candidate->Duration(destination.timeScale) == end &&
                    piece.MovieOffset() == 0 && SameTiming(*candidate, piece))
                    join = candidate;
            if (join) {
                for (const auto& run : piece.media.Runs())
                    if (Status s = join->media.AppendRun(run, piece.media.Descriptions()[size_t(run.descriptionIndex - 1)]))
                        return s;
                join->modificationTime = join->media.modificationTime = destination.modificationTime = MacSecondsNow();
                continue;
            }
            const int64_t offset = end + ConvertTimeScale(piece.MovieOffset(), selection.timeScale, destination.timeScale);
            Track& added = destination.AddTrack(piece.characteristic, std::move(piece.media));
            added.enabled = piece.enabled;
            added.volume = piece.volume;
            added.InsertMedia(offset);
        }
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory to add the selection");
    }
    return util::kNoError;
}

}  // namespace vd::media
