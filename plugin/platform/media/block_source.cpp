// Two ways through: a single unity-volume 'sowt' track of the output's rate and channels with no
// ramp starting at 0 (every result that is a plain selection or an amplified copy) is read as the
// 16-bit samples it already is. Everything else is decoded or converted to float, resampled per
// track, scaled, summed and rounded a block at a time, so a long sound never sits in memory whole.
// The samples do not depend on how the reads are cut into blocks: ramps are computed from the
// frame number, and resamplers queue what they make.
#include "platform/media/block_source.h"

#include "platform/media/pcm_conversion.h"
#include "platform/media/resampler.h"
#include "platform/media/sample_reading.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <new>

namespace vd::media {

namespace {

constexpr int64_t kBlockFrames = 65536;
// Reads smaller than this are served from a block of this size made ahead: a device asks for a
// few hundred frames at a time, and mixing each of those alone would cost more than the mix.
constexpr size_t kSmallestMixedBlock = 4096;

bool Audible(const Track& track) {
    return track.enabled && track.volume > 0 && track.MediaInserted() && !track.media.Descriptions().empty() &&
           track.media.Duration() > 0;
}

// The size of the mix, from the tracks' stated lengths, against the cap: a few frames of a sound
// that claims 1 Hz become hours at the output's rate.
Status CheckMixSize(const Movie& movie, const OutputFormat& format) {
    const uint64_t frameBytes = uint64_t(format.channels) * uint64_t(std::max<int16_t>(format.sampleSize, 8) / 8);
    const uint64_t maxFrames = kMaxSoundBytes / std::max<uint64_t>(frameBytes, 1);
    for (size_t i = 0; i < movie.TrackCount(); ++i) {
        const Track& track = movie.TrackAt(i);
        if (track.characteristic != Characteristic::kAudio || !track.MediaInserted()) continue;
        const int64_t start = ConvertTimeScale(track.MovieOffset(), movie.timeScale, format.sampleRate);
        const int64_t length = ConvertTimeScale(track.media.Duration(), track.media.timeScale, format.sampleRate);
        if (start < 0 || length < 0 || uint64_t(start) > maxFrames || uint64_t(length) > maxFrames - uint64_t(start))
            return SoundTooLarge("the sound is too large: it would pass 1 GB at the output's rate");
    }
    return util::kNoError;
}

// Adds frames [from, to) scaled by gain and the ramp: the frames before and after it at the gain
// alone, those inside it at a gain that grows by the same step each frame (computed from the frame
// number, not accumulated, so that no error builds up over a long ramp).
void MixRamped(const GainRamp& ramp, float gain, int rate, int channels, int64_t from, int64_t to, const float* in,
               float* target) {
    const auto firstInside = int64_t(std::ceil(ramp.start * rate));  // the first frame at or after start
    const auto firstAfter = std::max(firstInside, int64_t(std::ceil(ramp.end * rate)));
    const double perFrame = ramp.end > ramp.start ? (double(ramp.to) - ramp.from) / ((ramp.end - ramp.start) * rate) : 0;
    const double atFrameZero = ramp.from - perFrame * ramp.start * rate;
    for (int64_t frame = from; frame < to;) {
        const bool inside = frame >= firstInside && frame < firstAfter;
        const int64_t end = frame < firstInside ? std::min(to, firstInside) : inside ? std::min(to, firstAfter) : to;
        const size_t samples = size_t(end - frame) * size_t(channels);
        if (inside) {
            for (int64_t f = frame; f < end; ++f, in += channels, target += channels) {
                const float g = gain * float(atFrameZero + perFrame * double(f));
                for (int c = 0; c < channels; ++c) target[c] += in[c] * g;
            }
        } else {
            for (size_t i = 0; i < samples; ++i) target[i] += in[i] * gain;
            in += samples, target += samples;
        }
        frame = end;
    }
}

}  // namespace

// One track on its way into the mix, in output frames.
struct MixedBlockSource::TrackSource {
    const Track* track = nullptr;
    float gain = 0;                      // volume / 256; 0 for silent tracks (not read at all)
    const GainRamp* ramp = nullptr;
    int64_t startFrame = 0;              // the track's offset in output frames
    int64_t silentLength = -1;           // silent tracks: their length in output frames
    std::unique_ptr<SequentialFrameReader> reader;
    std::unique_ptr<Resampler> resampler;
    std::vector<float> queue;            // converted frames from queueStart on
    size_t queueUsed = 0;                // floats of queue already mixed
    int64_t queueStart = 0;              // output frame of queue[queueUsed]
    bool ended = false;
    std::vector<float> input;

    int64_t QueuedEnd(int channels) const {
        return queueStart + int64_t((queue.size() - queueUsed) / size_t(channels));
    }

