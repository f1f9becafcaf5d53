// Recordings from the virtual input read back through our own reader and ffprobe, and compared
// with the tone or file the input plays.
#include "platform/audio/sound_recording.h"
#include "platform/media/block_source.h"
#include "platform/media/sound_writer.h"

#include "audio_fixtures.h"
#include "support/process.h"

#include <cstdlib>
#include <filesystem>

namespace vd::audio {
namespace {

using Samples = std::vector<int16_t>;

int16_t ToneSample(int64_t frame, int rate = 44100) {
    return int16_t(std::nearbyint(32768.0 * float(0.25 * std::sin(2 * M_PI * 440 * double(frame) / rate))));
}

// The first frame from `from` on whose samples are not the tone's shifted by `shift`, or the end.
size_t FirstOffTone(const Samples& s, int channels, size_t from, int64_t shift) {
    for (size_t i = from; i < s.size() / size_t(channels); ++i)
        for (int c = 0; c < channels; ++c)
            if (std::abs(s[i * size_t(channels) + size_t(c)] - ToneSample(int64_t(i) + shift)) > 1) return i;
    return s.size() / size_t(channels);
}

class SoundRecordingTest : public ::testing::Test {
protected:
    void UseInput(const std::string& options) { setenv("VANDREL_AUDIO", ("virtual:" + options).c_str(), 1); }
    std::string Path(const std::string& name = "take.mov") const { return (folder.path() / name).string(); }

    std::unique_ptr<SoundRecording> Start(const RecordingFormat& format = {}) {
        std::unique_ptr<SoundRecording> recording;
        EXPECT_EQ(SoundRecording::Start(Path(), format, recording), util::kNoError) << media::LastMediaErrorDetail();
        return recording;
    }

