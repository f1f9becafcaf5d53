// The sound resource that a container's "snd " stream holds, big-endian throughout. We write one
// form: a format-1 resource with one sampled-sound data format and one buffer command pointing at a
// standard sound header, 8-bit unsigned mono samples (centre 128) from byte 42. We read that, the
// extended header (16-bit or stereo, big-endian samples), format-2 resources, and the compressed
// header for the codecs the media layer decodes ('ima4', 'MAC3', 'MAC6', 'ulaw', 'alaw').
#pragma once

#include "util/status_codes.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vd::container {

inline constexpr size_t kSoundHeaderOffset = 20;
inline constexpr size_t kSoundSamplesOffset = 42;
inline constexpr uint32_t kSoundRate44100 = 0xAC440000;  // 16.16

// Codes of a stream we cannot use: the resource describes sound in a form we do not play, or its
// structure and lengths do not fit in the stream. Nothing outside the stream is ever read.

// The resource for count 8-bit unsigned mono samples at rate (16.16).
std::vector<uint8_t> BuildSoundResource(const uint8_t* samples, size_t count, uint32_t rate = kSoundRate44100);

// Its first kSoundSamplesOffset bytes, written over the start of header: for streams whose samples
// are made in place after it.
void WriteSoundResourceHeader(uint8_t* header, size_t count, uint32_t rate = kSoundRate44100);

// Where the samples of a resource lie and how to read them.
struct SoundResourceLayout {
    uint32_t rate = 0;         // 16.16
    int channels = 0;
    int bits = 0;              // 8 (unsigned) or 16 (signed big-endian) for uncompressed samples
    uint32_t compression = 0;  // 0 for uncompressed samples, else the codec's four-character code
    size_t dataOffset = 0;
    size_t dataSize = 0;       // bytes, all inside the stream
    int64_t frames = 0;        // uncompressed: exact; compressed: what the header promises
};

// 0, util::kBadSoundFormat or util::kCorruptData.
int32_t ParseSoundResource(std::span<const uint8_t> stream, SoundResourceLayout& layout);

}  // namespace vd::container
