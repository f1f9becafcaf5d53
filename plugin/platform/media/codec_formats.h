// Which four-character data format a sound description carries for each FFmpeg codec: one table,
// read by the file opener and by anything that needs to know a codec's bit depth or byte order.
#pragma once

#include "platform/media/four_char_code.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace vd::media {

struct CodecFormat {
    const char* codecName;     // FFmpeg's codec name (avcodec_get_name)
    FourCharCode dataFormat;
    int16_t sampleSize;        // bits per sample; 0 = as the stream says (compressed formats)
    bool bigEndian;
    bool pcm;                  // stored samples the layer addresses and converts by itself
};

std::span<const CodecFormat> CodecFormats();

// The table's row for a codec, or nullptr when the codec is not in it.
const CodecFormat* FindCodecFormat(std::string_view codecName);

}  // namespace vd::media
