// A movie's sound as it plays: the enabled audio tracks, each scaled by its volume and an optional
// gain ramp, converted to the output's rate and channels, summed, rounded to 16 bits and clipped,
// handed out block by block. Whatever takes the sound (a WAV file, a sample store in memory, an
// audio device) reads it from here, so that every one of them hears the same samples.
//
// Mixing sums the tracks (a mix of two full-volume tracks can reach twice full scale); the sum is
// rounded to 16 bits and clipped to -32768..32767. Functions that want an average (mixing two
// sounds) scale their samples themselves. Volumes are 8.8 fixed (256 = unity); 0 and negative
// volumes and disabled tracks are silent but still count in the length of the result.
//
// Threads:
//  - Each thread reads through a reader of its own (a source holds one per track) over the sample
//    stores its movie shares with other movies: stores of bytes in memory or a file serve any
//    number of readers at once, and the stores that keep a cursor (a mix made on read, a mix of two
//    sounds) take turns behind a lock. A decoding store keeps its decoder's place and belongs to
//    one source at a time.
//  - A source belongs to one thread at a time; DevicePull serialises the calls of a device's thread.
//  - The error object and all of a function's state belong to the thread that runs the function
//    call. A failure's detail text (LastMediaErrorDetail) is kept per thread, so a source read on
//    another thread never reaches them: that thread keeps the status, and the calling thread asks
//    for it (DevicePull::LastStatus) and reports it.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/movie.h"
#include "platform/media/sound_writer.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace vd::media {

// A straight change of a track's gain (1 = unchanged) from one time to another, in seconds from
// the movie's start: the gain goes from `from` at start to `to` at end, and is 1 outside
// [start, end). This is what fades need; being a plain description rather than a callback, the
// mixer can compute it for a whole block at once.
struct GainRamp {
    double start = 0, end = 0;
    float from = 1, to = 1;
};

struct RenderOptions {
    // By track index in the movie (TrackAt); missing or empty entries mean no ramp.
    std::vector<std::optional<GainRamp>> trackRamps;
};

// Whether the mix would only copy the movie's samples: its one sound track holds 16-bit
// little-endian samples of the output's rate and channels in stores that serve their bytes, plays
// at full volume from time 0 and has no ramp.
bool RendersAsCopy(const Movie& movie, const OutputFormat& format, const RenderOptions& options = {});

// Whether the mix's length is known before it is made: every audible track is stored PCM of the
// output's rate and channels, so no resampler or decoder decides how many frames come out.
bool MixLengthKnown(const Movie& movie, const OutputFormat& format);

// The mix's length in output frames from the tracks' stated lengths (exact when MixLengthKnown).
int64_t StatedMixFrames(const Movie& movie, const OutputFormat& format);

class MixedBlockSource {
public:
    // A source of the movie's mix in the output's rate and channels (its sample size is always 16
    // bits here). The movie must outlive the source. util::kNoSoundTrack without an audio track;
    // util::kMemoryFull (SoundTooLarge) when the mix would pass kMaxSoundBytes.
    static Status Open(const Movie& movie, const OutputFormat& format, const RenderOptions& options,
                       std::unique_ptr<MixedBlockSource>& source);
    ~MixedBlockSource();
    MixedBlockSource(const MixedBlockSource&) = delete;
    MixedBlockSource& operator=(const MixedBlockSource&) = delete;

    int Channels() const { return channels_; }

    // Up to maxFrames interleaved frames into out; fewer only at the end, 0 once it is over.
    Status Read(int16_t* out, size_t maxFrames, size_t& frames);

private:
    struct TrackSource;
    explicit MixedBlockSource(const OutputFormat& format);
    Status MixBlock(int16_t* out, int64_t want, int64_t& produced);
    Status CopyBlock(int16_t* out, int64_t want, int64_t& produced);

    int rate_;
    int channels_;
    std::vector<TrackSource> tracks_;
    const Media* copyMedia_ = nullptr;  // set when the mix is a plain copy of this media's samples
    size_t copyRun_ = 0;
    int64_t copyInRun_ = 0;
    int64_t position_ = 0;              // output frame of the next block
    bool over_ = false;
    std::vector<float> mix_;
    std::vector<int16_t> pending_;      // a block made for a smaller read, handed out from pendingUsed_
    size_t pendingUsed_ = 0;
};

// The pull end an audio device's callback plugs into: Pull may be called from the device's thread,
// which is not the one that made it; calls are serialised, and the first failure ends the sound
// (later pulls answer 0 frames) and is kept for the owner to read through Status().
class DevicePull {
public:
    explicit DevicePull(std::unique_ptr<MixedBlockSource> source) : source_(std::move(source)) {}

    // Up to frames interleaved 16-bit frames into interleaved; fewer once the sound is over (the
    // device plays silence for the rest).
    size_t Pull(int16_t* interleaved, size_t frames);
    Status LastStatus() const;

private:
    mutable std::mutex mutex_;
    std::unique_ptr<MixedBlockSource> source_;
    Status status_ = util::kNoError;
};

}  // namespace vd::media
