#include "platform/media/reference_movie_layout.h"

#include "platform/media/alias_record.h"
#include "platform/media/atom_builder.h"

#include <algorithm>

namespace vd::media {

namespace {

constexpr int32_t kMovieScale = 600;
constexpr uint32_t kTextWidth = 320, kTextHeight = 200;
constexpr uint32_t kSoundTrackId = 1, kTextTrackId = 2;
// Enabled, used in the movie and in its preview.
constexpr uint32_t kTrackFlags = 0x7;
constexpr uint32_t kSelfReference = 1;

struct Times {
    uint32_t mac;
    uint32_t movieDuration;
};

uint32_t Clamp32(int64_t v) { return v < 0 ? 0 : v > int64_t(UINT32_MAX) ? UINT32_MAX : uint32_t(v); }

void MovieHeader(AtomBuilder& a, const Times& t) {
    a.BeginFull(FourCC("mvhd"), 0, 0);
    a.U32(t.mac);
    a.U32(t.mac);
    a.U32(kMovieScale);
    a.U32(t.movieDuration);
    a.U32(0x00010000);  // rate 1.0
    a.U16(0x0100);      // volume 1.0
    a.Zeros(10);
    a.UnityMatrix();
    a.Zeros(24);  // preview, poster, selection and current times
    a.U32(kTextTrackId + 1);
    a.End();
}

void TrackHeader(AtomBuilder& a, const Times& t, uint32_t id, bool sound) {
    a.BeginFull(FourCC("tkhd"), 0, kTrackFlags);
    a.U32(t.mac);
    a.U32(t.mac);
    a.U32(id);
    a.U32(0);
    a.U32(t.movieDuration);
    a.Zeros(8);
    a.U16(0);                    // layer
    a.U16(0);                    // alternate group
    a.U16(sound ? 0x0100 : 0);   // volume
    a.U16(0);
    a.UnityMatrix();
    a.U32(sound ? 0 : kTextWidth << 16);
    a.U32(sound ? 0 : kTextHeight << 16);
    a.End();
}

void MediaHeader(AtomBuilder& a, const Times& t, int32_t scale, int64_t duration) {
    a.BeginFull(FourCC("mdhd"), 0, 0);
    a.U32(t.mac);
    a.U32(t.mac);
    a.U32(uint32_t(scale));
    a.U32(Clamp32(duration));
    a.U16(0);  // language: English
    a.U16(0);  // quality
    a.End();
}

void Handler(AtomBuilder& a, const char (&componentType)[5], const char (&subtype)[5], std::string_view name) {
    a.BeginFull(FourCC("hdlr"), 0, 0);
    a.U32(FourCC(componentType));
    a.U32(FourCC(subtype));
    a.U32(FourCC("appl"));
    a.U32(0);
    a.U32(0);
    a.PascalString(name, name.size() + 1);
    a.End();
}

// One data reference: an alias to another file, or (aliasRecord empty) the movie itself.
void DataInformation(AtomBuilder& a, const std::vector<uint8_t>& aliasRecord) {
    a.Begin(FourCC("dinf"));
    a.BeginFull(FourCC("dref"), 0, 0);
    a.U32(1);
    a.BeginFull(FourCC("alis"), 0, aliasRecord.empty() ? kSelfReference : 0);
    a.Bytes(aliasRecord.data(), aliasRecord.size());
    a.End();
    a.End();
    a.End();
}

void SampleTable(AtomBuilder& a, const LinkedSoundTable& t) {
    a.Begin(FourCC("stbl"));
    a.BeginFull(FourCC("stsd"), 0, 0);
    a.U32(1);
    a.Bytes(t.description.data(), t.description.size());
    a.End();

    a.BeginFull(FourCC("stts"), 0, 0);
    a.U32(uint32_t(t.durations.size()));
    for (const auto& [count, duration] : t.durations) {
        a.U32(count);
        a.U32(duration);
    }
    a.End();

    // Runs of chunks holding the same number of samples.
    std::vector<std::pair<uint32_t, uint32_t>> runs;  // first chunk (1-based), samples per chunk
    for (size_t i = 0; i < t.samplesPerChunk.size(); ++i)
        if (runs.empty() || runs.back().second != t.samplesPerChunk[i]) runs.emplace_back(uint32_t(i + 1), t.samplesPerChunk[i]);
    a.BeginFull(FourCC("stsc"), 0, 0);
    a.U32(uint32_t(runs.size()));
    for (const auto& [first, samples] : runs) {
        a.U32(first);
        a.U32(samples);
        a.U32(1);  // sample description
    }
    a.End();

    a.BeginFull(FourCC("stsz"), 0, 0);
    a.U32(t.constantSampleSize);
    a.U32(Clamp32(t.SampleCount()));
    if (t.constantSampleSize == 0)
        for (uint32_t size : t.sampleSizes) a.U32(size);
    a.End();

    bool large = false;
    for (uint64_t offset : t.chunkOffsets) large |= offset > UINT32_MAX;
    a.BeginFull(FourCC(large ? "co64" : "stco"), 0, 0);
    a.U32(uint32_t(t.chunkOffsets.size()));
    for (uint64_t offset : t.chunkOffsets) {
        if (large) a.U64(offset);
        else a.U32(uint32_t(offset));
    }
    a.End();
    a.End();
}

void SoundTrack(AtomBuilder& a, const Times& t, const LinkedSoundTable& sound, const std::vector<uint8_t>& alias) {
    a.Begin(FourCC("trak"));
    TrackHeader(a, t, kSoundTrackId, true);
    if (sound.leadingFrames > 0 || sound.trailingFrames > 0) {
        a.Begin(FourCC("edts"));
        a.BeginFull(FourCC("elst"), 0, 0);
        a.U32(1);
        a.U32(t.movieDuration);
        a.U32(Clamp32(sound.leadingFrames));
        a.U32(0x00010000);  // rate 1.0
        a.End();
        a.End();
    }
    a.Begin(FourCC("mdia"));
    MediaHeader(a, t, sound.timeScale, sound.Duration());
    Handler(a, "mhlr", "soun", "Sound Media Handler");
    a.Begin(FourCC("minf"));
    a.BeginFull(FourCC("smhd"), 0, 0);
    a.U32(0);  // balance, reserved
    a.End();
    Handler(a, "dhlr", "alis", "Alias Data Handler");
    DataInformation(a, alias);
    SampleTable(a, sound);
    a.End();
    a.End();
    a.End();
}

std::vector<uint8_t> TextDescription() {
    AtomBuilder d;
    d.Begin(FourCC("text"));
    d.Zeros(6);
    d.U16(1);                      // data reference
    d.U32(0);                      // display flags
    d.U32(0);                      // justification: left
    d.U16(0xFFFF), d.U16(0xFFFF), d.U16(0xFFFF);  // background: white
    d.U16(0), d.U16(0), d.U16(uint16_t(kTextHeight)), d.U16(uint16_t(kTextWidth));  // text box
    d.Zeros(8);
    d.U16(0);  // font: the system's default
    d.U16(0);  // face: plain
    d.Zeros(3);
    d.U16(0), d.U16(0), d.U16(0);  // foreground: black
    d.U8(0);                       // no font name
    d.End();
    return d.Result();
}

void TextTrack(AtomBuilder& a, const Times& t, uint32_t sampleOffset, uint32_t sampleSize) {
    a.Begin(FourCC("trak"));
    TrackHeader(a, t, kTextTrackId, false);
    a.Begin(FourCC("mdia"));
    MediaHeader(a, t, kMovieScale, t.movieDuration);
    Handler(a, "mhlr", "text", "Text Media Handler");
    a.Begin(FourCC("minf"));
    a.Begin(FourCC("gmhd"));
    a.BeginFull(FourCC("gmin"), 0, 0);
    a.U16(0x40);                                  // graphics mode: copy
    a.U16(0x8000), a.U16(0x8000), a.U16(0x8000);  // op colour
    a.U16(0);                                     // balance
    a.U16(0);
    a.End();
    a.Begin(FourCC("text"));
    a.UnityMatrix();
    a.End();
    a.End();
    Handler(a, "dhlr", "alis", "Alias Data Handler");
    DataInformation(a, {});

    LinkedSoundTable text;  // the same tables, one sample in one chunk
    text.description = TextDescription();
    text.timeScale = kMovieScale;
    text.chunkOffsets = {sampleOffset};
    text.samplesPerChunk = {1};
    text.constantSampleSize = sampleSize;
    text.durations = {{1, t.movieDuration}};
    SampleTable(a, text);
    a.End();
    a.End();
    a.End();
}

}  // namespace

int64_t LinkedSoundTable::SampleCount() const {
    int64_t count = 0;
    for (const auto& run : durations) count += run.first;
    return count;
}

int64_t LinkedSoundTable::PlayedDuration() const {
    return std::max<int64_t>(0, Duration() - leadingFrames - trailingFrames);
}

int64_t LinkedSoundTable::Duration() const {
    int64_t duration = 0;
    for (const auto& [count, each] : durations) duration += int64_t(count) * each;
    return duration;
}

std::vector<uint8_t> NoPreviewSample() {
    AtomBuilder sample;
    sample.U16(uint16_t(kNoPreviewText.size()));
    sample.Text(kNoPreviewText);
    return sample.Result();
}

std::vector<uint8_t> LayOutReferenceMovie(const LinkedSoundTable& sound, const std::string& source,
                                          const std::string& movieFolder, uint32_t macTime) {
    const int64_t scaled = sound.timeScale > 0 ? (sound.PlayedDuration() * kMovieScale + sound.timeScale - 1) / sound.timeScale : 0;
    const Times times{macTime, std::max<uint32_t>(1, Clamp32(scaled))};

    AtomBuilder file;
    file.Begin(FourCC("ftyp"));
    file.U32(FourCC("qt  "));
    file.U32(0x20050300);
    file.U32(FourCC("qt  "));
    file.End();
    const std::vector<uint8_t> text = NoPreviewSample();
    file.Begin(FourCC("mdat"));
    const auto textOffset = uint32_t(file.Size());
    file.Bytes(text.data(), text.size());
    file.End();

    file.Begin(FourCC("moov"));
    MovieHeader(file, times);
    SoundTrack(file, times, sound, BuildAliasRecord(source, movieFolder));
    TextTrack(file, times, textOffset, uint32_t(text.size()));
    file.End();
    return file.Result();
}

}  // namespace vd::media
