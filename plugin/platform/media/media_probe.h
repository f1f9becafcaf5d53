// Whether the media layer can open a file as a movie (a sound or a picture track at least), and
// whether it has a picture to show.
#pragma once

#include "platform/media/errors.h"

#include <string>

namespace vd::media {

struct MediaProbe {
    bool hasSound = false;
    bool hasVisual = false;  // a video stream that is not just a cover picture
};

// 0 with the probe; util::kNoCodec (-2003) for a file no demuxer takes or one without sound or
// picture; the file's own status for one that cannot be read at all (-43, -54, -1302).
Status ProbeMediaFile(const std::string& path, MediaProbe& probe);

}  // namespace vd::media
