// A decoder with the packet and frame it works through, and the converter that turns its frames
// into interleaved samples: what the file decoder and the decoder of compressed bytes in memory
// share. Used only inside platform/media (it names FFmpeg's types).
#pragma once

#include "platform/media/av_owners.h"
#include "platform/media/errors.h"

#include <vector>

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

    // The frame just received, as interleaved floats of `channels` appended to out (the frame is
    // released). Floating samples pass unchanged except NaN, which becomes silence, as our own PCM
    // reader makes it, so that no resampler spreads it and no rounding makes it full scale.
    // *frames is how many frames were appended.
    Status AppendFloats(int channels, std::vector<float>& out, size_t* frames);

    // The same into out, which has room for the frame's frame->nb_samples frames.
    Status ConvertInto(int channels, float* out, size_t* frames);
};

}  // namespace vd::media
