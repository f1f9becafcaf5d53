// Compressed sound (MP3, AAC, FLAC ...) and PCM in containers that interleave it with other
// streams: decoded through libavcodec in order, on demand. Reading backwards starts the decoder
// again from the beginning, which suits the order renders and editing read in.
#pragma once

#include "platform/media/sample_store.h"

#include <memory>
#include <string>
#include <vector>

namespace vd::media {

class DecodingSampleStore final : public SampleStore {
public:
    // channels: how many interleaved channels every read answers, whatever the stream does mid-way.
    DecodingSampleStore(std::string path, int streamIndex, int channels);
    ~DecodingSampleStore() override;

    bool ByteAddressable() const override { return false; }
    Status ReadFloatFrames(int64_t firstFrame, int64_t frames, float* out, int64_t* framesRead) override;
    const std::string& FilePath() const override { return path_; }

    // The exact frame count, by decoding the whole stream: for containers that state no duration.
    Status CountFrames(int64_t& frames);

private:
    struct Decoder;
    Status Restart();
    // Decodes the next frame into pending_; *ended when the stream has no more.
    Status DecodeMore(bool* ended);

    std::string path_;
    int streamIndex_;
    int channels_;
    std::unique_ptr<Decoder> decoder_;
    std::vector<float> pending_;    // decoded, not yet handed out
    size_t pendingUsed_ = 0;        // floats of pending_ already handed out
    int64_t nextFrame_ = 0;         // frame index of the first unread pending float
    bool sawDamage_ = false;
    int64_t framesDecoded_ = 0;
};

}  // namespace vd::media
