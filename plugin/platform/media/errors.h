// The one place where FFmpeg's and the system's errors become the movie layer's status codes
// (util/status_codes.h): the media framework's and Memory Manager's own, so the sound functions pass
// them to the message table unchanged.
#pragma once

#include <cstdint>
#include <string>

#include "util/status_codes.h"

namespace vd::media {

using util::Status;

// Where in its work the movie layer met the error: the same FFmpeg error means "this is no media
// file" while opening and "this sound is damaged" while reading samples.
enum class MediaStep { kOpening, kReading, kWriting };

// Maps an FFmpeg error (AVERROR(...) or AVERROR_...) to a status code; the library's own text
// (av_strerror) is kept as the detail of the calling thread's last media error.
Status StatusFromAvError(int avError, MediaStep step);

// errno values from our own file work go through the same table (without FFmpeg, which such work
// must not load).
Status StatusFromErrno(int errnoValue, MediaStep step);

// Records a status the layer decided itself, with a detail text for logs and messages.
Status MediaFailure(Status status, std::string detail);

// The most bytes a sound may take once decoded or converted: what one synthesised tone may hold,
// and what a rendered result or a conversion may write. A header that claims more (a WAV of 1 Hz
// whose few kilobytes turn into hours at 44100 Hz) is refused before anything is allocated or
// written, rather than after minutes of work and gigabytes of disk.
inline constexpr uint64_t kMaxSoundBytes = uint64_t(1) << 30;

// util::kMemoryFull for a sound beyond kMaxSoundBytes. TakeSoundTooLarge() tells this refusal apart from
// memory running out, so that the functions can say which it was; it answers once per refusal.
Status SoundTooLarge(std::string detail);
bool TakeSoundTooLarge();

// util::kUserCancelled once the process was told to stop (Ctrl-C at a prompt that goes on), else util::kNoError:
// the loops that touch a whole sound look at it once a block.
Status StopRequestStatus();

// The detail text of the last failure on this thread ("" after none).
const std::string& LastMediaErrorDetail();

}  // namespace vd::media
