// Sound files for the movie layer's tests, made on the spot: PCM WAV files written here from a
// known sine (so every sample value is known), and other containers and codecs converted from
// them by the ffmpeg program.
#pragma once

#include "support/process.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include <dirent.h>
#include <unistd.h>

namespace vdtest::media {

inline constexpr double kPi = 3.14159265358979323846;

// The test sine: 16-bit, amplitude 10000, channel c at frequency 440 × (c + 1).
inline int16_t SineSample(int64_t frame, int channel, int rate = 44100) {
    return int16_t(std::lround(10000.0 * std::sin(2 * kPi * 440.0 * (channel + 1) * double(frame) / rate)));
}

inline void PutLe(std::string& s, uint32_t v, int bytes) {
    for (int i = 0; i < bytes; ++i) s.push_back(char(v >> (8 * i)));
}

// A WAV file of PCM sample bytes (8-bit unsigned, 16 or 24 bits little-endian).
inline std::string PcmWav(const std::string& data, int channels, int rate, int bits) {
    std::string wav = "RIFF";
    PutLe(wav, uint32_t(36 + data.size()), 4);
    wav += "WAVEfmt ";
    PutLe(wav, 16, 4);
    PutLe(wav, 1, 2);
    PutLe(wav, uint32_t(channels), 2);
    PutLe(wav, uint32_t(rate), 4);
    PutLe(wav, uint32_t(rate * channels * bits / 8), 4);
    PutLe(wav, uint32_t(channels * bits / 8), 2);
    PutLe(wav, uint32_t(bits), 2);
    wav += "data";
    PutLe(wav, uint32_t(data.size()), 4);
    return wav + data;
}

// A 16-bit WAV of the given interleaved samples.
inline std::string Pcm16Wav(const std::vector<int16_t>& samples, int channels, int rate = 44100) {
    std::string data;
    for (int16_t v : samples) PutLe(data, uint16_t(v), 2);
    return PcmWav(data, channels, rate, 16);
}

// A PCM WAV of the test sine: bits 8 (unsigned, centre 128), 16 or 24.
inline std::string SineWav(int64_t frames, int channels, int rate = 44100, int bits = 16) {
    std::string data;
    for (int64_t n = 0; n < frames; ++n)
        for (int c = 0; c < channels; ++c) {
            int16_t v = SineSample(n, c, rate);
            if (bits == 8) data.push_back(char(uint8_t(128 + (v >> 8))));
            else if (bits == 16) PutLe(data, uint16_t(v), 2);
            else PutLe(data, uint32_t(int32_t(v) * 256) & 0xFFFFFF, 3);
        }
    return PcmWav(data, channels, rate, bits);
}

inline std::string FfmpegPath() { return programOnPath("ffmpeg"); }

inline bool HaveFfmpeg() { return !FfmpegPath().empty(); }

// Runs ffmpeg quietly with the arguments; fails the test when it does not succeed.
inline void Ffmpeg(const std::vector<std::string>& arguments) {
    std::vector<std::string> argv{FfmpegPath(), "-nostdin", "-hide_banner", "-loglevel", "error", "-y"};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    auto r = runProcess(argv);
    ASSERT_EQ(r.status, 0) << r.err;
}

#define VD_REQUIRE_FFMPEG() \
    if (!::vdtest::media::HaveFfmpeg()) GTEST_SKIP() << "the ffmpeg program is not installed"

inline int OpenDescriptors() {
    int count = 0;
    if (DIR* dir = opendir("/proc/self/fd")) {
        while (readdir(dir)) ++count;
        closedir(dir);
    }
    return count;
}

inline std::vector<std::string> FolderEntries(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) names.push_back(entry.path().filename());
    return names;
}

// Little-endian fields of a file's bytes.
inline int16_t Le16(const std::string& b, size_t at) { return int16_t(uint8_t(b[at]) | uint8_t(b[at + 1]) << 8); }

}  // namespace vdtest::media