    // Drains every 20 ms for `seconds`.
    static void Record(SoundRecording& recording, double seconds) {
        const auto until = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
        while (std::chrono::steady_clock::now() < until) {
            ASSERT_EQ(recording.Drain(), util::kNoError);
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
    }

    static Samples ReadBack(const std::string& path, int channels = 2, int rate = 44100) {
        media::Movie movie;
        EXPECT_EQ(media::MovieFromFile(path, movie), util::kNoError) << media::LastMediaErrorDetail();
        media::OutputFormat format;
        format.sampleRate = rate;
        format.channels = int16_t(channels);
        std::unique_ptr<media::MixedBlockSource> source;
        if (media::MixedBlockSource::Open(movie, format, {}, source) != util::kNoError) return {};
        Samples samples, block(4096 * size_t(channels));
        for (size_t frames = 1; frames > 0;) {
            EXPECT_EQ(source->Read(block.data(), 4096, frames), util::kNoError);
            samples.insert(samples.end(), block.begin(), block.begin() + std::ptrdiff_t(frames * size_t(channels)));
        }
        return samples;
    }

    static std::string Probe(const std::string& path) {
        return vdtest::runProcess({vdtest::programOnPath("ffprobe"), "-v", "error", "-show_entries",
                                   "stream=codec_name,codec_tag_string,sample_rate,channels,duration_ts", "-of",
                                   "default=nw=1", path})
            .out;
    }

    vdtest::TempFolder folder;
};

TEST_F(SoundRecordingTest, TheToneIsRecordedFrameForFrameInRealTimeAndFast) {
    for (const std::string speed : {"realtime", "fast"}) {
        UseInput("in=tone,speed=" + speed);
        auto recording = Start();
        ASSERT_TRUE(recording);
        Record(*recording, 0.3);
        ASSERT_EQ(recording->Finish(), util::kNoError);
        const Samples samples = ReadBack(Path());
        EXPECT_GE(recording->FramesRecorded(), 8192) << speed;
        EXPECT_EQ(int64_t(samples.size() / 2), recording->FramesRecorded()) << speed;
        EXPECT_EQ(FirstOffTone(samples, 2, 0, 0), samples.size() / 2) << speed;
        EXPECT_EQ(recording->FramesDropped(), 0u) << speed;
        EXPECT_EQ(Probe(Path()), "codec_name=pcm_s16le\ncodec_tag_string=sowt\nsample_rate=44100\nchannels=2\n"
                                 "duration_ts=" + std::to_string(recording->FramesRecorded()) + "\n") << speed;
    }
}

TEST_F(SoundRecordingTest, OtherFormatsHoldTheTone) {
    const struct {
        RecordingFormat format;
        std::string probe;
        int tolerance;  // what the sample size keeps of a 16-bit sample
    } cases[] = {{{22050, 1, 8}, "codec_name=pcm_s8\ncodec_tag_string=sowt\nsample_rate=22050\nchannels=1\n", 256},
                 {{48000, 2, 24}, "codec_name=pcm_s24le\ncodec_tag_string=in24\nsample_rate=48000\nchannels=2\n", 1}};
    for (const auto& c : cases) {
        UseInput("in=tone,speed=fast");
        auto recording = Start(c.format);
        ASSERT_TRUE(recording);
        Record(*recording, 0.05);
        ASSERT_EQ(recording->Finish(), util::kNoError);
        EXPECT_EQ(Probe(Path()), c.probe + "duration_ts=" + std::to_string(recording->FramesRecorded()) + "\n");
        const int channels = c.format.channels, rate = c.format.sampleRate;
        const Samples samples = ReadBack(Path(), channels, rate);
        ASSERT_EQ(int64_t(samples.size()) / channels, recording->FramesRecorded());
        for (size_t i = 0; i < samples.size(); ++i)
            ASSERT_NEAR(samples[i], ToneSample(int64_t(i) / channels, rate), c.tolerance) << rate << " Hz, sample " << i;
        recording.reset();
        std::filesystem::remove(Path());
    }
}

TEST_F(SoundRecordingTest, AFileCutOffBeforeFinishIsReadableUpToItsLastDrain) {
    UseInput("in=tone,speed=fast");
    auto recording = Start();
    ASSERT_TRUE(recording);
    Record(*recording, 0.1);
    const int64_t drained = recording->FramesRecorded();
    std::filesystem::copy_file(Path(), Path("cut.mov"));
    Record(*recording, 0.1);
    ASSERT_EQ(recording->Finish(), util::kNoError);
    const Samples samples = ReadBack(Path("cut.mov"));
    EXPECT_EQ(int64_t(samples.size() / 2), drained);
    EXPECT_EQ(FirstOffTone(samples, 2, 0, 0), samples.size() / 2);
    EXPECT_NE(Probe(Path("cut.mov")).find("duration_ts=" + std::to_string(drained)), std::string::npos);
}

TEST_F(SoundRecordingTest, ARingNotDrainedInTimeCountsItsDropsAndKeepsTheOldest) {
    UseInput("in=tone");
    auto recording = Start();
    ASSERT_TRUE(recording);
    std::this_thread::sleep_for(std::chrono::milliseconds(2500));
    EXPECT_GT(recording->FramesDropped(), 0u);
    ASSERT_EQ(recording->Drain(), util::kNoError);
    EXPECT_EQ(recording->FramesRecorded(), 2 * 44100);
    EXPECT_EQ(FirstOffTone(ReadBack(Path()), 2, 0, 0), size_t(2 * 44100));
}

TEST_F(SoundRecordingTest, AFileInputIsLooped) {
    const Samples tone = vdtest::audio::Tone(1000, 441);
    vdtest::writeFile(folder.path() / "loop.wav", vdtest::media::Pcm16Wav(tone, 2));
    UseInput("out=" + Path("unused.wav") + ",in=" + Path("loop.wav") + ",speed=fast");
    auto recording = Start();
    ASSERT_TRUE(recording);
    Record(*recording, 0.05);
    ASSERT_EQ(recording->Finish(), util::kNoError);
    const Samples samples = ReadBack(Path());
    ASSERT_GE(samples.size(), 3 * tone.size());
    for (size_t i = 0; i < samples.size(); ++i) ASSERT_EQ(samples[i], tone[i % tone.size()]) << "sample " << i;
}

TEST_F(SoundRecordingTest, WhatCannotBeRecordedIsToldAndLeavesNoFile) {
    std::unique_ptr<SoundRecording> recording;
    const struct {
        std::string setting;
        RecordingFormat format;
        Status status;
        std::string detail;
    } cases[] = {
        {"in=" + Path("missing.wav"), {}, util::kNoSoundOutput, "missing.wav is no sound file"},
        {"out=" + Path("x.wav"), {}, util::kNoSoundOutput, "no input"},
        {"in=tone,in2=x", {}, util::kNoSoundOutput, "unknown option \"in2=x\""},
        {"in=tone", {44100, 3, 16}, util::kBadParameter, "3 channels"},
        {"in=tone", {44100, 2, 12}, util::kBadParameter, "not 12"},
        {"in=tone", {0, 2, 16}, util::kBadParameter, "not 0"},
    };
    for (const auto& c : cases) {
        UseInput(c.setting);
        EXPECT_EQ(SoundRecording::Start(Path(), c.format, recording), c.status) << c.setting;
        EXPECT_NE(media::LastMediaErrorDetail().find(c.detail), std::string::npos) << media::LastMediaErrorDetail();
        EXPECT_FALSE(recording);
        EXPECT_FALSE(std::filesystem::exists(Path()));
    }
    UseInput("in=tone");
    EXPECT_NE(SoundRecording::Start(Path("no/such/folder.mov"), {}, recording), util::kNoError);
    EXPECT_FALSE(recording);
}

}  // namespace
}  // namespace vd::audio
