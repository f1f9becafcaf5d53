#include "platform/media/sound_description.h"

namespace vd::media {

uint32_t RateToFixed(double hertz) {
    if (!(hertz > 0)) return 0;
    double fixed = hertz * 65536.0;
    return fixed >= double(0xFFFF0000u) ? 0xFFFF0000u : uint32_t(fixed);
}

SampleDescription PcmSoundDescription(FourCharCode format, int channels, int bitsPerSample, double rate) {
    SampleDescription d;
    d.dataFormat = format;
    d.numberOfChannels = int16_t(channels);
    d.sampleSize = int16_t(bitsPerSample);
    d.sampleRate = RateToFixed(rate);
    d.exactSampleRate = rate;
    d.bigEndian = format == kFormatTwos;
    // The classic record (version 0) describes 8- and 16-bit integer PCM; wider and floating
    // formats needed the version 1 extension on the Mac.
    d.version = (format == kFormatSowt || format == kFormatTwos || format == kFormatRaw) ? 0 : 1;
    d.bitRate = int64_t(rate * channels * bitsPerSample);
    return d;
}

bool IsPcm(const SampleDescription& d) {
    switch (d.dataFormat) {
        case kFormatSowt:
        case kFormatTwos: return d.sampleSize == 16 || (d.dataFormat == kFormatTwos && d.sampleSize == 8);
        case kFormatRaw: return d.sampleSize == 8;
        case kFormatInt24: return d.sampleSize == 24;
        case kFormatInt32:
        case kFormatFloat32: return d.sampleSize == 32;
        case kFormatFloat64: return d.sampleSize == 64;
        default: return false;
    }
}

int BytesPerFrame(const SampleDescription& d) {
    if (!IsPcm(d) || d.numberOfChannels <= 0) return 0;
    return d.sampleSize / 8 * d.numberOfChannels;
}

bool IsCdQualitySowt(const SampleDescription& d) {
    return d.dataFormat == kFormatSowt && d.sampleSize == 16 && d.numberOfChannels == 2 &&
           d.exactSampleRate == 44100.0;
}

}  // namespace vd::media
