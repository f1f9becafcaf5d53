// A recording from PortAudio's default input, which an ALSA configuration of the test's own reads
// from a file of float frames.
#include "platform/audio/input_device.h"
#include "platform/audio/sound_recording.h"
#include "platform/media/block_source.h"
#include "platform/media/sound_writer.h"

#include "audio_fixtures.h"

#include <algorithm>
#include <cstdlib>

namespace vd::audio {
namespace {

TEST(PortAudioInputTest, AnInputChosenByNameIsRecorded) {
    vdtest::TempFolder folder;
    const std::string in = (folder.path() / "in.raw").string(), take = (folder.path() / "take.mov").string();
    std::vector<float> frames;  // a ramp: each frame's samples name their frame
    for (int i = 0; i < 44100; ++i) frames.insert(frames.end(), 2, float(i % 30000) / 32768.0f);
    vdtest::writeFile(folder.path() / "in.raw",
                      std::string(reinterpret_cast<const char*>(frames.data()), frames.size() * sizeof(float)));
    vdtest::writeFile(folder.path() / ".asoundrc", "pcm.!default { type file slave.pcm \"null\" file \"/dev/null\" infile \"" +
                                                        in + "\" format \"raw\" }\n");

    // ALSA reads its configuration once per process: a process of its own.
    EXPECT_EXIT(
        {
            setenv("HOME", folder.path().c_str(), 1);
            unsetenv("VANDREL_AUDIO");
            // ALSA's "default" as PortAudio lists it, chosen by its name; a name it lacks is refused.
            const std::vector<std::string> names = InputDeviceNames();
            if (std::find(names.begin(), names.end(), "default") == names.end()) std::_Exit(5);
            RecordingFormat format;
            format.device = "no such input";
            std::unique_ptr<SoundRecording> recording;
            if (SoundRecording::Start(take, format, recording) != util::kNoSoundOutput) std::_Exit(6);
            format.device = "default";
            if (SoundRecording::Start(take, format, recording) != util::kNoError) {
                std::fprintf(stderr, "%s\n", media::LastMediaErrorDetail().c_str());
                std::_Exit(2);
            }
            for (int i = 0; i < 15; ++i) {
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
                if (recording->Drain() != util::kNoError) std::_Exit(3);
            }
            std::_Exit(recording->Finish() == util::kNoError && recording->FramesRecorded() > 0 ? 0 : 4);
        },
        ::testing::ExitedWithCode(0), "");

    media::Movie movie;
    ASSERT_EQ(media::MovieFromFile(take, movie), util::kNoError);
    std::unique_ptr<media::MixedBlockSource> source;
    ASSERT_EQ(media::MixedBlockSource::Open(movie, media::OutputFormat{}, {}, source), util::kNoError);
    std::vector<int16_t> samples(2 * 4096);
    size_t read = 0;
    ASSERT_EQ(source->Read(samples.data(), 4096, read), util::kNoError);
    ASSERT_GT(read, 0u);
    for (size_t i = 0; i < 2 * read; ++i) ASSERT_EQ(samples[i], int16_t(i / 2)) << "sample " << i;
}

}  // namespace
}  // namespace vd::audio
