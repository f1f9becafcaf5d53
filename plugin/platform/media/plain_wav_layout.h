// The header of a plain PCM WAV file, read by ourselves: where the samples lie and in which of the
// layouts we read without a media library. Everything it does not recognise (compressed samples,
// other sample sizes, RF64, a header that does not add up) answers false and is left to the library.
#pragma once

#include <cstdint>

namespace vd::media {

struct PlainWavLayout {
    const char* codecName = nullptr;  // the library's name for the samples ("pcm_s16le" ...)
    int channels = 0;
    int rate = 0;
    int64_t dataOffset = 0;
    int64_t dataSize = 0;             // never past the end of the file
};

// The layout of the WAV file open on fd, or false when it is not a plain PCM WAV file.
bool ReadPlainWavLayout(int fd, int64_t fileSize, PlainWavLayout& layout);

}  // namespace vd::media
