// The synthesis engine: waveform names, the note table and its letters, 16.16 rules, and the
// generators' samples for the cases earlier releases fixed.
#include "platform/media/sample_reading.h"
#include "sound/synthesis/fixed_point.h"
#include "sound/synthesis/note_table.h"
#include "sound/sound_flags.h"
#include "sound/synthesis/tone_generators.h"
#include "sound/synthesis/tone_synthesis.h"
#include "sound/waveform/waveform_names.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace vd::sound {
namespace {

int16_t Be16(const std::vector<uint8_t>& b, size_t sample) { return int16_t(b[2 * sample] << 8 | b[2 * sample + 1]); }
float Float32(const std::vector<uint8_t>& b, size_t sample) {
    float f = 0;
    std::memcpy(&f, b.data() + 4 * sample, 4);
    return f;
}

std::vector<uint8_t> Tone(uint16_t flags, size_t frames, double frequency, double* phase = nullptr) {
    const size_t size = frames * size_t(BytesPerSample(flags)) * (IsStereo(flags) ? 2 : 1);
    std::vector<uint8_t> block(size, 0xAA);
    GenerateTone(flags, 44100, frequency, block, phase);
    return block;
}

TEST(SynthNames, WaveformsInAnyCaseAndNotesByTableLetterAndLimit) {
    const std::pair<const char*, uint16_t> names[] = {
        {"SINE", kSine}, {"sin", kSine}, {"Rectangle", kSquare}, {"saw", kSawtooth}, {"NONE", kSilence}, {"noise", kNoise}};
    for (const auto& [name, code] : names) EXPECT_EQ(WaveformCodeFromName(name), code) << name;
    for (const char* bad : {"sines", " sine", ""}) EXPECT_FALSE(WaveformCodeFromName(bad)) << bad;
    // Notes: the table, its letters and its limits.
    // The ends of the table and A4 are pinned by the names below.
    EXPECT_FLOAT_EQ(NoteTableEntry(36), 261.63f);
    EXPECT_FLOAT_EQ(NoteTableEntry(48), 523.25f);
    struct Case { const char* name; float hertz; } cases[] = {
        {"H4", 493.88f}, {"B4", 466.16f}, {"Eb4", 311.13f}, {"Cb4", 246.94f}, {"a4x", 440.0f}, {"B#8", 7902.1f}};
    for (const Case& c : cases) {
        auto note = NoteFrequencyFromName(c.name);
        ASSERT_TRUE(note) << c.name;
        EXPECT_FLOAT_EQ(note->hertz, c.hertz) << c.name;
        EXPECT_EQ(note->fixed, uint32_t(double(c.hertz) * 65536.0)) << c.name;
    }
    EXPECT_EQ(NoteFrequencyFromName("A4")->fixed, 440u << 16);
    for (const char* bad : {"C9", "I4", "Cb1", "H#8", "A"})
        EXPECT_FALSE(NoteFrequencyFromName(bad)) << bad;
}

TEST(SynthFixedPoint, TruncatesAndSaturates) {
    EXPECT_EQ(FixedFromFloat(1.0 / 131072), 0u);
    EXPECT_EQ(FixedFromFloat(32767.99999), 0x7FFFFFFFu);
    EXPECT_EQ(FixedFromFloat(std::nan("")), 0u);
}

TEST(SynthGenerators, SineStartsAtZeroAndMonoKeepsItsOffset) {
    auto stereo = Tone(kSine | kStereo16BothChannels, 100, 440);
    EXPECT_EQ(Be16(stereo, 0), 0);
    const double s25 = std::sin(25 * (2 * M_PI / 44100) * 440);
    EXPECT_NEAR(Be16(stereo, 50), int16_t(32767 * s25), 1);
    EXPECT_EQ(Be16(stereo, 50), Be16(stereo, 51));

    // Mono 16-bit adds 32768 before the low 16 bits are kept: silence reads as -32768.
    auto mono = Tone(kSine | kSample16, 10, 440);
    EXPECT_EQ(uint16_t(Be16(mono, 0)), 32768u);
    // Only the left channel selected: the right one holds the centre.
    auto left = Tone(kSine | kSample16 | kLeftChannel, 30, 440);
    EXPECT_NE(Be16(left, 2 * 20), 0);
    EXPECT_EQ(Be16(left, 2 * 20 + 1), 0);
    auto eight = Tone(kSine | kSample8 | kRightChannel, 30, 440);
    EXPECT_EQ(eight[2 * 20], 128);
    EXPECT_NE(eight[2 * 20 + 1], 128);
    EXPECT_FLOAT_EQ(Float32(Tone(kSine | kSampleFloat32, 30, 440), 20), float(std::sin(20 * (2 * M_PI / 44100) * 440)));
}

TEST(SynthGenerators, SquareHalvesEachPeriodStartingLow) {
    auto block = Tone(kSquare | kStereo16BothChannels, 202, 440);
    for (size_t n : {0u, 50u, 101u, 150u}) EXPECT_EQ(Be16(block, 2 * n), -32768) << n;
    for (size_t n : {51u, 100u, 151u, 200u}) EXPECT_EQ(Be16(block, 2 * n + 1), 32767) << n;
    auto eight = Tone(kSquare | kSample8, 60, 440);
    EXPECT_EQ(eight[50], 0);
    EXPECT_EQ(eight[51], 255);
}

TEST(SynthGenerators, SawtoothRampsAndEightBitWraps) {
    // 441 Hz: a period of exactly 100 frames.
    auto sixteen = Tone(kSawtooth | kSample16, 101, 441);
    EXPECT_EQ(Be16(sixteen, 0), int16_t(int32_t(65535 * -0.5)));
    EXPECT_EQ(Be16(sixteen, 99), int16_t(int32_t(65535 * 0.49)));
    EXPECT_EQ(Be16(sixteen, 100), Be16(sixteen, 0));
    // 8-bit: two's complement in the unsigned format, so the ramp's low half sits above 128.
    auto eight = Tone(kSawtooth | kSample8, 100, 441);
    EXPECT_EQ(eight[0], uint8_t(int8_t(-127)));
    EXPECT_EQ(eight[50], 0);
    EXPECT_EQ(eight[75], uint8_t(int32_t(255 * 0.25)));
    // A frequency above the rate gives a flat ramp, not a division by zero.
    std::vector<uint8_t> fast(8);
    GenerateTone(kSawtooth | kSample16, 44100, 50000, fast, nullptr);
}

TEST(SynthGenerators, NoiseIsUnseededRandAndSilenceIsCentre) {
    std::srand(7);
    std::vector<int> expected;
    for (int i = 0; i < 8; ++i) expected.push_back(std::rand());
    std::srand(7);
    auto noise = Tone(kNoise | kSample16 | kLeftChannel, 4, 440);  // both channels filled anyway
    for (size_t i = 0; i < 8; ++i) EXPECT_EQ(uint16_t(Be16(noise, i)), uint16_t(expected[i])) << i;
    EXPECT_NE(Be16(noise, 0), Be16(noise, 1));

    EXPECT_EQ(Tone(kSilence | kSample8 | kLeftChannel | kRightChannel, 5, 440), std::vector<uint8_t>(10, 128));
    EXPECT_EQ(Tone(kSilence | kSample16, 5, 440), std::vector<uint8_t>(10, 0));
    // An unknown size code writes nothing at all.
    std::vector<uint8_t> untouched(8, 0xAA);
    GenerateTone(kSine | 0x0030, 44100, 440, untouched, nullptr);
    EXPECT_EQ(untouched, std::vector<uint8_t>(8, 0xAA));
}

TEST(SynthGenerators, PhaseAccumulatorCarriesTheSineOn) {
    double phase = 0.5;
    EXPECT_FLOAT_EQ(Float32(Tone(kSine | kSampleFloat32, 10, 441, &phase), 0), float(std::sin(0.5)));
    EXPECT_DOUBLE_EQ(phase, 0.5 + 10.0 / 44100 * 441 * 2 * M_PI);
    double squarePhase = 1.0;
    Tone(kSquare | kSample8, 100, 441, &squarePhase);
    EXPECT_DOUBLE_EQ(squarePhase, 2.0);
    double noisePhase = 3.0;
    Tone(kNoise | kSample8, 100, 441, &noisePhase);
    EXPECT_EQ(noisePhase, 3.0);
}

TEST(SynthMovies, SegmentsAreDescribedAndTimedAsBefore) {
    media::Movie movie;
    ASSERT_EQ(GenerateSoundMovie(FixedFromFloat(0.5), kRate44100, 440u << 16, kSquare | kStereo16BothChannels, movie), 0);
    const media::Track& track = *movie.FirstSoundTrack();
    EXPECT_EQ(track.media.timeScale, 44100);
    EXPECT_EQ(track.media.Duration(), 22050);
    EXPECT_EQ(track.media.Descriptions().at(0).dataFormat, media::FourCC("twos"));
    EXPECT_EQ(track.media.Descriptions().at(0).numberOfChannels, 2);

    media::Movie eight;
    ASSERT_EQ(GenerateSoundMovie(kFixedOne, 22050u << 16, 440u << 16, kSine | kSample8, eight), 0);
    EXPECT_EQ(eight.FirstSoundTrack()->media.Descriptions().at(0).dataFormat, media::FourCC("raw "));

    // Too long to hold, and sizes nobody generates, fail before anything is allocated.
    media::Movie untouched;
    EXPECT_EQ(GenerateSoundMovie(kFixedMax, kRate44100, 440u << 16, kSine | kStereo16BothChannels, untouched), -108);
    EXPECT_EQ(GenerateSoundMovie(kFixedOne, kRate44100, 440u << 16, kSine | 0x0030, untouched), -50);
    EXPECT_EQ(untouched.TrackCount(), 0u);
}

TEST(SynthMovies, TestChimeIsLeadInAndThreeNotes) {
    for (bool descending : {false, true}) {
        media::Movie chime;
        ASSERT_EQ(BuildTestChime(kPreviewNoteDuration, kRate44100, kPreviewFlags, descending, chime), 0);
        const media::Media& m = chime.FirstSoundTrack()->media;
        const int64_t note = int64_t(float(kPreviewNoteDuration) / 65536.0f * 44100.0f);
        EXPECT_EQ(m.Duration(), 172 + 3 * note);
        EXPECT_EQ(m.Descriptions().at(0).numberOfChannels, 1);
        std::vector<int16_t> s;
        ASSERT_EQ(media::ReadFramesInt16(m, 0, 173, s), 0);
        EXPECT_EQ(s[0], 0);        // lead-in: 16-bit silence
        EXPECT_EQ(s[172], -32768);  // the first note's mono offset: sin(0) + 32768
    }
}

}  // namespace
}  // namespace vd::sound
