#include "platform/media/exporters.h"

#include "platform/media/exporter_table.h"
#include "platform/media/ffmpeg_functions.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <algorithm>
#include <iterator>

namespace vd::media {

namespace {

constexpr const char* kInfoPrefix = "a QuickTime Movie ";

// Ordered by subtype, as the list shows them. The movie containers are the movie exporters'
// (manufacturer 'appl'), which also take sound: they are found by the lookup's second step.
constexpr ExporterRow kRows[] = {
    {"AIFF", "soun", "AIFF", "to AIFF sound file (linear PCM, big-endian)", "aif", "aiff", EncoderFamily::kPcm,
     {"pcm_s8", "pcm_s16be", "pcm_s24be", "pcm_s32be"}},
    {"FLAC", "soun", "FLAC", "to FLAC sound file (lossless)", "flac", "flac", EncoderFamily::kFlac,
     {nullptr, "flac", "flac", nullptr}},
    {"M4A ", "soun", "AAC Audio (M4A)", "to MPEG-4 audio file (AAC)", "m4a", "ipod", EncoderFamily::kAac,
     {nullptr, "aac", nullptr, nullptr}},
    {"MP3 ", "soun", "MP3", "to MP3 sound file (LAME)", "mp3", "mp3", EncoderFamily::kMp3,
     {nullptr, "libmp3lame", nullptr, nullptr}},
    {"MooV", "appl", "QuickTime Movie", "to QuickTime movie holding the sound (linear PCM)", "mov", "mov",
     EncoderFamily::kPcm, {"pcm_u8", "pcm_s16be", "pcm_s24be", "pcm_s32be"}},
    {"Ogg ", "soun", "Ogg Vorbis", "to Ogg Vorbis sound file", "ogg", "ogg", EncoderFamily::kVorbis,
     {nullptr, "libvorbis", nullptr, nullptr}},
    {"Opus", "soun", "Opus", "to Ogg Opus sound file", "opus", "opus", EncoderFamily::kOpus,
     {nullptr, "libopus", nullptr, nullptr}},
    {"ULAW", "soun", "Sun Audio (mu-law)", "to Sun AU sound file (8-bit mu-law)", "au", "au", EncoderFamily::kMuLaw,
     {nullptr, "pcm_mulaw", nullptr, nullptr}},
    {"WAVE", "soun", "WAVE", "to WAVE sound file (linear PCM, little-endian)", "wav", "wav", EncoderFamily::kPcm,
     {"pcm_u8", "pcm_s16le", "pcm_s24le", "pcm_s32le"}},
    {"caff", "soun", "Core Audio Format", "to Core Audio Format file (linear PCM)", "caf", "caf",
     EncoderFamily::kPcm, {"pcm_s8", "pcm_s16be", "pcm_s24be", "pcm_s32be"}},
    {"mpg4", "appl", "MPEG-4", "to MPEG-4 file (AAC audio)", "mp4", "mp4", EncoderFamily::kAac,
     {nullptr, "aac", nullptr, nullptr}},
};

constexpr int32_t kRates[] = {8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000, 88200, 96000};

bool Installed(const ExporterRow& row) {
    if (!av_guess_format(row.muxer, nullptr, nullptr)) return false;
    for (const char* name : row.encoders)
        if (name && avcodec_find_encoder_by_name(name)) return true;
    return false;
}

FourCharCode CodeOf(const char* text) {
    return uint32_t(uint8_t(text[0])) << 24 | uint32_t(uint8_t(text[1])) << 16 | uint32_t(uint8_t(text[2])) << 8 |
           uint32_t(uint8_t(text[3]));
}

ExporterInfo InfoOf(const ExporterRow& row) {
    return {CodeOf(row.subtype), CodeOf(row.manufacturer), row.name, std::string(kInfoPrefix) + row.information,
            row.extension};
}

// The rates the encoder takes among the usual ones (all of them when it does not say).
std::vector<int32_t> OfferedRates(const ExporterRow& row) {
    const AVCodec* codec = avcodec_find_encoder_by_name(row.encoders[1] ? row.encoders[1] : row.encoders[0]);
    std::vector<int32_t> rates{0};
    for (int32_t rate : kRates) {
        bool taken = !codec || !codec->supported_samplerates;
        for (const int* r = codec ? codec->supported_samplerates : nullptr; r && *r; ++r) taken |= *r == rate;
        if (taken) rates.push_back(rate);
    }
    return rates;
}

}  // namespace

const ExporterRow* ExporterRowFor(FourCharCode subtype) {
    for (const ExporterRow& row : kRows)
        if (CodeOf(row.subtype) == subtype) return &row;
    return nullptr;
}

const char* EncoderNameFor(const ExporterRow& row, const ExportSettings& settings) {
    if (row.family != EncoderFamily::kPcm && row.family != EncoderFamily::kFlac) return row.encoders[1];
    switch (settings.sampleSize) {
        case 8: return row.encoders[0];
        case 16: return row.encoders[1];
        case 24: return row.encoders[2];
        case 32: return row.encoders[3];
        default: return nullptr;
    }
}

Status InstalledExporters(std::vector<ExporterInfo>& exporters) {
    if (Status s = StartFfmpeg()) return s;
    exporters.clear();
    for (const ExporterRow& row : kRows)
        if (Installed(row)) exporters.push_back(InfoOf(row));
    std::sort(exporters.begin(), exporters.end(),
              [](const ExporterInfo& a, const ExporterInfo& b) { return a.subtype < b.subtype; });
    return util::kNoError;
}

Status FindExporter(FourCharCode subtype, ExporterInfo& exporter) {
    if (Status s = StartFfmpeg()) return s;
    for (const FourCharCode wanted : {kSoundExporterManufacturer, FourCharCode(0)}) {
        for (const ExporterRow& row : kRows) {
            const ExporterInfo info = InfoOf(row);
            if (info.subtype != subtype || (wanted != 0 && info.manufacturer != wanted) || !Installed(row)) continue;
            exporter = info;
            return util::kNoError;
        }
    }
    return MediaFailure(util::kNoComponent, "no sound exporter of type '" + FourCCText(subtype) + "'");
}

ExportSettings DefaultExportSettings(FourCharCode subtype) {
    ExportSettings s;
    s.subtype = subtype;
    for (const ExportSettingOptions& option : ExportSettingChoices(subtype)) {
        switch (option.kind) {
            case ExportSettingKind::kSampleRate: s.sampleRate = option.defaultValue; break;
            case ExportSettingKind::kChannels: s.channels = int16_t(option.defaultValue); break;
            case ExportSettingKind::kSampleSize: s.sampleSize = int16_t(option.defaultValue); break;
            case ExportSettingKind::kBitRate: s.bitRate = option.defaultValue; break;
            case ExportSettingKind::kQuality: s.quality = option.defaultValue; break;
            case ExportSettingKind::kCompressionLevel: s.compressionLevel = option.defaultValue; break;
        }
    }
    return s;
}

std::vector<ExportSettingOptions> ExportSettingChoices(FourCharCode subtype) {
    const ExporterRow* row = ExporterRowFor(subtype);
    if (!row) return {};
    std::vector<ExportSettingOptions> options{{ExportSettingKind::kSampleRate, OfferedRates(*row), 0},
                                              {ExportSettingKind::kChannels, {0, 1, 2}, 0}};
    std::vector<int32_t> sizes;
    for (int i = 0; i < 4; ++i)
        if (row->encoders[i] && (row->family == EncoderFamily::kPcm || row->family == EncoderFamily::kFlac))
            sizes.push_back(8 * (i + 1));
    switch (row->family) {
        case EncoderFamily::kPcm:
            options.push_back({ExportSettingKind::kSampleSize, sizes, 16});
            break;
        case EncoderFamily::kMuLaw:
            break;
        case EncoderFamily::kFlac:
            options.push_back({ExportSettingKind::kSampleSize, sizes, 16});
            options.push_back({ExportSettingKind::kCompressionLevel, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, 5});
            break;
        case EncoderFamily::kAac:
            options.push_back({ExportSettingKind::kBitRate,
                               {32000, 48000, 64000, 96000, 128000, 160000, 192000, 256000, 320000}, 128000});
            break;
        case EncoderFamily::kMp3:
            options.push_back({ExportSettingKind::kBitRate,
                               {0, 32000, 40000, 48000, 56000, 64000, 80000, 96000, 112000, 128000, 160000, 192000,
                                224000, 256000, 320000},
                               128000});
            options.push_back({ExportSettingKind::kQuality, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, 4});
            break;
        case EncoderFamily::kVorbis:
            options.push_back({ExportSettingKind::kQuality, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, 4});
            break;
        case EncoderFamily::kOpus:
            options.push_back({ExportSettingKind::kBitRate,
                               {16000, 24000, 32000, 48000, 64000, 96000, 128000, 160000, 192000, 256000}, 96000});
            break;
    }
    return options;
}

}  // namespace vd::media
