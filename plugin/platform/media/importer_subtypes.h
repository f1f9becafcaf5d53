// The movie importer a file would have gone through on the Mac, named by its component subtype
// ('WAVE', 'AIFF', 'MP3 ', 'M4A ' ...): the sound functions branch on it (fading converts 'M4A '
// first) and the information report prints it.
#pragma once

#include "platform/media/four_char_code.h"

#include <string_view>

namespace vd::media {

// demuxerName: FFmpeg's input format name; majorBrand: the ISO/QuickTime brand of an MP4-family
// file ("" for others); hasVisual: whether the file has a video stream. 0 when no importer fits.
FourCharCode ImporterSubtypeFor(std::string_view demuxerName, std::string_view majorBrand, bool hasVisual);

}  // namespace vd::media
