// Decodes an encoder's packets on a thread of its own while the encoder goes on, so that the sound
// of a file being written is known, decoded, the moment the file is complete. Used only inside
// platform/media (it names FFmpeg's types).
#pragma once

#include "platform/media/av_owners.h"
#include "platform/media/decoder_session.h"
#include "platform/media/decoded_sample_store.h"
#include "platform/media/errors.h"

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace vd::media {

class PacketDecoder {
public:
    PacketDecoder() = default;
    ~PacketDecoder();  // stops the thread; what it decoded is dropped
    PacketDecoder(const PacketDecoder&) = delete;
    PacketDecoder& operator=(const PacketDecoder&) = delete;

    // What the decoded sound is kept as: interleaved floats of the stream's channels (as the
    // decoding sample store converts them), or straight away 8-bit mono of the stream's rate
    // (FloatFramesToMono8), a quarter of a stereo sound's floats.
    enum class Keep { kFloats, kMono8 };

    // Starts decoding what an encoder of these parameters writes, with room made for about
    // expectedFrames frames. Kept as 8-bit mono, the frames are appended to mono8Prefix's bytes.
    Status Start(const AVCodecParameters& parameters, int channels, int64_t expectedFrames, Keep keep,
                 std::vector<uint8_t>&& mono8Prefix = {});

    // A copy of the packet, decoded in turn. util::kMemoryFull when it cannot be copied.
    Status Feed(const AVPacket& packet);

    // Waits for every fed packet to be decoded, drains the decoder and answers the sound as it
    // was kept (the floats in sound, or the 8-bit frames in mono8); the thread's first failure
    // otherwise.
    Status Finish(PredecodedSound& sound, std::vector<uint8_t>& mono8);

    // Whether the encoder marked samples for the decoder to skip (its priming) in its packets.
    bool MarkedSkippedSamples() const { return markedSkip_; }

private:
    void Run();
    Status DecodeOne(AVPacket* packet);

    std::unique_ptr<DecoderSession> session_;
    std::thread thread_;
    std::mutex mutex_;
    std::condition_variable ready_;
    std::deque<PacketPtr> queue_;
    bool ended_ = false;    // no more packets will come
    bool stopped_ = false;  // give up at once
    Status status_ = util::kNoError;
    PredecodedSound sound_;
    Keep keep_ = Keep::kFloats;
    std::vector<float> scratch_;   // one frame's floats on their way to mono8_
    std::vector<uint8_t> mono8_;
    bool markedSkip_ = false;  // written by the feeding thread only
};

}  // namespace vd::media
