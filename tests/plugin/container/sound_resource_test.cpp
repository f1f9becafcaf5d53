// "snd " streams: the resource we write, every header kind we read (standard, extended,
// compressed, format 2), and broken ones, which fail with a code and never read past the stream.
#include "container/sound_container.h"
#include "container/sound_resource.h"
#include "container/sound_resource_movie.h"
#include "platform/media/sample_reading.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vd::container {
namespace {

using Bytes = std::vector<uint8_t>;

void Put16(Bytes& b, uint32_t v) { b.insert(b.end(), {uint8_t(v >> 8), uint8_t(v)}); }
void Put32(Bytes& b, uint32_t v) {
    b.insert(b.end(), {uint8_t(v >> 24), uint8_t(v >> 16), uint8_t(v >> 8), uint8_t(v)});
}
void PutText(Bytes& b, const char (&code)[5]) { b.insert(b.end(), code, code + 4); }

// Resource head: format 1 with one data format, or format 2; one buffer command to offset 20 (or 14).
Bytes Head(int format) {
    Bytes b;
    Put16(b, uint32_t(format));
    if (format == 1) b.insert(b.end(), {0, 1, 0, 5, 0, 0, 0, 0x80});  // one data format: sampled sound
    else Put16(b, 0);                                                  // reference count
    b.insert(b.end(), {0, 1, 0x80, 0x51, 0, 0});  // one command: buffer, from the header at
    Put32(b, uint32_t(b.size() + 4));
    return b;
}

// An extended (0xFF) or compressed (0xFE) header of 64 bytes after the head.
Bytes LongHeader(int format, uint8_t encode, uint32_t channels, uint32_t frames, int bits, const char (&codec)[5],
                 int16_t compressionId = 0) {
    Bytes b = Head(format);
    Put32(b, 0);            // sample pointer
    Put32(b, channels);
    Put32(b, 22050u << 16);
    b.insert(b.end(), 8, 0);  // loop start and end
    b.push_back(encode);
    b.push_back(60);        // base note
    Put32(b, frames);
    b.insert(b.end(), 10, 0);  // AIFF rate
    Put32(b, 0);            // marker chunk
    if (encode == 0xFF) {
        b.insert(b.end(), 8, 0);  // instrument chunks, AES recording
        Put16(b, uint32_t(bits));
        b.insert(b.end(), 14, 0);
    } else {
        PutText(b, codec);
        b.insert(b.end(), 12, 0);  // future use, state vars, left-over samples
        Put16(b, uint16_t(compressionId));
        b.insert(b.end(), 4, 0);  // packet size, synthesizer
        Put16(b, uint32_t(bits));
    }
    return b;
}

int64_t Frames(const media::Movie& movie) { return movie.FirstSoundTrack()->media.Duration(); }

std::vector<int16_t> Samples(const media::Movie& movie, int64_t frames) {
    std::vector<int16_t> s;
    EXPECT_EQ(media::ReadFramesInt16(movie.FirstSoundTrack()->media, 0, frames, s), 0);
    return s;
}

TEST(SoundResource, WrittenResourceHasTheClassicLayoutAndReadsBack) {
    const Bytes samples{128, 255, 0, 129};
    Bytes r = BuildSoundResource(samples.data(), samples.size());
    ASSERT_EQ(r.size(), 42u + 4);
    const Bytes head{0, 1, 0, 1, 0, 5, 0, 0, 0, 0x80, 0, 1, 0x80, 0x51, 0, 0, 0, 0, 0, 20,
                     0, 0, 0, 0, 0, 0, 0, 4, 0xAC, 0x44, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(Bytes(r.begin(), r.begin() + 42), head);

    media::Movie movie;
    ASSERT_EQ(MovieFromSoundResource(r, movie), 0);
    const auto& d = movie.FirstSoundTrack()->media.Descriptions().at(0);
    EXPECT_EQ(d.dataFormat, media::FourCC("raw "));
    EXPECT_EQ(Samples(movie, 4), (std::vector<int16_t>{0, 127 << 8, -32768, 256}));
}

TEST(SoundResource, ExtendedAndCompressedHeadersAreRead) {
    for (int format : {1, 2}) {
        Bytes r = LongHeader(format, 0xFF, 2, 3, 16, "    ");
        for (int16_t v : {100, -100, 2000, -2000, 32767, -32768}) Put16(r, uint16_t(v));
        media::Movie movie;
        ASSERT_EQ(MovieFromSoundResource(r, movie), 0) << format;
        EXPECT_EQ(Frames(movie), 3);
        EXPECT_EQ(movie.FirstSoundTrack()->media.timeScale, 22050);
        EXPECT_EQ(movie.FirstSoundTrack()->media.Descriptions().at(0).dataFormat, media::FourCC("twos"));
        EXPECT_EQ(Samples(movie, 3), (std::vector<int16_t>{100, -100, 2000, -2000, 32767, -32768}));
    }
    Bytes eight = LongHeader(1, 0xFF, 2, 2, 8, "    ");
    eight.insert(eight.end(), {128, 0, 255, 128});
    media::Movie movie;
    ASSERT_EQ(MovieFromSoundResource(eight, movie), 0);
    EXPECT_EQ(Samples(movie, 2), (std::vector<int16_t>{0, -32768, 127 << 8, 0}));
    // Compressed headers are decoded.
    const auto with = [](Bytes header, const Bytes& data) {
        header.insert(header.end(), data.begin(), data.end());
        return header;
    };
    // One 'ima4' packet: predictor 0, step index 0, then nibbles 7 and 0: samples 11 and 13.
    Bytes packet(34, 0);
    packet[2] = 0x07;
    struct Case { const char* codec; Bytes resource; int64_t frames; std::vector<int16_t> first; } cases[] = {
        {"ima4", with(LongHeader(1, 0xFE, 1, 1, 16, "ima4"), packet), 64, {11, 13}},
        {"ulaw", with(LongHeader(1, 0xFE, 1, 3, 16, "ulaw"), {0xFF, 0x80, 0x00}), 3, {0, 32124, -32124}},
        {"alaw", with(LongHeader(2, 0xFE, 2, 1, 16, "alaw"), {0xD5, 0x55}), 1, {8, -8}},
        // MACE headers may name their codec by compression id alone; 2 bytes make 6 frames.
        {"MAC3 by id", with(LongHeader(1, 0xFE, 1, 4, 8, "\0\0\0\0", 3), Bytes(8, 0x5A)), 24, {}},
        {"MAC6", with(LongHeader(1, 0xFE, 1, 4, 8, "MAC6"), Bytes(4, 0x5A)), 24, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.codec);
        media::Movie decoded;
        ASSERT_EQ(MovieFromSoundResource(c.resource, decoded), 0);
        EXPECT_EQ(Frames(decoded), c.frames);
        const std::vector<int16_t> samples = Samples(decoded, c.frames);
        ASSERT_GE(samples.size(), c.first.size());
        EXPECT_EQ(std::vector<int16_t>(samples.begin(), samples.begin() + std::ptrdiff_t(c.first.size())), c.first);
    }
}

TEST(SoundResource, StoringMixesChannelsDownAndConvertsTheRate) {
    // Stereo 16-bit at 22050 Hz: half a second of a constant, one channel loud, one quiet.
    Bytes r = LongHeader(1, 0xFF, 2, 11025, 16, "    ");
    for (int i = 0; i < 11025; ++i) {
        Put16(r, 0x4000);
        Put16(r, uint16_t(int16_t(-0x2000)));
    }
    media::Movie movie;
    ASSERT_EQ(MovieFromSoundResource(r, movie), 0);
    Bytes stored;
    ASSERT_EQ(SoundResourceOfMovie(movie, stored), 0);
    ASSERT_NEAR(double(stored.size()), 42.0 + 22050, 64);
    EXPECT_EQ(stored.size() - 42, size_t(stored[24] << 24 | stored[25] << 16 | stored[26] << 8 | stored[27]));
    // (0x4000 - 0x2000) / 2 = 0x1000: high byte 0x10 above the centre, away from the filter's edges.
    EXPECT_EQ(stored[42 + 10000], 128 + 0x10);

    Bytes three = LongHeader(1, 0xFF, 3, 2, 16, "    ");
    three[28] = 0xAC, three[29] = 0x44;  // 44100 Hz: no resampling, only the mixdown
    for (int16_t v : {300, 300, 301, -300, -300, -301}) Put16(three, uint16_t(v));
    media::Movie surround;
    ASSERT_EQ(MovieFromSoundResource(three, surround), 0);
    ASSERT_EQ(SoundResourceOfMovie(surround, stored), 0);
    // Averages 300 and -300.33 (rounded down to -301), then their high bytes.
    EXPECT_EQ(Bytes(stored.begin() + 42, stored.end()), (Bytes{129, 126}));
    media::Movie noSound;
    EXPECT_EQ(SoundResourceOfMovie(noSound, stored), -2009);
}

TEST(SoundResource, BrokenResourcesFailWithoutReadingPastTheStream) {
    const Bytes good = [] {
        const Bytes samples(100, 128);
        return BuildSoundResource(samples.data(), samples.size());
    }();
    // Every cut of a good resource fails cleanly (or, from byte 42 on, holds fewer samples than it says).
    for (size_t cut = 0; cut < good.size(); ++cut) {
        media::Movie movie;
        const Bytes shorter(good.begin(), good.begin() + std::ptrdiff_t(cut));
        const int32_t code = MovieFromSoundResource(shorter, movie);
        EXPECT_TRUE(code == util::kCorruptData || code == util::kBadSoundFormat) << cut << ": " << code;
    }
    struct Case { const char* what; Bytes bytes; int32_t code; };
    auto patched = [&](size_t at, uint8_t value) {
        Bytes b = good;
        b[at] = value;
        return b;
    };
    Bytes unknownCodec = LongHeader(1, 0xFE, 1, 1, 16, "QDM2");
    unknownCodec.insert(unknownCodec.end(), 64, 0);
    Case cases[] = {
        {"200 data formats", patched(3, 200), util::kCorruptData},
        {"header offset past the end", patched(19, 0xFF), util::kCorruptData},
        {"sample bytes past the end", patched(27, 101), util::kCorruptData},
        {"frames past the end", LongHeader(1, 0xFF, 2, 0xFFFFFFFF, 16, "    "), util::kCorruptData},
        {"encode 0x01", patched(40, 0x01), util::kBadSoundFormat},
        {"codec we do not decode", unknownCodec, util::kBadSoundFormat},
    };
    for (const Case& c : cases) {
        media::Movie movie;
        EXPECT_EQ(MovieFromSoundResource(c.bytes, movie), c.code) << c.what;
        EXPECT_EQ(movie.TrackCount(), 0u) << c.what;
    }
}

}  // namespace
}  // namespace vd::container
