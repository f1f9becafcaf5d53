// Each waveform is one loop over frames with the sample size fixed at compile time, so a long
// sound costs one sin() (or less) per frame and no call per sample.
#include "sound/synthesis/tone_generators.h"

#include "sound/sound_flags.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace vd::sound {

namespace {

constexpr double kTwoPi = 6.283185307179586476925286766559;

// One sample size: how a value is stored and what the centre is.
struct Bytes8 {
    static constexpr size_t kSize = 1;
    static void Put(uint8_t* at, int32_t value) { at[0] = uint8_t(value); }
    static void PutCentre(uint8_t* at) { at[0] = 128; }
};
struct Bytes16 {
    static constexpr size_t kSize = 2;
    static void Put(uint8_t* at, int32_t value) {  // the low 16 bits, big-endian
        at[0] = uint8_t(uint32_t(value) >> 8);
        at[1] = uint8_t(value);
    }
    static void PutCentre(uint8_t* at) { at[0] = at[1] = 0; }
};
struct Float32 {
    static constexpr size_t kSize = 4;
    static void Put(uint8_t* at, float value) { std::memcpy(at, &value, sizeof value); }
    static void PutCentre(uint8_t* at) { Put(at, 0.0f); }
};

// Writes one frame: the value into the selected channels (every channel of a mono block), the
// centre into the others.
template <typename Format, typename Value>
inline uint8_t* PutFrame(uint8_t* at, bool stereo, bool left, bool right, Value value) {
    if (!stereo) {
        Format::Put(at, value);
        return at + Format::kSize;
    }
    if (left) Format::Put(at, value);
    else Format::PutCentre(at);
    if (right) Format::Put(at + Format::kSize, value);
    else Format::PutCentre(at + Format::kSize);
    return at + 2 * Format::kSize;
}

struct Layout {
    bool stereo, left, right;
    size_t frames;
};

template <typename Format>
void Sine(uint8_t* at, const Layout& l, double rate, double frequency, double phase) {
    const double step = kTwoPi / rate;
    double angle = 0;
    for (size_t n = 0; n < l.frames; ++n) {
        const double s = std::sin(angle * frequency + phase);
        angle += step;
        if constexpr (Format::kSize == 1) {
            at = PutFrame<Format>(at, l.stereo, l.left, l.right, l.stereo ? int32_t(128 + 127 * s) : int32_t(127 * s + 128));
        } else if constexpr (Format::kSize == 2) {
            // Mono keeps the offset of 32768 it was always written with (the test chime's path).
            at = PutFrame<Format>(at, l.stereo, l.left, l.right, l.stereo ? int32_t(32767 * s) : int32_t(32767 * s + 32768));
        } else {
            at = PutFrame<Format>(at, l.stereo, l.left, l.right, float(s));
        }
    }
}

template <typename Format>
void Square(uint8_t* at, const Layout& l, double rate, double frequency) {
    const double tick = 1.0 / rate;
    double t = 0;
    for (size_t n = 0; n < l.frames; ++n) {
        const double cycles = frequency * t;
        const bool high = cycles - std::floor(cycles) > 0.5;
        t += tick;
        if constexpr (Format::kSize == 1) at = PutFrame<Format>(at, l.stereo, l.left, l.right, high ? 255 : 0);
        else if constexpr (Format::kSize == 2) at = PutFrame<Format>(at, l.stereo, l.left, l.right, high ? 32767 : -32768);
        else at = PutFrame<Format>(at, l.stereo, l.left, l.right, high ? 1.0f : -1.0f);
    }
}

template <typename Format>
void Sawtooth(uint8_t* at, const Layout& l, double rate, double frequency) {
    const double period = rate / frequency;
    // A period shorter than a frame (or an endless one) still gives a defined ramp, not a
    // division by zero.
    const uint64_t whole = !(period < 9e18) ? std::numeric_limits<uint64_t>::max() : period < 1 ? 1 : uint64_t(period);
    for (size_t n = 0; n < l.frames; ++n) {
        const double x = double(n % whole) / period - 0.5;
        // The 8-bit form stores the two's-complement value into the unsigned format, as it always has.
        if constexpr (Format::kSize == 1) at = PutFrame<Format>(at, l.stereo, l.left, l.right, int32_t(255 * x));
        else if constexpr (Format::kSize == 2) at = PutFrame<Format>(at, l.stereo, l.left, l.right, int32_t(65535 * x));
        else at = PutFrame<Format>(at, l.stereo, l.left, l.right, float(x + x));
    }
}

// Noise and silence fill every channel whatever the channel bits say.
template <typename Format>
void Noise(uint8_t* at, size_t samples) {
    for (size_t i = 0; i < samples; ++i, at += Format::kSize) {
        if constexpr (Format::kSize == 4) Format::Put(at, float(std::rand()));
        else Format::Put(at, int32_t(std::rand()));
    }
}

template <typename Format>
void Silence(uint8_t* at, size_t samples) {
    if constexpr (Format::kSize == 1) std::memset(at, 128, samples);
    else if constexpr (Format::kSize == 2) std::memset(at, 0, samples * 2);
    else
        for (size_t i = 0; i < samples; ++i, at += Format::kSize) Format::PutCentre(at);
}

template <typename Format>
void Generate(uint16_t waveform, uint8_t* at, const Layout& l, double rate, double frequency, double phase) {
    switch (waveform) {
        case kSilence: Silence<Format>(at, l.frames * (l.stereo ? 2 : 1)); break;
        case kSquare: Square<Format>(at, l, rate, frequency); break;
        case kSawtooth: Sawtooth<Format>(at, l, rate, frequency); break;
        case kNoise: Noise<Format>(at, l.frames * (l.stereo ? 2 : 1)); break;
        default: Sine<Format>(at, l, rate, frequency, phase); break;  // unknown codes were always sines
    }
}

}  // namespace

void GenerateTone(uint16_t flags, double rate, double frequency, std::span<uint8_t> block, double* phase) {
    const int bytes = BytesPerSample(flags);
    if (bytes == 0) return;
    Layout layout{IsStereo(flags), (flags & kLeftChannel) != 0, (flags & kRightChannel) != 0, 0};
    layout.frames = block.size() / size_t(bytes) / (layout.stereo ? 2 : 1);
    const uint16_t waveform = flags & kWaveformBits;
    const double start = phase ? *phase : 0.0;
    switch (bytes) {
        case 1: Generate<Bytes8>(waveform, block.data(), layout, rate, frequency, start); break;
        case 2: Generate<Bytes16>(waveform, block.data(), layout, rate, frequency, start); break;
        default: Generate<Float32>(waveform, block.data(), layout, rate, frequency, start); break;
    }
    if (phase && waveform != kSilence && waveform != kNoise) {
        const double cycles = double(layout.frames) / rate * frequency;
        const bool sine = waveform != kSquare && waveform != kSawtooth;
        *phase = start + cycles * (sine ? kTwoPi : 1.0);
    }
}

}  // namespace vd::sound
