// Converting a movie's sound into a file of an exporter's format (exporters.h): the movie is
// mixed block by block (block_source.h) at the settings' rate and channels, encoded and written
// through a temporary file beside the target, which replaces the target only once it is complete.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/export_settings.h"
#include "platform/media/movie.h"

#include <string>

namespace vd::media {

// util::kNoComponent for a subtype no installed exporter has; util::kBadParameter for settings the
// exporter cannot take (a sample size it does not write); util::kNoSoundTrack for a movie without
// sound; the encoder's or the file's failure otherwise. The target is untouched on failure.
//
// With `written`, the file is also opened as a movie once complete, as MovieFromFile opens it; a
// compressed sound is then decoded on a second thread while it is encoded, so that the movie is
// ready without decoding the file again.
Status ExportSound(const Movie& movie, const ExportSettings& settings, const std::string& target,
                   Movie* written = nullptr);

}  // namespace vd::media