    // Pulls and converts source frames until the queue reaches `until` or the track ends.
    Status Fill(int64_t until, int channels, int outRate) {
        while (!ended && QueuedEnd(channels) < until) {
            if (queueUsed > 0) {
                queue.erase(queue.begin(), queue.begin() + std::ptrdiff_t(queueUsed));
                queueUsed = 0;
            }
            int64_t frames = 0;
            const int64_t inRate = track->media.timeScale;
            // At least about 1024 output frames' worth a read, counted in input frames: a fixed count
            // of input frames would queue hours of output at once for a sound of a few hertz.
            const int64_t least = std::max<int64_t>(1, 1024 * inRate / outRate);
            const int64_t want = std::max(least, (until - QueuedEnd(channels)) * inRate / outRate + 1);
            if (Status s = reader->Next(std::min(want, kBlockFrames), input, frames)) return s;
            if (frames == 0) {
                ended = true;
                if (resampler)  // what the filter still holds
                    for (size_t before = SIZE_MAX; before != queue.size();) {
                        before = queue.size();
                        if (Status s = resampler->Convert(nullptr, 0, queue)) return s;
                    }
                break;
            }
            if (resampler) {
                if (Status s = resampler->Convert(input.data(), frames, queue)) return s;
            } else {
                queue.insert(queue.end(), input.begin(), input.end());
            }
        }
        return util::kNoError;
    }
};

bool RendersAsCopy(const Movie& movie, const OutputFormat& format, const RenderOptions& options) {
    if (format.sampleRate != 44100 || format.channels != 2 || format.sampleSize != 16) return false;
    if constexpr (std::endian::native != std::endian::little) return false;
    const auto tracks = movie.TracksWith(Characteristic::kAudio);
    if (tracks.size() != 1) return false;
    const Track& track = *tracks.front();
    for (size_t i = 0; i < options.trackRamps.size(); ++i)
        if (options.trackRamps[i] && &movie.TrackAt(i) == &track) return false;
    if (!Audible(track) || track.volume != kFullVolume || track.MovieOffset() != 0) return false;
    for (const auto& run : track.media.Runs()) {
        const SampleDescription& d = track.media.Descriptions()[size_t(run.descriptionIndex - 1)];
        if (!run.store->ByteAddressable() || !IsCdQualitySowt(d)) return false;
    }
    return true;
}

bool MixLengthKnown(const Movie& movie, const OutputFormat& format) {
    for (const Track* track : movie.TracksWith(Characteristic::kAudio)) {
        if (!Audible(*track)) continue;
        if (track->media.timeScale != format.sampleRate) return false;
        for (const auto& run : track->media.Runs()) {
            const SampleDescription& d = track->media.Descriptions()[size_t(run.descriptionIndex - 1)];
            if (!run.store->ByteAddressable() || d.numberOfChannels != format.channels) return false;
        }
    }
    return true;
}

int64_t StatedMixFrames(const Movie& movie, const OutputFormat& format) {
    int64_t frames = 0;
    for (const Track* track : movie.TracksWith(Characteristic::kAudio)) {
        if (!track->MediaInserted()) continue;
        const int64_t start = ConvertTimeScale(track->MovieOffset(), movie.timeScale, format.sampleRate);
        const int64_t length = Audible(*track) && track->media.timeScale == format.sampleRate
                                   ? track->media.Duration()
                                   : ConvertTimeScale(track->media.Duration(), track->media.timeScale, format.sampleRate);
        frames = std::max(frames, start + length);
    }
    return frames;
}

MixedBlockSource::MixedBlockSource(const OutputFormat& format) : rate_(format.sampleRate), channels_(format.channels) {}

MixedBlockSource::~MixedBlockSource() = default;

Status MixedBlockSource::Open(const Movie& movie, const OutputFormat& format, const RenderOptions& options,
                              std::unique_ptr<MixedBlockSource>& source) {
    if (!movie.FirstSoundTrack()) return MediaFailure(util::kNoSoundTrack, "the movie has no sound track");
    if (Status s = CheckMixSize(movie, format)) return s;
    try {
        std::unique_ptr<MixedBlockSource> made(new MixedBlockSource(format));
        if (RendersAsCopy(movie, format, options)) {
            made->copyMedia_ = &movie.FirstSoundTrack()->media;
            source = std::move(made);
            return util::kNoError;
        }
        for (size_t i = 0; i < movie.TrackCount(); ++i) {
            const Track& track = movie.TrackAt(i);
            if (track.characteristic != Characteristic::kAudio) continue;
            TrackSource& added = made->tracks_.emplace_back();
            added.track = &track;
            added.startFrame = ConvertTimeScale(track.MovieOffset(), movie.timeScale, format.sampleRate);
            added.queueStart = added.startFrame;
            if (!Audible(track)) {
                // Counted from the media's own frames: a detour through the movie's 600ths would round.
                added.silentLength = track.MediaInserted()
                                         ? ConvertTimeScale(track.media.Duration(), track.media.timeScale, format.sampleRate)
                                         : 0;
                added.ended = true;
                continue;
            }
            added.gain = float(track.volume) / float(kFullVolume);
            if (i < options.trackRamps.size() && options.trackRamps[i]) added.ramp = &*options.trackRamps[i];
            added.reader = std::make_unique<SequentialFrameReader>(track.media);
            const int channels = track.media.Descriptions().front().numberOfChannels;
            if (track.media.timeScale != format.sampleRate || channels != format.channels)
                if (Status s = Resampler::Create(track.media.timeScale, channels, format.sampleRate, format.channels,
                                                 added.resampler))
                    return s;
        }
        source = std::move(made);
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory to mix the sound");
    }
    return util::kNoError;
}

Status MixedBlockSource::CopyBlock(int16_t* out, int64_t want, int64_t& produced) {
    constexpr int64_t kBytesPerFrame = 4;
    produced = 0;
    const auto& runs = copyMedia_->Runs();
    while (produced < want && copyRun_ < runs.size()) {
        const SampleRun& run = runs[copyRun_];
        const int64_t frames = std::min(want - produced, run.frameCount - copyInRun_);
        if (frames <= 0) {
            ++copyRun_, copyInRun_ = 0;
            continue;
        }
        if (Status s = run.store->ReadBytes((run.firstFrame + copyInRun_) * kBytesPerFrame, size_t(frames * kBytesPerFrame),
                                            reinterpret_cast<uint8_t*>(out + produced * 2)))
            return s;
        copyInRun_ += frames, produced += frames;
    }
    return util::kNoError;
}

Status MixedBlockSource::MixBlock(int16_t* out, int64_t want, int64_t& produced) {
    if (Status s = StopRequestStatus()) return s;
    if (copyMedia_) return CopyBlock(out, want, produced);
    const int64_t blockEnd = position_ + want;
    produced = 0;
    for (auto& track : tracks_) {
        if (Status s = track.Fill(blockEnd, channels_, rate_)) return s;
        const int64_t end = track.silentLength >= 0 ? track.startFrame + track.silentLength
                            : track.ended          ? track.QueuedEnd(channels_)
                                                   : blockEnd;
        produced = std::max(produced, std::min(end, blockEnd) - position_);
    }
    if (produced <= 0) {
        produced = 0;
        return util::kNoError;
    }
    mix_.assign(size_t(produced) * size_t(channels_), 0.0f);
    for (auto& track : tracks_) {
        if (!track.reader) continue;
        const int64_t from = std::max(position_, track.queueStart);
        const int64_t to = std::min(position_ + produced, track.QueuedEnd(channels_));
        const float* in = track.queue.data() + track.queueUsed + size_t(from - track.queueStart) * size_t(channels_);
        float* target = mix_.data() + size_t(from - position_) * size_t(channels_);
        const size_t samples = to > from ? size_t(to - from) * size_t(channels_) : 0;
        if (track.ramp) {
            MixRamped(*track.ramp, track.gain, rate_, channels_, from, to, in, target);
        } else {
            for (size_t i = 0; i < samples; ++i) target[i] += in[i] * track.gain;
        }
        if (to > from) {
            track.queueUsed += size_t(to - track.queueStart) * size_t(channels_);
            track.queueStart = to;
        }
    }
    FloatsToInt16(mix_.data(), mix_.size(), out);
    position_ += produced;
    return util::kNoError;
}

Status MixedBlockSource::Read(int16_t* out, size_t maxFrames, size_t& frames) {
    frames = 0;
    const size_t channels = size_t(channels_);
    try {
        while (frames < maxFrames) {
            if (pendingUsed_ < pending_.size()) {
                const size_t take = std::min(maxFrames - frames, (pending_.size() - pendingUsed_) / channels);
                std::copy_n(pending_.data() + pendingUsed_, take * channels, out + frames * channels);
                pendingUsed_ += take * channels, frames += take;
                continue;
            }
            if (over_) break;
            const size_t want = std::min<size_t>(maxFrames - frames, size_t(kBlockFrames));
            int64_t produced = 0;
            if (want >= kSmallestMixedBlock) {
                if (Status s = MixBlock(out + frames * channels, int64_t(want), produced)) return s;
                frames += size_t(produced);
                over_ = produced < int64_t(want);
            } else {
                pending_.resize(kSmallestMixedBlock * channels);
                if (Status s = MixBlock(pending_.data(), int64_t(kSmallestMixedBlock), produced)) return s;
                pending_.resize(size_t(produced) * channels);
                pendingUsed_ = 0;
                over_ = produced < int64_t(kSmallestMixedBlock);
            }
        }
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory to mix the sound");
    }
    return util::kNoError;
}

size_t DevicePull::Pull(int16_t* interleaved, size_t frames) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (status_ != util::kNoError || !source_) return 0;
    size_t got = 0;
    status_ = source_->Read(interleaved, frames, got);
    return status_ == util::kNoError ? got : 0;
}

Status DevicePull::LastStatus() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return status_;
}

}  // namespace vd::media
