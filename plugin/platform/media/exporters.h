// The sound exporters: what stands in for the Mac's movie export components of sound ('spit'
// components that take 'soun' media). One table names each exporter's subtype, manufacturer,
// name, information text, file muxer and encoder; an exporter counts as installed when this
// system's FFmpeg has both its muxer and its encoder.
#pragma once

#include "platform/media/errors.h"
#include "platform/media/export_settings.h"
#include "platform/media/four_char_code.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vd::media {

inline constexpr FourCharCode kSoundExporterManufacturer = FourCC("soun");

// What a settings dialog offers for one setting of an exporter.
enum class ExportSettingKind { kSampleRate, kChannels, kSampleSize, kBitRate, kQuality, kCompressionLevel };

struct ExportSettingOptions {
    ExportSettingKind kind;
    std::vector<int32_t> values;  // in the order shown; 0 for "the sound's own" rate or channels, or "variable" bit rate
    int32_t defaultValue;
};

struct ExporterInfo {
    FourCharCode subtype;
    FourCharCode manufacturer;
    std::string name;
    std::string information;  // begins "a QuickTime Movie ", as the components' texts did
    std::string extension;    // the usual file name extension, without the dot
};

// The installed exporters, ordered by subtype. Loads FFmpeg; its failure when it cannot.
Status InstalledExporters(std::vector<ExporterInfo>& exporters);

// The exporter of subtype made by the sound manufacturer, else by any: util::kNoComponent when no
// installed exporter has the subtype.
Status FindExporter(FourCharCode subtype, ExporterInfo& exporter);

// The settings an exporter starts from, and what its dialog offers.
ExportSettings DefaultExportSettings(FourCharCode subtype);
std::vector<ExportSettingOptions> ExportSettingChoices(FourCharCode subtype);

}  // namespace vd::media
