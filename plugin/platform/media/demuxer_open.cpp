#include "platform/media/demuxer_open.h"

#include "platform/media/ffmpeg_functions.h"

namespace vd::media {

Status OpenDemuxer(const std::string& path, InputFormatPtr& format) {
    if (Status s = StartFfmpeg()) return s;
    AVFormatContext* raw = nullptr;  // avformat_open_input frees the context itself when it fails
    int rc = avformat_open_input(&raw, path.c_str(), nullptr, nullptr);
    if (rc < 0) return StatusFromAvError(rc, MediaStep::kOpening);
    format.reset(raw);
    if ((rc = avformat_find_stream_info(raw, nullptr)) < 0) return StatusFromAvError(rc, MediaStep::kOpening);
    return util::kNoError;
}

}  // namespace vd::media
