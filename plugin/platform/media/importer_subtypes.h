// The movie importer a file would have gone through on the Mac, named by its component subtype
// ('WAVE', 'AIFF', 'MP3 ', 'M4A ' ...): the sound functions branch on it (fading converts 'M4A '
// first) and the information report prints it.
#pragma once

#include "platform/media/four_char_code.h"

#include <string_view>

namespace vd::media {

// demuxerName: FFmpeg's input format name; majorBrand: the ISO/QuickTime brand of an MP4-family
// file ("" for others); hasVisual: whether the file has a video stream; audioCodec: FFmpeg's name
// of the first sound stream's codec ("" when unknown). A demuxer without a Mac importer is named
// by its own name ("wv" gives 'WV  '), so a report says what the file is.
FourCharCode ImporterSubtypeFor(std::string_view demuxerName, std::string_view majorBrand, bool hasVisual,
                                std::string_view audioCodec = "");

}  // namespace vd::media
