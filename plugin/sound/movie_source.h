// What lies behind a sound movie: the file it was opened from, the importer that read it, whether
// it is an MP3, and all of its samples at once.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/four_char_code.h"
#include "platform/media/movie.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vd::sound {

// The file that holds the movie. -2009 without a track; -2053 for a movie that lives in memory.
media::Status FileOfMovie(const media::Movie& movie, std::string& path);

// The subtype of the importer that read the movie's file ('WAVE', 'MP3 ' ...); -2053 for a
// movie that was not read from a file.
media::Status SourceFormatCode(const media::Movie& movie, media::FourCharCode& subtype);

// The file-type codes that mark a file as MP3.
bool IsMp3FileType(uint32_t type);

// An MP3 by its file name (longer than three characters and ending in "mp3" in any case) or by the type
// code of its Finder information. Any failure on the way means "no".
bool IsMp3File(const std::string& path);
bool IsMp3(const media::Movie& movie);

// Every stored sample byte of a PCM media, and the number of frames. The media layer's
// -2001 for compressed sound; -108 beyond what one read may hold.
media::Status ReadAllSamples(const media::Media& media, std::vector<uint8_t>& bytes, int64_t& frames);

}  // namespace vd::sound
