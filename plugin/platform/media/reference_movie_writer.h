// Writing a reference movie beside a sound file (reference_movie_layout.h): the sound's packets are
// found where its demuxer reads them, checked against the file's bytes, and described as the
// samples of a track that plays the file in place. Nothing of the sound is copied.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/reference_movie_layout.h"

#include <string>

namespace vd::media {

// The table of the file's first sound stream. util::kNoSoundTrack without one;
// util::kFeatureUnsupported for a coding a QuickTime sound track cannot name here (PCM, MP3, AAC,
// ALAC, mu-law and A-law can); util::kCorruptData when a packet is not where the demuxer says.
Status LinkedSoundOfFile(const std::string& source, LinkedSoundTable& table);

// Writes target (absolute) as a reference movie of source (absolute), through a hidden temporary
// name renamed into place at the end, so a failure leaves neither a partial file nor an old one
// changed. An existing target is replaced.
Status WriteReferenceMovie(const std::string& source, const std::string& target);

}  // namespace vd::media
