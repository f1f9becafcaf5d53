// Compressed sound held in memory (the samples of a sound resource), decoded through libavcodec
// without a container around it: 'ima4', 'MAC3', 'MAC6', 'ulaw' and 'alaw'.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/four_char_code.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vd::media {

// Whether DecodeSoundBytes takes the format, and the bytes and frames of one packet per channel.
struct CompressedPacket {
    size_t bytes = 0;
    int64_t frames = 0;
};
bool CompressedPacketOf(FourCharCode format, CompressedPacket& packet);

// Decodes whole packets of format into interleaved native 16-bit samples (channels per frame).
// util::kNoCodec when the format or its decoder is not there; util::kBadSoundFileFormat when nothing decodes;
// util::kMemoryFull when the samples cannot be held.
Status DecodeSoundBytes(FourCharCode format, int channels, int rate, const uint8_t* bytes, size_t size,
                        std::vector<int16_t>& out);

}  // namespace vd::media
