#include "sound/synthesis/tone_synthesis.h"

#include "platform/media/new_sound_movie.h"
#include "sound/synthesis/fixed_point.h"
#include "sound/synthesis/note_table.h"
#include "sound/sound_flags.h"
#include "sound/synthesis/tone_generators.h"

#include <array>
#include <new>
#include <vector>

namespace vd::sound {

namespace {

constexpr uint32_t kLeadInDuration = 256;  // 256/65536 s: lets the output settle before the first note

media::FourCharCode FormatFor(int bytesPerSample) {
    switch (bytesPerSample) {
        case 1: return media::kFormatRaw;
        case 2: return media::kFormatTwos;
        default: return media::kFormatFloat32;
    }
}

// The record each block is added with; every field not named here stays 0.
media::SampleDescription BlockDescription(uint16_t flags, uint32_t rate) {
    const int bytes = BytesPerSample(flags);
    media::SampleDescription d;
    d.descriptorSize = 36;
    d.dataFormat = FormatFor(bytes);
    d.dataReferenceIndex = 1;
    d.version = 0;
    d.numberOfChannels = IsStereo(flags) ? 2 : 1;
    d.sampleSize = int16_t(bytes * 8);
    d.sampleRate = rate;
    d.exactSampleRate = FloatFromFixed(rate);
    d.bigEndian = bytes == 2;  // 16-bit samples are byte-swapped after they are computed
    return d;
}

int32_t TimeScaleOf(uint32_t rate) { return int32_t((uint64_t(rate) + 32768) >> 16); }

}  // namespace

Status AppendToneSegment(uint32_t duration, uint32_t rate, uint32_t frequency, media::Media& media, uint16_t flags,
                         double* phase) {
    const int bytes = BytesPerSample(flags);
    if (bytes == 0) return media::MediaFailure(util::kBadParameter, "no generator writes that sample size");
    const float product = (float(duration) / 65536.0f) * (float(rate) / 65536.0f);
    const uint64_t frames = product > 0 ? uint64_t(product) : 0;
    const uint64_t frameBytes = uint64_t(bytes) * (IsStereo(flags) ? 2 : 1);
    if (frames > kMaxSegmentBytes / frameBytes) return media::MediaFailure(util::kMemoryFull, "the tone is too long to hold");
    std::vector<uint8_t> block;
    try {
        block.resize(size_t(frames * frameBytes));
    } catch (const std::bad_alloc&) {
        return media::MediaFailure(util::kMemoryFull, "no memory for the tone");
    }
    GenerateTone(flags, FloatFromFixed(rate), FloatFromFixed(frequency), block, phase);
    return media.AppendSamples(BlockDescription(flags, rate), block.data(), block.size(), int64_t(frames));
}

Status GenerateSoundMovie(uint32_t duration, uint32_t rate, uint32_t frequency, uint16_t flags, media::Movie& movie) {
    media::Movie made;
    if (Status s = media::NewMemorySoundMovie(TimeScaleOf(rate), made)) return s;
    media::Track& track = made.TrackAt(0);
    if (Status s = AppendToneSegment(duration, rate, frequency, track.media, flags)) return s;
    track.InsertMedia(0);
    movie = std::move(made);
    return util::kNoError;
}

Status BuildTestChime(uint32_t noteDuration, uint32_t rate, uint16_t flags, bool descending, media::Movie& movie) {
    media::Movie made;
    if (Status s = media::NewMemorySoundMovie(TimeScaleOf(rate), made)) return s;
    media::Track& track = made.TrackAt(0);
    double phase = 0.0;
    if (Status s = AppendToneSegment(kLeadInDuration, rate, 0, track.media, flags & ~kWaveformBits, &phase)) return s;
    std::array<const char*, 3> notes{"c4", "e4", "g4"};
    if (descending) std::swap(notes[0], notes[2]);
    for (const char* note : notes) {
        auto frequency = NoteFrequencyFromName(note);
        if (!frequency) return media::MediaFailure(util::kBadParameter, "the chime's notes are not in the table");
        if (Status s = AppendToneSegment(noteDuration, rate, frequency->fixed, track.media, flags, &phase)) return s;
    }
    track.InsertMedia(0);
    movie = std::move(made);
    return util::kNoError;
}

}  // namespace vd::sound
