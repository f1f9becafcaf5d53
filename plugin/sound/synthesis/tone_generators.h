// The waveform generators: one block of samples of one waveform, bit for bit as the tones of
// earlier releases were made, so a sound created today matches one stored years ago.
#pragma once

#include <cstdint>
#include <span>

namespace vd::sound {

// Fills block with the waveform of flags at rate and frequency (hertz). The frame count follows
// from the block's size (bytes per sample, times 2 for stereo). Samples: 8-bit unsigned (centre
// 128), 16-bit signed big-endian, or 32-bit floats in the machine's order; stereo frames are left
// then right, a channel that is not selected holding the centre value (noise and silence fill both).
// phase, when given, starts the sine and afterwards has advanced by the block's cycles (times 2π
// for the sine; silence and noise leave it alone). A size code no generator knows writes nothing.
void GenerateTone(uint16_t flags, double rate, double frequency, std::span<uint8_t> block, double* phase);

}  // namespace vd::sound
