// A sound played through PortAudio's default output, which an ALSA configuration of the test's own
// turns into a file.
#include "platform/audio/playing_sound.h"

#include "audio_fixtures.h"

#include <cstdlib>

namespace vd::audio {
namespace {

TEST(PortAudioOutputTest, TheDefaultDeviceGetsTheSamples) {
    vdtest::TempFolder folder;
    const std::string raw = (folder.path() / "out.raw").string();
    vdtest::writeFile(folder.path() / ".asoundrc",
                      "pcm.!default { type file slave.pcm \"null\" file \"" + raw + "\" format \"raw\" }\n");
    const std::vector<int16_t> tone = vdtest::audio::Tone(8820, 441);
    vdtest::writeFile(folder.path() / "tone.wav", vdtest::media::Pcm16Wav(tone, 2));

    // The output is the process's and ALSA reads its configuration once: a process of its own.
    EXPECT_EXIT(
        {
            setenv("HOME", folder.path().c_str(), 1);
            unsetenv("VANDREL_AUDIO");
            media::Movie movie;
            std::unique_ptr<PlayingSound> sound;
            if (media::MovieFromFile((folder.path() / "tone.wav").string(), movie) != util::kNoError) std::_Exit(2);
            if (PlayingSound::Make(std::move(movie), sound) != util::kNoError) {
                std::fprintf(stderr, "%s\n", media::LastMediaErrorDetail().c_str());
                std::_Exit(3);
            }
            sound->Start();
            const bool done = vdtest::Within(std::chrono::seconds(20), [&] { return sound->IsDone(); });
            sound.reset();
            ShutDownOutput();
            std::_Exit(done ? 0 : 4);
        },
        ::testing::ExitedWithCode(0), "");

    // PortAudio hands ALSA our float frames as they are. The null sink takes them as fast as they
    // come, so on a busy machine the feeder may fall behind and the callback fills with silence:
    // every sample of the tone must still arrive, once and in order, around those gaps.
    const std::string bytes = vdtest::readFile(raw);
    std::vector<float> samples(bytes.size() / 4);
    std::memcpy(samples.data(), bytes.data(), samples.size() * 4);
    std::vector<float> heard, expected;
    for (const float s : samples)
        if (s != 0.0f) heard.push_back(s);
    for (const int16_t t : tone)
        if (t != 0) expected.push_back(t / 32768.0f);
    ASSERT_EQ(heard.size(), expected.size()) << bytes.size() << " bytes";
    for (size_t i = 0; i < expected.size(); ++i) ASSERT_NEAR(heard[i], expected[i], 1e-6) << "sample " << i;
}

TEST(PortAudioOutputTest, AMachineWithoutPortAudioIsToldSo) {
    vdtest::TempFolder folder;
    vdtest::writeFile(folder.path() / "tone.wav", vdtest::media::Pcm16Wav(vdtest::audio::Tone(100, 441), 2));
    EXPECT_EXIT(
        {
            unsetenv("VANDREL_AUDIO");
            setenv("VANDREL_AUDIO_LIBRARY", "unloadable", 1);
            media::Movie movie;
            std::unique_ptr<PlayingSound> sound;
            if (media::MovieFromFile((folder.path() / "tone.wav").string(), movie) != util::kNoError) std::_Exit(2);
            const Status status = PlayingSound::Make(std::move(movie), sound);
            std::fprintf(stderr, "%d %s\n", status, media::LastMediaErrorDetail().c_str());
            std::_Exit(0);
        },
        ::testing::ExitedWithCode(0), "-200 PortAudio cannot be loaded");
}

}  // namespace
}  // namespace vd::audio
