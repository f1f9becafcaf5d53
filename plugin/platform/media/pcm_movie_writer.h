// A QuickTime movie with one PCM sound track, written as it grows: each Flush cuts what was written
// since the last one into a fragment of its own and pushes it to the file, so a writer that dies
// (the process crashed, the machine lost power) leaves a movie readable up to its last flush.
#pragma once

#include "platform/media/errors.h"

#include <cstdint>
#include <memory>
#include <string>

namespace vd::media {

class PcmMovieWriter {
public:
    // Creates or empties path. Samples are 8 (signed), 16 (little-endian, 'sowt') or 24 bits;
    // channels 1 or 2. util::kBadParameter for a format the track cannot hold; on any failure no
    // file is left behind.
    static Status Open(const std::string& path, int32_t rate, int channels, int sampleSize,
                       std::unique_ptr<PcmMovieWriter>& writer);
    ~PcmMovieWriter();  // closes without the trailer: what was flushed stays readable
    PcmMovieWriter(const PcmMovieWriter&) = delete;
    PcmMovieWriter& operator=(const PcmMovieWriter&) = delete;

    // Interleaved samples in [-1, 1] (clipped beyond), converted to the file's sample size.
    Status Write(const float* samples, size_t frames);
    Status Flush();
    // Flushes and writes the trailer; the writer takes nothing more.
    Status Finish();

    int64_t FramesWritten() const { return framesWritten_; }

private:
    struct Muxer;
    explicit PcmMovieWriter(std::unique_ptr<Muxer> muxer);

    std::unique_ptr<Muxer> muxer_;
    int64_t framesWritten_ = 0;
    bool finished_ = false;
};

}  // namespace vd::media
