// An exporter's settings as the plug-in keeps them, and the bytes they are kept as inside a
// settings text ("<hex>" + packed bytes + "</hex>"). The layout, all numbers big-endian:
//
//   offset  size  field
//        0     4  'vdex', the mark of these settings
//        4     2  layout version, 1
//        6     2  0 (reserved)
//        8     4  the exporter's subtype ('WAVE', 'MP3 ' ...)
//       12     4  sample rate in Hz; 0 = the sound's own (or the nearest the encoder takes)
//       16     2  channels; 0 = the sound's own (mono or stereo; more become stereo)
//       18     2  sample size in bits (PCM and FLAC; 0 elsewhere)
//       20     4  bit rate in bits per second; 0 = none (the quality decides)
//       24     4  quality on the encoder's own scale (MP3 VBR 0-9, Vorbis 0-10); -1 = none
//       28     4  compression level (FLAC 0-12); -1 = the encoder's default
//
// 32 bytes in all. A later version may append fields; this one reads only its own.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/four_char_code.h"

#include <cstdint>
#include <vector>

namespace vd::media {

struct ExportSettings {
    FourCharCode subtype = 0;
    int32_t sampleRate = 0;
    int16_t channels = 0;
    int16_t sampleSize = 0;
    int32_t bitRate = 0;
    int32_t quality = -1;
    int32_t compressionLevel = -1;

    bool operator==(const ExportSettings&) const = default;
};

inline constexpr size_t kExportSettingsSize = 32;

std::vector<uint8_t> ExportSettingsBytes(const ExportSettings& settings);

// util::kBadParameter for bytes that are not settings of this layout (too short, another mark or
// version, a negative rate or channel count).
Status ExportSettingsFromBytes(const std::vector<uint8_t>& bytes, ExportSettings& settings);

}  // namespace vd::media
