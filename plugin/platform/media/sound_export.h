// Converting a movie's sound into a file of an exporter's format (exporters.h): the movie is
// mixed block by block (block_source.h) at the settings' rate and channels, encoded and written
// through a temporary file beside the target, which replaces the target only once it is complete.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/export_settings.h"
#include "platform/media/movie.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vd::media {

// util::kNoComponent for a subtype no installed exporter has; util::kBadParameter for settings the
// exporter cannot take (a sample size it does not write); util::kNoSoundTrack for a movie without
// sound; the encoder's or the file's failure otherwise. The target is untouched on failure.
//
// With `stored`, the written file's sound is also handed back as a container stores sounds:
// what ConvertToMono8 makes of the file's sound at stored->rate, appended to *stored->out. A
// compressed sound is decoded for it on a second thread while it is encoded, so that it is ready
// when the file is, without decoding the file again.
struct StoredSoundRequest {
    int32_t rate = 44100;
    uint64_t maxBytes = 0;
    std::vector<uint8_t>* out = nullptr;
};

Status ExportSound(const Movie& movie, const ExportSettings& settings, const std::string& target,
                   const StoredSoundRequest* stored = nullptr);

}  // namespace vd::media
