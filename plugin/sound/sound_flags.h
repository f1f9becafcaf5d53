// The word every tone generator is handed: which channels to write, how big a sample is and which
// waveform to draw. The layout is the one the test chime and the sound-format preview were built
// around, so one generator serves mono previews and stereo results alike.
#pragma once

#include <cstdint>

namespace vd::sound {

inline constexpr uint16_t kLeftChannel = 0x0001;
inline constexpr uint16_t kRightChannel = 0x0002;
inline constexpr uint16_t kChannelBits = 0x000F;  // 0 = mono; any of bits 0-1 = stereo

inline constexpr uint16_t kSampleSizeBits = 0x00F0;
inline constexpr uint16_t kSample8 = 0x0000;
inline constexpr uint16_t kSample16 = 0x0010;
inline constexpr uint16_t kSampleFloat32 = 0x0020;

inline constexpr uint16_t kWaveformBits = 0x0F00;
inline constexpr uint16_t kSilence = 0x0000;
inline constexpr uint16_t kSine = 0x0100;
inline constexpr uint16_t kSquare = 0x0200;
inline constexpr uint16_t kSawtooth = 0x0300;
inline constexpr uint16_t kNoise = 0x0400;

// Stereo, both channels, 16-bit: what Vandrel_CreateSound adds to the waveform code.
inline constexpr uint16_t kStereo16BothChannels = 0x0013;

inline bool IsStereo(uint16_t flags) { return (flags & (kLeftChannel | kRightChannel)) != 0; }

// 1, 2 or 4; 0 for a size code no generator writes.
inline int BytesPerSample(uint16_t flags) {
    switch (flags & kSampleSizeBits) {
        case kSample8: return 1;
        case kSample16: return 2;
        case kSampleFloat32: return 4;
        default: return 0;
    }
}

}  // namespace vd::sound
