// The information report on a sound: its file format, then for every audio track the track's
// volume, duration and dates, its media, and each sample description. Lines end with "\r"; the
// indentation (none, two, four, six blanks) is the level, which Vandrel_ExtractInfo walks.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/movie.h"

#include <cstddef>
#include <string>

namespace vd::sound {

// The report's size limit: the longest text the plug-in hands the host in one piece. A longer
// report (a file with dozens of tracks) is cut there rather than refused, so its first tracks can
// still be read.
inline constexpr size_t kSoundReportCapacity = 32767;

// The report, at most capacity bytes. kNoSoundTrack when the movie has no audio track; the movie
// layer's code when the movie's format cannot be had.
//
// Every track block is headed "Track 1": the report has always numbered each track as the first
// of those still to report, and scripts read reports by that label. The modification line of a
// track repeats its creation date for the same reason.
//
// The bit rate is the one the file states for its stream, in kilobits (1000 bits) per second,
// rounded; for uncompressed PCM, which states none, it is rate x channels x bits. "N/A" when a
// compressed stream states none.
media::Status SoundInfoReport(const media::Movie& movie, std::string& report,
                              size_t capacity = kSoundReportCapacity);

}  // namespace vd::sound
