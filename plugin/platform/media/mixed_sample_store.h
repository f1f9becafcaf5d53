// A movie's mix as a sample store that makes its bytes as they are read: a result that is read once,
// in order (stored in a container, drawn, played), never sits in memory or on disk whole. Only for
// mixes whose length is known before they are made (MixLengthKnown), since a media states its
// frame count up front.
#pragma once

#include "platform/media/block_source.h"
#include "platform/media/sample_store.h"

#include <memory>
#include <mutex>

namespace vd::media {

class MixedSampleStore final : public SampleStore {
public:
    // The mix of movie (taken over) in CD quality ('sowt', 16 bits, 2 channels, 44100 Hz).
    MixedSampleStore(Movie&& movie, RenderOptions options);
    ~MixedSampleStore() override;

    // Bytes of the 16-bit frames; reads in order cost one mix, a read backwards starts it again.
    bool ByteAddressable() const override { return true; }
    Status ReadBytes(int64_t byteOffset, size_t size, uint8_t* out) const override;

private:
    Status Restart() const;

    Movie movie_;
    RenderOptions options_;
    // The mix is a cursor, so reads of the one store from several threads take turns.
    mutable std::mutex mutex_;
    mutable std::unique_ptr<MixedBlockSource> source_;
    mutable int64_t nextFrame_ = 0;
    mutable std::vector<int16_t> skipped_;
};

// movie's mix as a movie of one track over a MixedSampleStore. Its caller checks MixLengthKnown.
Status MixOnReadMovie(Movie&& movie, const RenderOptions& options, Movie& mixed);

}  // namespace vd::media
