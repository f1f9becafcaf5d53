// The status codes of the movie layer and the one place where FFmpeg's and the system's errors
// become them. The codes are the Mac media framework's and Memory Manager's own, so the sound
// functions pass them to the message table unchanged.
#pragma once

#include <cstdint>
#include <string>

namespace vd::media {

using Status = int16_t;

inline constexpr Status kNoError = 0;
inline constexpr Status kUnimplemented = -4;        // unimpErr: a sample layout we do not convert
inline constexpr Status kDiskFull = -34;            // dskFulErr
inline constexpr Status kIoError = -36;             // ioErr: the file system failed otherwise
inline constexpr Status kEndOfFile = -39;           // eofErr: data ends before its header said
inline constexpr Status kFileNotFound = -43;        // fnfErr
inline constexpr Status kBadParameter = -50;        // paramErr
inline constexpr Status kPermissionDenied = -54;    // permErr
inline constexpr Status kUserCanceled = -128;       // userCanceledErr: the process was told to stop
inline constexpr Status kMemoryFull = -108;         // memFullErr, also for sizes too large to hold
inline constexpr Status kBadSoundFileFormat = -208; // badFileFormat: sound data corrupt mid-way
inline constexpr Status kNotAFile = -1302;          // notAFileErr: a folder where a file belongs
inline constexpr Status kFileTooLarge = -1309;      // fileBoundsErr: past what a WAV header holds
inline constexpr Status kBadSampleFormat = -2001;   // a sample format the caller cannot process
inline constexpr Status kNoCodec = -2003;           // cantFindHandler: no decoder or demuxer
inline constexpr Status kNoExporter = -2005;        // badComponentType: no muxer or encoder
inline constexpr Status kInvalidMedia = -2008;
inline constexpr Status kInvalidTrack = -2009;
inline constexpr Status kInvalidMovie = -2010;      // a movie object that cannot do what was asked
inline constexpr Status kInvalidTime = -2015;       // a time or range outside the movie
inline constexpr Status kMovieNotFound = -2048;     // noMovieFound: not a readable media file
inline constexpr Status kFeatureUnsupported = -2053;
inline constexpr Status kNoSoundTrack = -2055;      // noSoundTrackInMovieErr

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

// kMemoryFull for a sound beyond kMaxSoundBytes. TakeSoundTooLarge() tells this refusal apart from
// memory running out, so that the functions can say which it was; it answers once per refusal.
Status SoundTooLarge(std::string detail);
bool TakeSoundTooLarge();

// kUserCanceled once the process was told to stop (Ctrl-C at a prompt that goes on), else kNoError:
// the loops that touch a whole sound look at it once a block.
Status StopRequestStatus();

// The detail text of the last failure on this thread ("" after none).
const std::string& LastMediaErrorDetail();

}  // namespace vd::media
