// FFmpeg's errors and the errno values of our own file work, mapped to the system's codes:
//
//   FFmpeg / errno                          opening            reading            writing
//   AVERROR(ENOENT), ENOTDIR                -43 fnfErr         -43                -43
//   AVERROR(EACCES), EPERM, EROFS           -54 permErr        -54                -54
//     (but a bare -1 from FFmpeg, which equals AVERROR(EPERM), is treated as damaged data)
//   AVERROR(ENOMEM)                         -108 memFullErr    -108               -108
//   AVERROR(ENOSPC), EDQUOT                 -34 dskFulErr      -34                -34
//   AVERROR(EISDIR)                         -1302 notAFileErr  -1302              -1302
//   AVERROR(EFBIG)                          -1309 fileBounds   -1309              -1309
//   AVERROR(EINVAL)                         -2048 noMovie      -50 paramErr       -50
//   AVERROR_INVALIDDATA, AVERROR_EOF        -2048 noMovie      -208 badFileFormat -36 ioErr
//   AVERROR_DECODER/DEMUXER_NOT_FOUND,
//     AVERROR_STREAM_NOT_FOUND              -2003 cantFindHandler
//   AVERROR_ENCODER/MUXER_NOT_FOUND         -2005 badComponentType (no exporter for the format)
//   AVERROR_PATCHWELCOME, AVERROR(ENOSYS)   -4 unimpErr
//   anything else                           -2048 noMovie      -36 ioErr          -36 ioErr
//
// EINVAL while opening comes from demuxers that give up on what they were handed (a cut-off
// MP3): for the user that is "not a movie" too.
// EOF while opening means the file ended inside its header: for the user that is "not a movie"
// like any other unreadable file. While reading it means the samples stop before the header said.
#include "platform/media/errors.h"

#include "platform/common/interrupt_cleanup.h"

extern "C" {
#include <libavutil/error.h>
}

#include <cerrno>
#include <cstring>
#include <utility>

namespace vd::media {

namespace {

thread_local std::string lastDetail;
thread_local bool lastWasTooLarge = false;

Status DamagedDataStatus(MediaStep step) {
    switch (step) {
        case MediaStep::kOpening: return util::kMovieNotFound;
        case MediaStep::kReading: return util::kBadSoundFileFormat;
        case MediaStep::kWriting: return util::kIoError;
    }
    return util::kIoError;
}

Status MapAvError(int avError, MediaStep step) {
    switch (avError) {
        case AVERROR(ENOENT):
        case AVERROR(ENOTDIR): return util::kFileNotFound;
        case AVERROR(EACCES):
        case AVERROR(EPERM):
        case AVERROR(EROFS): return util::kPermissionDenied;
        case AVERROR(ENOMEM): return util::kMemoryFull;
        case AVERROR(ENOSPC):
        case AVERROR(EDQUOT): return util::kDiskFull;
        case AVERROR(EISDIR): return util::kNotAFile;
        case AVERROR(EFBIG): return util::kFileTooLarge;
        case AVERROR(EINVAL): return step == MediaStep::kOpening ? util::kMovieNotFound : util::kBadParameter;
        case AVERROR_INVALIDDATA:
        case AVERROR_EOF: return DamagedDataStatus(step);
        case AVERROR_DECODER_NOT_FOUND:
        case AVERROR_DEMUXER_NOT_FOUND:
        case AVERROR_STREAM_NOT_FOUND: return util::kNoCodec;
        case AVERROR_ENCODER_NOT_FOUND:
        case AVERROR_MUXER_NOT_FOUND: return util::kNoComponent;
        case AVERROR_PATCHWELCOME:
        case AVERROR(ENOSYS): return util::kUnimplemented;
        default: return step == MediaStep::kOpening ? util::kMovieNotFound : util::kIoError;
    }
}

}  // namespace

Status StatusFromAvError(int avError, MediaStep step) {
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(avError, text, sizeof text);
    lastDetail = text;
    lastWasTooLarge = false;
    // -1 is AVERROR(EPERM) by value, but FFmpeg's readers also answer a bare -1 for a header they
    // give up on (an AIFF claiming 0xFFFFFFFF frames): that is damage, not a permission. The
    // library's own file access reports permissions as EACCES.
    if (avError == -1) {
        lastDetail = "the library could not read the header";
        return DamagedDataStatus(step);
    }
    return MapAvError(avError, step);
}

Status StatusFromErrno(int errnoValue, MediaStep step) {
    // The text av_strerror gives for AVERROR(errno) too.
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    lastDetail = strerror_r(errnoValue, text, sizeof text);
    lastWasTooLarge = false;
    return MapAvError(AVERROR(errnoValue), step);
}

Status MediaFailure(Status status, std::string detail) {
    lastDetail = std::move(detail);
    lastWasTooLarge = false;
    return status;
}

Status SoundTooLarge(std::string detail) {
    lastDetail = std::move(detail);
    lastWasTooLarge = true;
    return util::kMemoryFull;
}

bool TakeSoundTooLarge() { return std::exchange(lastWasTooLarge, false); }

const std::string& LastMediaErrorDetail() { return lastDetail; }

Status StopRequestStatus() {
    return platform::StopRequested() ? MediaFailure(util::kUserCancelled, "the process was told to stop") : util::kNoError;
}

}  // namespace vd::media
