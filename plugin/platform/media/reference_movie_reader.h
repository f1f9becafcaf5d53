// Reading back what a reference movie's sound track refers to: the first enabled sound track's
// first data reference of kind 'alis', followed to the file it names.
#pragma once

#include "platform/media/errors.h"

#include <string>

namespace vd::media {

// 0 with referred set to the file the movie's sound plays from; 0 with referred empty when that
// reference is the movie itself; util::kInvalidTrack (-2009) without an enabled sound track;
// util::kInvalidMedia (-2008) when the track has no alias data reference; util::kFileNotFound when
// the alias leads nowhere; util::kMovieNotFound for a file that is no QuickTime movie.
Status ReferredSoundFile(const std::string& moviePath, std::string& referred);

}  // namespace vd::media
