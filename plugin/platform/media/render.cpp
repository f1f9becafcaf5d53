// Two ways through: a single unity-volume 'sowt' 44.1 kHz stereo track with no envelope starting
// at 0 is what most sound functions render (every result reopened as WAV is one), and its bytes
// already are the output's, so they are copied through in large blocks. Everything else is
// decoded or converted to float, resampled per track, scaled, summed and rounded in blocks of
// kBlockFrames output frames, so a long sound never sits in memory whole.
#include "platform/media/render.h"

#include "platform/media/pcm_conversion.h"
#include "platform/media/resampler.h"
#include "platform/media/sample_reading.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>

namespace vd::media {

namespace {

constexpr int64_t kBlockFrames = 65536;

// One track on its way into the mix, in output frames.
struct TrackSource {
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
};

bool Audible(const Track& track) {
    return track.enabled && track.volume > 0 && track.MediaInserted() && !track.media.Descriptions().empty() &&
           track.media.Duration() > 0;
}

// Pulls and converts source frames until the queue reaches `until` or the track ends.
Status Fill(TrackSource& source, int64_t until, int channels, int outRate) {
    while (!source.ended && source.QueuedEnd(channels) < until) {
        if (source.queueUsed > 0) {
            source.queue.erase(source.queue.begin(), source.queue.begin() + std::ptrdiff_t(source.queueUsed));
            source.queueUsed = 0;
        }
        int64_t frames = 0;
        const int64_t inRate = source.track->media.timeScale;
        // At least about 1024 output frames' worth a read, counted in input frames: a fixed count of
        // input frames would queue hours of output at once for a sound of a few hertz.
        const int64_t least = std::max<int64_t>(1, 1024 * inRate / outRate);
        const int64_t want = std::max(least, (until - source.QueuedEnd(channels)) * inRate / outRate + 1);
        if (Status s = source.reader->Next(std::min(want, kBlockFrames), source.input, frames)) return s;
        if (frames == 0) {
            source.ended = true;
            if (source.resampler)  // what the filter still holds
                for (size_t before = SIZE_MAX; before != source.queue.size();) {
                    before = source.queue.size();
                    if (Status s = source.resampler->Convert(nullptr, 0, source.queue)) return s;
                }
            break;
        }
        if (source.resampler) {
            if (Status s = source.resampler->Convert(source.input.data(), frames, source.queue)) return s;
        } else {
            source.queue.insert(source.queue.end(), source.input.begin(), source.input.end());
        }
    }
    return kNoError;
}

Status MakeSource(const Movie& movie, size_t index, const OutputFormat& format, const RenderOptions& options,
                  TrackSource& source) {
    const Track& track = movie.TrackAt(index);
    source.track = &track;
    source.startFrame = ConvertTimeScale(track.MovieOffset(), movie.timeScale, format.sampleRate);
    source.queueStart = source.startFrame;
    if (!Audible(track)) {
        // Counted from the media's own frames: a detour through the movie's 600ths would round.
        source.silentLength =
            track.MediaInserted() ? ConvertTimeScale(track.media.Duration(), track.media.timeScale, format.sampleRate) : 0;
        source.ended = true;
        return kNoError;
    }
    source.gain = float(track.volume) / float(kFullVolume);
    if (index < options.trackRamps.size() && options.trackRamps[index]) source.ramp = &*options.trackRamps[index];
    source.reader = std::make_unique<SequentialFrameReader>(track.media);
    const int channels = track.media.Descriptions().front().numberOfChannels;
    if (track.media.timeScale != format.sampleRate || channels != format.channels)
        return Resampler::Create(track.media.timeScale, channels, format.sampleRate, format.channels, source.resampler);
    return kNoError;
}

// The size of the rendered samples, from the tracks' stated lengths, against the cap: a few frames
// of a sound that claims 1 Hz become hours at the output's rate.
Status CheckRenderedSize(const Movie& movie, const OutputFormat& format) {
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
    return kNoError;
}

bool FastPathApplies(const Movie& movie, const OutputFormat& format, const RenderOptions& options,
                     const SoundWriter& writer) {
    return writer.TakesSowtBytes() && RendersAsCopy(movie, format, options);
}

Status CopyThrough(const Media& media, SoundWriter& writer) {
    constexpr int64_t kBytesPerFrame = 4;
    constexpr size_t kCopyBlock = 8 << 20;
    std::vector<uint8_t> block;
    for (const auto& run : media.Runs()) {
        const int64_t offset = run.firstFrame * kBytesPerFrame;
        const int64_t size = run.frameCount * kBytesPerFrame;
        if (run.store->FileDescriptor() >= 0) {
            if (Status s = writer.CopySowtBytes(run.store->FileDescriptor(), run.store->FileOffset() + offset, size))
                return s;
            continue;
        }
        for (int64_t done = 0; done < size;) {
            const size_t want = size_t(std::min<int64_t>(int64_t(kCopyBlock), size - done));
            block.resize(want);
            if (Status s = run.store->ReadBytes(offset + done, want, block.data())) return s;
            if (Status s = writer.WriteSowtBytes(block.data(), want)) return s;
            done += int64_t(want);
        }
    }
    return kNoError;
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

Status MixAll(std::vector<TrackSource>& sources, const OutputFormat& format, SoundWriter& writer) {
    const int channels = format.channels;
    std::vector<float> mix;
    std::vector<int16_t> out;
    for (int64_t position = 0;; position += kBlockFrames) {
        if (Status s = StopRequestStatus()) return s;
        const int64_t blockEnd = position + kBlockFrames;
        int64_t produced = 0;
        for (auto& source : sources) {
            if (Status s = Fill(source, blockEnd, channels, format.sampleRate)) return s;
            const int64_t end = source.silentLength >= 0 ? source.startFrame + source.silentLength
                                : source.ended        ? source.QueuedEnd(channels)
                                                      : blockEnd;
            produced = std::max(produced, std::min(end, blockEnd) - position);
        }
        if (produced <= 0) return kNoError;
        mix.assign(size_t(produced) * size_t(channels), 0.0f);
        for (auto& source : sources) {
            if (!source.reader) continue;
            const int64_t from = std::max(position, source.queueStart);
            const int64_t to = std::min(position + produced, source.QueuedEnd(channels));
            const float* in = source.queue.data() + source.queueUsed + size_t(from - source.queueStart) * size_t(channels);
            float* target = mix.data() + size_t(from - position) * size_t(channels);
            const size_t samples = to > from ? size_t(to - from) * size_t(channels) : 0;
            if (source.ramp) {
                MixRamped(*source.ramp, source.gain, format.sampleRate, channels, from, to, in, target);
            } else {
                for (size_t i = 0; i < samples; ++i) target[i] += in[i] * source.gain;
            }
            if (to > from) {
                source.queueUsed += size_t(to - source.queueStart) * size_t(channels);
                source.queueStart = to;
            }
        }
        out.resize(mix.size());
        FloatsToInt16(mix.data(), mix.size(), out.data());
        if (Status s = writer.WriteFrames(out.data(), size_t(produced))) return s;
        if (produced < kBlockFrames) return kNoError;
    }
}

}  // namespace

bool RendersAsCopy(const Movie& movie, const OutputFormat& format, const RenderOptions& options) {
    if (format.sampleRate != 44100 || format.channels != 2 || format.sampleSize != 16) return false;
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

Status RenderMovie(const Movie& movie, const std::string& target, const OutputFormat& format,
                   const RenderOptions& options) {
    if (!movie.FirstSoundTrack()) return MediaFailure(kNoSoundTrack, "the movie has no sound track");
    if (Status s = CheckRenderedSize(movie, format)) return s;
    try {
        std::vector<TrackSource> sources;
        for (size_t i = 0; i < movie.TrackCount(); ++i) {
            if (movie.TrackAt(i).characteristic != Characteristic::kAudio) continue;
            sources.emplace_back();
            if (Status s = MakeSource(movie, i, format, options, sources.back())) return s;
        }
        std::unique_ptr<SoundWriter> writer;
        if (Status s = OpenSoundWriter(format, target, writer)) return s;
        if (FastPathApplies(movie, format, options, *writer)) {
            if (Status s = CopyThrough(sources.front().track->media, *writer)) return s;
        } else {
            if (Status s = MixAll(sources, format, *writer)) return s;
        }
        return writer->Finish();
    } catch (const std::bad_alloc&) {
        return MediaFailure(kMemoryFull, "no memory to render the sound");
    }
}

}  // namespace vd::media
