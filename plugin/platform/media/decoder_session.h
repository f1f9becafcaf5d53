// A decoder with the packet and frame it works through, and the converter that turns its frames
// into interleaved samples: what the file decoder and the decoder of compressed bytes in memory
// share. Used only inside platform/media (it names FFmpeg's types).
#pragma once

#include "platform/media/av_owners.h"
#include "platform/media/errors.h"

namespace vd::media {

struct DecoderSession {
    CodecContextPtr codec;
    PacketPtr packet;
    FramePtr frame;
    SwrPtr converter;

    // The decoder of `decoder` with its packet and frame, not opened yet; -108 when any of them
    // cannot be had.
    Status Allocate(const AVCodec* decoder);

    // Makes the converter from the first decoded frame: `channels` interleaved samples of `format`
    // at the frame's own rate. Nothing to do once it is made.
    Status MakeConverter(int channels, AVSampleFormat format);
};

}  // namespace vd::media
