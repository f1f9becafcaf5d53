#include "platform/media/pcm_conversion.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <utility>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace vd::media {

namespace {

template <typename T>
T Load(const uint8_t* p, bool bigEndian) {
    uint8_t bytes[sizeof(T)];
    std::memcpy(bytes, p, sizeof bytes);
    if (bigEndian != (std::endian::native == std::endian::big))
        for (size_t i = 0; i < sizeof bytes / 2; ++i) std::swap(bytes[i], bytes[sizeof bytes - 1 - i]);
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

int32_t LoadInt24(const uint8_t* p, bool bigEndian) {
    uint32_t u = bigEndian ? (uint32_t(p[0]) << 16 | uint32_t(p[1]) << 8 | p[2])
                           : (uint32_t(p[2]) << 16 | uint32_t(p[1]) << 8 | p[0]);
    return int32_t(u << 8) >> 8;  // sign-extend from 24 bits
}

// NaN samples are read as silence here already, so that a resampler does not spread them over
// their neighbours.
float LoadFloat32(const uint8_t* p, bool bigEndian) {
    const float value = std::bit_cast<float>(Load<uint32_t>(p, bigEndian));
    return value == value ? value : 0.0f;
}
double LoadFloat64(const uint8_t* p, bool bigEndian) {
    const double value = std::bit_cast<double>(Load<uint64_t>(p, bigEndian));
    return value == value ? value : 0.0;
}

// Every integer layout on one scale: the sample as a signed 32-bit value (full scale 2^31).
template <typename Sink>
void ForEachSample(const SampleDescription& d, const uint8_t* in, size_t samples, Sink sink) {
    const bool big = d.bigEndian;
    switch (d.dataFormat) {
        case kFormatRaw:
            for (size_t i = 0; i < samples; ++i) sink(i, (int32_t(in[i]) - 128) * (1 << 24));
            return;
        case kFormatTwos:
        case kFormatSowt:
            if (d.sampleSize == 8) {
                for (size_t i = 0; i < samples; ++i) sink(i, int32_t(int8_t(in[i])) * (1 << 24));
                return;
            }
            for (size_t i = 0; i < samples; ++i) sink(i, int32_t(Load<int16_t>(in + 2 * i, big)) * (1 << 16));
            return;
        case kFormatInt24:
            for (size_t i = 0; i < samples; ++i) sink(i, LoadInt24(in + 3 * i, big) * (1 << 8));
            return;
        case kFormatInt32:
            for (size_t i = 0; i < samples; ++i) sink(i, Load<int32_t>(in + 4 * i, big));
            return;
        default: return;
    }
}

}  // namespace

void FloatsToInt16(const float* in, size_t samples, int16_t* out) {
    size_t i = 0;
#ifdef __SSE2__
    // Four at a time with the same rule: NaN to 0 (an ordered compare is false only for NaN, and
    // the mask clears it), clamp, round to nearest even (the default rounding mode, as lrintf),
    // pack. The compiler does not vectorize the scalar form.
    const __m128 scale = _mm_set1_ps(32768.0f), bottom = _mm_set1_ps(-32768.0f), top = _mm_set1_ps(32767.0f);
    for (; i + 8 <= samples; i += 8) {
        __m128 a = _mm_loadu_ps(in + i), b = _mm_loadu_ps(in + i + 4);
        a = _mm_mul_ps(_mm_and_ps(a, _mm_cmpord_ps(a, a)), scale);
        b = _mm_mul_ps(_mm_and_ps(b, _mm_cmpord_ps(b, b)), scale);
        a = _mm_min_ps(_mm_max_ps(a, bottom), top);
        b = _mm_min_ps(_mm_max_ps(b, bottom), top);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), _mm_packs_epi32(_mm_cvtps_epi32(a), _mm_cvtps_epi32(b)));
    }
#endif
    for (; i < samples; ++i) out[i] = FloatToInt16(in[i]);
}

void PcmToInt16(const SampleDescription& d, const uint8_t* in, size_t samples, int16_t* out) {
    if (d.dataFormat == kFormatSowt && d.sampleSize == 16 && std::endian::native == std::endian::little) {
        std::memcpy(out, in, samples * 2);  // the common case, and the one reading a long sound hits
        return;
    }
    if (d.dataFormat == kFormatFloat32) {
        for (size_t i = 0; i < samples; ++i) out[i] = FloatToInt16(LoadFloat32(in + 4 * i, d.bigEndian));
        return;
    }
    if (d.dataFormat == kFormatFloat64) {
        for (size_t i = 0; i < samples; ++i) out[i] = FloatToInt16(float(LoadFloat64(in + 8 * i, d.bigEndian)));
        return;
    }
    // Wider integers keep their top 16 bits (truncation, as the Mac's converters did).
    ForEachSample(d, in, samples, [out](size_t i, int32_t v) { out[i] = int16_t(v >> 16); });
}

void PcmToFloat(const SampleDescription& d, const uint8_t* in, size_t samples, float* out) {
    if (d.dataFormat == kFormatFloat32) {
        for (size_t i = 0; i < samples; ++i) out[i] = LoadFloat32(in + 4 * i, d.bigEndian);
        return;
    }
    if (d.dataFormat == kFormatFloat64) {
        for (size_t i = 0; i < samples; ++i) out[i] = float(LoadFloat64(in + 8 * i, d.bigEndian));
        return;
    }
    constexpr float kScale = 1.0f / 2147483648.0f;
    ForEachSample(d, in, samples, [out](size_t i, int32_t v) { out[i] = float(v) * kScale; });
}

}  // namespace vd::media
