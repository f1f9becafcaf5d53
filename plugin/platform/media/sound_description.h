// A media's sample description: for sound the fields of the Mac SoundDescription record, which
// the information report prints and the editing functions test, plus what the record kept in
// extensions (byte order of 'fl32'/'in24'..., the exact rate, bit rate, frame size of video).
#pragma once

#include "platform/media/four_char_code.h"

#include <cstdint>

namespace vd::media {

inline constexpr FourCharCode kFormatSowt = FourCC("sowt");  // 16-bit signed little-endian
inline constexpr FourCharCode kFormatTwos = FourCC("twos");  // signed big-endian (8 or 16 bits)
inline constexpr FourCharCode kFormatRaw = FourCC("raw ");   // 8-bit unsigned, centre 128
inline constexpr FourCharCode kFormatFloat32 = FourCC("fl32");
inline constexpr FourCharCode kFormatFloat64 = FourCC("fl64");
inline constexpr FourCharCode kFormatInt24 = FourCC("in24");
inline constexpr FourCharCode kFormatInt32 = FourCC("in32");

// compressionID values of the record.
inline constexpr int16_t kNotCompressed = 0;
inline constexpr int16_t kVariableCompression = -2;

struct SampleDescription {
    // The SoundDescription record as stored in a movie (descriptor size 36).
    int32_t descriptorSize = 36;
    FourCharCode dataFormat = 0;
    int16_t dataReferenceIndex = 1;
    int16_t version = 0;
    int16_t numberOfChannels = 0;
    int16_t sampleSize = 0;          // bits per channel sample
    int16_t compressionId = kNotCompressed;
    int16_t packetSize = 0;
    uint32_t sampleRate = 0;         // unsigned 16.16; rates of 65536 Hz and above saturate

    // Kept beside the record.
    bool bigEndian = false;          // byte order of multi-byte PCM ('twos' always big, 'sowt' little)
    double exactSampleRate = 0;      // what sampleRate cannot hold (96000 Hz and above)
    int64_t bitRate = 0;             // bits per second, 0 when unknown
    int32_t width = 0, height = 0;   // visual media only

    bool operator==(const SampleDescription&) const = default;
};

// Rate in hertz as unsigned 16.16, saturating at 0xFFFF0000.
uint32_t RateToFixed(double hertz);

// A PCM sound description for the given layout ('sowt', 'twos', 'raw ', 'in24', 'fl32' ...).
SampleDescription PcmSoundDescription(FourCharCode format, int channels, int bitsPerSample, double rate);

// Whether the samples are PCM the layer can address by byte (and convert itself).
bool IsPcm(const SampleDescription& description);

// Bytes of one frame (all channels) of a PCM description; 0 for compressed formats.
int BytesPerFrame(const SampleDescription& description);

// 'sowt' stereo 16-bit at 44100 Hz: what every rendered sound is.
bool IsCdQualitySowt(const SampleDescription& description);

}  // namespace vd::media
