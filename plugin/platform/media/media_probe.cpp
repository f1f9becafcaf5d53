#include "platform/media/media_probe.h"

#include "platform/media/demuxer_open.h"

#include <cerrno>

#include <sys/stat.h>

namespace vd::media {

Status ProbeMediaFile(const std::string& path, MediaProbe& probe) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) return StatusFromErrno(errno, MediaStep::kOpening);
    if (S_ISDIR(info.st_mode)) return MediaFailure(util::kNotAFile, path + " is a folder");
    InputFormatPtr format;
    if (OpenDemuxer(path, format) != util::kNoError) return MediaFailure(util::kNoCodec, path + " is no media file");
    MediaProbe found;
    for (unsigned i = 0; i < format->nb_streams; ++i) {
        const AVStream& stream = *format->streams[i];
        found.hasSound |= stream.codecpar->codec_type == AVMEDIA_TYPE_AUDIO;
        found.hasVisual |= stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO && !(stream.disposition & AV_DISPOSITION_ATTACHED_PIC);
    }
    if (!found.hasSound && !found.hasVisual) return MediaFailure(util::kNoCodec, path + " holds no sound or picture");
    probe = found;
    return util::kNoError;
}

}  // namespace vd::media
