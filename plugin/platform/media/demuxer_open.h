// A media file's demuxer opened with its streams found: what the probe and the reference-movie
// writer start from. Only for use inside platform/media (it hands out an FFmpeg object).
#pragma once

#include "platform/media/av_owners.h"
#include "platform/media/errors.h"

#include <string>

namespace vd::media {

// FFmpeg started and the file opened; the status of the first step that failed.
Status OpenDemuxer(const std::string& path, InputFormatPtr& format);

}  // namespace vd::media
