// The virtual output's capture read back, and the mix it should hold worked out independently from
// the sounds' known samples and the events its log says took effect.
#pragma once

#include "platform/audio/playing_sound.h"
#include "platform/media/movie_from_file.h"

#include "../media/media_fixtures.h"
#include "plugin/plugin_test_support.h"

#include <chrono>
#include <cmath>
#include <cstring>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <thread>

namespace vdtest::audio {

struct LogEvent {
    int64_t frame;
    std::string kind;
    int sound;
    double value;
};

struct Capture {
    std::vector<float> samples;  // interleaved stereo
    std::vector<LogEvent> events;
    int64_t Frames() const { return int64_t(samples.size() / 2); }
    int64_t FrameOf(const std::string& kind, int sound) const {
        for (const LogEvent& e : events)
            if (e.kind == kind && e.sound == sound) return e.frame;
        return -1;
    }
};

inline Capture ReadCapture(const std::string& path) {
    Capture capture;
    const std::string wav = readFile(path);
    EXPECT_GE(wav.size(), 44u);
    EXPECT_EQ(wav.compare(0, 4, "RIFF"), 0);
    uint32_t dataBytes = 0;
    std::memcpy(&dataBytes, wav.data() + 40, 4);
    EXPECT_EQ(dataBytes, wav.size() - 44) << "the header describes every frame written";
    capture.samples.resize((wav.size() - 44) / 4);
    std::memcpy(capture.samples.data(), wav.data() + 44, capture.samples.size() * 4);
    std::istringstream log(readFile(path + ".log"));
    LogEvent e;
    while (log >> e.frame >> e.kind >> e.sound >> e.value) capture.events.push_back(e);
    return capture;
}

// Plays the log's events over the sounds' samples (interleaved stereo 16-bit, sound n at index
// n - 1) the plain way, one frame at a time in double precision.
inline std::vector<float> ExpectedMix(const std::vector<std::vector<int16_t>>& sounds, const Capture& capture) {
    struct State {
        double position = 0, rate = 0, volume = 256, balance = 0;
        bool done = false;
    };
    std::vector<State> states(sounds.size());
    std::vector<float> mix(capture.samples.size(), 0.0f);
    size_t next = 0;
    for (int64_t n = 0; n <= capture.Frames(); ++n) {
        for (; next < capture.events.size() && capture.events[next].frame == n; ++next) {
            const LogEvent& e = capture.events[next];
            State& s = states.at(size_t(e.sound - 1));
            if (e.kind == "start" || e.kind == "rate" || e.kind == "stop") s.rate = e.value;
            else if (e.kind == "volume") s.volume = e.value;
            else if (e.kind == "balance") s.balance = e.value;
            else if (e.kind == "done") {
                s.done = true;
                EXPECT_GE(s.position, double(sounds[size_t(e.sound - 1)].size() / 2) - 1e-9)
                    << "sound " << e.sound << " done before its end, at frame " << n;
            }
        }
        if (n == capture.Frames()) break;
        for (size_t k = 0; k < sounds.size(); ++k) {
            State& s = states[k];
            if (s.done || s.rate == 0) continue;
            const auto length = int64_t(sounds[k].size() / 2);
            const auto index = int64_t(std::floor(s.position));
            const double t = s.position - double(index);
            EXPECT_LT(index, length) << "sound " << k + 1 << " played past its end at frame " << n;
            if (index >= length) continue;
            const double gain = s.volume / 256 / 32768;
            const double pan[2] = {std::min(1.0, 1 - s.balance), std::min(1.0, 1 + s.balance)};
            for (int c = 0; c < 2; ++c) {
                const double a = sounds[k][size_t(2 * index + c)];
                const double b = index + 1 < length ? sounds[k][size_t(2 * index + 2 + c)] : 0.0;
                mix[size_t(2 * n + c)] += float((a + (b - a) * t) * gain * pan[c]);
            }
            s.position += s.rate;
        }
    }
    return mix;
}

inline void ExpectSameMix(const std::vector<float>& actual, const std::vector<float>& expected) {
    ASSERT_EQ(actual.size(), expected.size());
    int reported = 0;
    for (size_t i = 0; i < actual.size() && reported < 5; ++i)
        if (std::fabs(actual[i] - expected[i]) > 1e-6f) {
            ADD_FAILURE() << "frame " << i / 2 << " channel " << i % 2 << ": " << actual[i] << " != " << expected[i];
            ++reported;
        }
}

inline int64_t CapturedFrames(const std::string& path) {
    std::error_code error;
    const auto bytes = std::filesystem::file_size(path, error);
    return error || bytes < 44 ? 0 : int64_t((bytes - 44) / 8);
}

inline bool LogHas(const std::string& path, const std::string& line) {
    return Within(std::chrono::seconds(20), [&] { return readFile(path + ".log").find(line) != std::string::npos; });
}

// Interleaved stereo samples, distinct per sound: a sine per channel at frequencies of its own.
inline std::vector<int16_t> Tone(int64_t frames, double frequency, double amplitude = 12000) {
    std::vector<int16_t> samples;
    for (int64_t n = 0; n < frames; ++n)
        for (int c = 0; c < 2; ++c)
            samples.push_back(int16_t(std::lround(amplitude * std::sin(2 * media::kPi * frequency * (c + 1) * double(n) / 44100))));
    return samples;
}

}  // namespace vdtest::audio
