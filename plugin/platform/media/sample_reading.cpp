#include "platform/media/sample_reading.h"

#include "platform/media/pcm_conversion.h"

#include <algorithm>
#include <bit>
#include <new>

namespace vd::media {

namespace {

constexpr int64_t kDecodeBlockFrames = 65536;

// One run's share of a frame range.
struct Piece {
    const SampleRun* run;
    int64_t firstInStore;
    int64_t frames;
};

std::vector<Piece> PiecesOf(const Media& media, int64_t first, int64_t count) {
    std::vector<Piece> pieces;
    int64_t runStart = 0;
    for (const auto& run : media.Runs()) {
        int64_t runEnd = runStart + run.frameCount;
        int64_t from = std::max(first, runStart), to = std::min(first + count, runEnd);
        if (from < to) pieces.push_back({&run, run.firstFrame + (from - runStart), to - from});
        runStart = runEnd;
        if (runStart >= first + count) break;
    }
    return pieces;
}

Status CheckRange(const Media& media, int64_t firstFrame, int64_t& frameCount, size_t sampleBytes, int& channels) {
    if (media.mediaType != kSoundMediaType || media.Descriptions().empty())
        return MediaFailure(util::kInvalidMedia, "the media holds no sound");
    if (firstFrame < 0 || frameCount < 0) return MediaFailure(util::kInvalidTime, "negative sample range");
    channels = media.Descriptions().front().numberOfChannels;
    if (channels <= 0) return MediaFailure(util::kInvalidMedia, "the sound has no channels");
    const int64_t duration = media.Duration();
    frameCount = firstFrame >= duration ? 0 : std::min(frameCount, duration - firstFrame);
    if (uint64_t(frameCount) * uint64_t(channels) * sampleBytes > kMaxReadBytes)
        return SoundTooLarge("too many samples for one read");
    return util::kNoError;
}

const SampleDescription& DescriptionOf(const Media& media, const SampleRun& run) {
    return media.Descriptions()[size_t(run.descriptionIndex - 1)];
}

// Frames of a piece into out from offset `at` (in samples), converted by PCM conversion or
// decoded; `at` advances by what was read.
template <typename Sample>
Status ReadPiece(const Media& media, const Piece& piece, int channels, std::vector<Sample>& out, size_t& at,
                 std::vector<uint8_t>& scratch) {
    const SampleDescription& d = DescriptionOf(media, *piece.run);
    const size_t samples = size_t(piece.frames) * size_t(channels);
    if (piece.run->store->ByteAddressable()) {
        const int bytesPerFrame = BytesPerFrame(d);
        const size_t bytes = size_t(piece.frames) * size_t(bytesPerFrame);
        out.resize(at + samples);
        const bool direct = sizeof(Sample) == 2 && d.dataFormat == kFormatSowt && d.sampleSize == 16 &&
                            std::endian::native == std::endian::little;
        uint8_t* target = direct ? reinterpret_cast<uint8_t*>(out.data() + at) : nullptr;
        if (!direct) {
            scratch.resize(bytes);
            target = scratch.data();
        }
        if (Status s = piece.run->store->ReadBytes(piece.firstInStore * bytesPerFrame, bytes, target)) return s;
        if (!direct) {
            if constexpr (sizeof(Sample) == 2) PcmToInt16(d, target, samples, out.data() + at);
            else PcmToFloat(d, target, samples, out.data() + at);
        }
        at += samples;
        return util::kNoError;
    }
    std::vector<float> block;
    for (int64_t done = 0; done < piece.frames;) {
        const int64_t want = std::min(kDecodeBlockFrames, piece.frames - done);
        block.resize(size_t(want) * size_t(channels));
        int64_t got = 0;
        if (Status s = piece.run->store->ReadFloatFrames(piece.firstInStore + done, want, block.data(), &got)) return s;
        const size_t gotSamples = size_t(got) * size_t(channels);
        out.resize(at + gotSamples);
        for (size_t i = 0; i < gotSamples; ++i) {
            if constexpr (sizeof(Sample) == 2) out[at + i] = FloatToInt16(block[i]);
            else out[at + i] = block[i];
        }
        at += gotSamples;
        done += got;
        if (got < want) break;  // the stream ended before the duration its container stated
    }
    return util::kNoError;
}

template <typename Sample>
Status ReadFrames(const Media& media, int64_t firstFrame, int64_t frameCount, std::vector<Sample>& out) {
    out.clear();
    int channels = 0;
    if (Status s = CheckRange(media, firstFrame, frameCount, sizeof(Sample), channels)) return s;
    try {
        std::vector<uint8_t> scratch;
        size_t at = 0;
        for (const Piece& piece : PiecesOf(media, firstFrame, frameCount))
            if (Status s = ReadPiece(media, piece, channels, out, at, scratch)) {
                out.clear();
                return s;
            }
        out.resize(at);
    } catch (const std::bad_alloc&) {
        out.clear();
        return MediaFailure(util::kMemoryFull, "no memory for the samples");
    }
    return util::kNoError;
}

}  // namespace

Status ReadFramesInt16(const Media& media, int64_t firstFrame, int64_t frameCount, std::vector<int16_t>& out) {
    return ReadFrames(media, firstFrame, frameCount, out);
}

Status ReadFramesFloat(const Media& media, int64_t firstFrame, int64_t frameCount, std::vector<float>& out) {
    return ReadFrames(media, firstFrame, frameCount, out);
}

Status CheckStoredBytes(const Media& media, int64_t firstFrame, int64_t& frameCount) {
    int channels = 0;
    if (Status s = CheckRange(media, firstFrame, frameCount, 1, channels)) return s;
    const SampleDescription& first = media.Descriptions().front();
    const int bytesPerFrame = BytesPerFrame(first);
    if (bytesPerFrame == 0) return MediaFailure(util::kCorruptData, "compressed sound has no PCM bytes");
    if (uint64_t(frameCount) * uint64_t(bytesPerFrame) > kMaxReadBytes)
        return SoundTooLarge("too many samples for one read");
    for (const Piece& piece : PiecesOf(media, firstFrame, frameCount)) {
        const SampleDescription& d = DescriptionOf(media, *piece.run);
        if (!piece.run->store->ByteAddressable() || d.dataFormat != first.dataFormat ||
            d.sampleSize != first.sampleSize || d.bigEndian != first.bigEndian)
            return MediaFailure(util::kCorruptData, "the sound's samples are not all in one PCM format");
    }
    return util::kNoError;
}

Status ReadStoredBytesInto(const Media& media, int64_t firstFrame, int64_t frameCount, uint8_t* out) {
    const int bytesPerFrame = BytesPerFrame(media.Descriptions().front());
    try {
        for (const Piece& piece : PiecesOf(media, firstFrame, frameCount)) {
            const size_t bytes = size_t(piece.frames) * size_t(bytesPerFrame);
            if (Status s = piece.run->store->ReadBytes(piece.firstInStore * bytesPerFrame, bytes, out)) return s;
            out += bytes;
        }
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory for the samples");
    }
    return util::kNoError;
}

Status ReadStoredBytes(const Media& media, int64_t firstFrame, int64_t frameCount, std::vector<uint8_t>& out) {
    out.clear();
    if (Status s = CheckStoredBytes(media, firstFrame, frameCount)) return s;
    try {
        out.resize(size_t(frameCount) * size_t(BytesPerFrame(media.Descriptions().front())));
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory for the samples");
    }
    if (Status s = ReadStoredBytesInto(media, firstFrame, frameCount, out.data())) {
        out.clear();
        return s;
    }
    return util::kNoError;
}

Status SequentialFrameReader::Next(int64_t maxFrames, std::vector<float>& out, int64_t& frames) {
    frames = 0;
    const auto& runs = media_.Runs();
    if (media_.Descriptions().empty()) return util::kNoError;
    const size_t channels = size_t(media_.Descriptions().front().numberOfChannels);
    try {
        while (run_ < runs.size()) {
            const SampleRun& run = runs[run_];
            const int64_t want = std::min(maxFrames, run.frameCount - inRun_);
            if (want <= 0) {
                ++run_;
                inRun_ = 0;
                continue;
            }
            out.resize(size_t(want) * channels);
            if (run.store->ByteAddressable()) {
                const SampleDescription& d = DescriptionOf(media_, run);
                const int bytesPerFrame = BytesPerFrame(d);
                bytes_.resize(size_t(want) * size_t(bytesPerFrame));
                if (Status s = run.store->ReadBytes((run.firstFrame + inRun_) * bytesPerFrame, bytes_.size(), bytes_.data()))
                    return s;
                PcmToFloat(d, bytes_.data(), out.size(), out.data());
                frames = want;
            } else {
                if (Status s = run.store->ReadFloatFrames(run.firstFrame + inRun_, want, out.data(), &frames)) return s;
                if (frames < want) inRun_ = run.frameCount - frames;  // ended early: this run is done after these
            }
            inRun_ += frames;
            if (frames > 0) {
                out.resize(size_t(frames) * channels);
                return util::kNoError;
            }
        }
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory for the samples");
    }
    return util::kNoError;
}

}  // namespace vd::media
