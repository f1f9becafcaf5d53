// Sound of the output's rate (every synthesised sound, every result rendered at 44100 Hz) is read
// as 16-bit blocks and mixed down in one pass; other rates go through floats and the resampler.
#include "platform/media/sound_converter.h"

#include "platform/common/fresh_memory.h"
#include "platform/media/pcm_conversion.h"
#include "platform/media/movie_time.h"
#include "platform/media/resampler.h"
#include "platform/media/sample_reading.h"

#include <algorithm>
#include <new>

namespace vd::media {

namespace {

constexpr int64_t kBlockFrames = 1 << 16;

inline uint8_t Eight(int32_t mix) { return uint8_t((mix >> 8) + 128); }

void MixDown(const int16_t* in, size_t frames, int channels, uint8_t* out) {
    if (channels == 1) {
        for (size_t i = 0; i < frames; ++i) out[i] = Eight(in[i]);
    } else if (channels == 2) {
        for (size_t i = 0; i < frames; ++i) out[i] = Eight((int32_t(in[2 * i]) + in[2 * i + 1]) >> 1);
    } else {
        for (size_t i = 0; i < frames; ++i) {
            int32_t sum = 0;
            for (int c = 0; c < channels; ++c) sum += in[i * size_t(channels) + size_t(c)];
            // Floor division, as the shift does for two channels.
            int32_t mix = sum >= 0 ? sum / channels : -((-sum + channels - 1) / channels);
            out[i] = Eight(mix);
        }
    }
}

Status SameRate(const Media& media, int channels, std::vector<uint8_t>& out) {
    std::vector<int16_t> block;
    const int64_t total = media.Duration();
    for (int64_t at = 0; at < total; at += kBlockFrames) {
        if (Status s = StopRequestStatus()) return s;
        if (Status s = ReadFramesInt16(media, at, kBlockFrames, block)) return s;
        const size_t frames = block.size() / size_t(channels);
        if (frames == 0) break;  // compressed sound that ends before its stated duration
        const size_t before = out.size();
        out.resize(before + frames);
        MixDown(block.data(), frames, channels, out.data() + before);
    }
    return util::kNoError;
}

Status OtherRate(const Media& media, int channels, int32_t outRate, std::vector<uint8_t>& out) {
    std::unique_ptr<Resampler> resampler;
    if (Status s = Resampler::Create(media.timeScale, channels, outRate, channels, resampler)) return s;
    SequentialFrameReader reader(media);
    std::vector<float> input, converted;
    std::vector<int16_t> samples;
    for (bool ended = false; !ended;) {
        if (Status s = StopRequestStatus()) return s;
        int64_t frames = 0;
        if (Status s = reader.Next(kBlockFrames, input, frames)) return s;
        converted.clear();
        if (frames > 0) {
            if (Status s = resampler->Convert(input.data(), frames, converted)) return s;
        } else {
            ended = true;
            for (size_t before = SIZE_MAX; before != converted.size();) {  // what the filter still holds
                before = converted.size();
                if (Status s = resampler->Convert(nullptr, 0, converted)) return s;
            }
        }
        samples.resize(converted.size());
        for (size_t i = 0; i < converted.size(); ++i) samples[i] = FloatToInt16(converted[i]);
        const size_t outFrames = samples.size() / size_t(channels);
        const size_t before = out.size();
        out.resize(before + outFrames);
        MixDown(samples.data(), outFrames, channels, out.data() + before);
    }
    return util::kNoError;
}

}  // namespace

void FloatFramesToMono8(const float* in, size_t frames, int channels, uint8_t* out) {
    constexpr size_t kBlock = 4096;
    int16_t block[kBlock * 8];
    const size_t perBlock = channels <= 8 ? kBlock : 1;
    for (size_t done = 0; done < frames;) {
        const size_t n = std::min(perBlock, frames - done);
        if (channels <= 8) {
            FloatsToInt16(in + done * size_t(channels), n * size_t(channels), block);
            MixDown(block, n, channels, out + done);
        } else {
            std::vector<int16_t> wide(static_cast<size_t>(channels));
            FloatsToInt16(in + done * size_t(channels), size_t(channels), wide.data());
            MixDown(wide.data(), 1, channels, out + done);
        }
        done += n;
    }
}

Status ConvertToMono8(const Media& media, int32_t outRate, uint64_t maxBytes, std::vector<uint8_t>& out) {
    if (media.Descriptions().empty() || media.Duration() == 0) return util::kNoError;
    if (outRate <= 0) return MediaFailure(util::kBadParameter, "no output rate");
    const int channels = media.Descriptions().front().numberOfChannels;
    if (channels < 1) return MediaFailure(util::kInvalidMedia, "a sound media without channels");
    const int64_t expected = ConvertTimeScale(media.Duration(), media.timeScale, outRate);
    if (expected < 0 || uint64_t(expected) > maxBytes)
        return SoundTooLarge("the sound is too long to store in a container");
    const size_t before = out.size();
    try {
        out.reserve(before + size_t(expected) + 1024);
        platform::AdviseHugePages(out.data() + before, out.capacity() - before);
        Status s = media.timeScale == outRate ? SameRate(media, channels, out) : OtherRate(media, channels, outRate, out);
        if (s) {
            out.resize(before);
            return s;
        }
    } catch (const std::bad_alloc&) {
        out.resize(before);
        return MediaFailure(util::kMemoryFull, "no memory for the converted sound");
    }
    if (out.size() - before > maxBytes) out.resize(before + size_t(maxBytes));
    return util::kNoError;
}

}  // namespace vd::media
