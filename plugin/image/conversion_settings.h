// What Vandrel_ConvertImage keeps between calls, and the preview settings of Vandrel_SetImageDefaults:
// process-wide, from start-up to shutdown, shared by every database.
#pragma once

#include <cstdint>

namespace vd::image {

// -1 leaves the exporter's own choice.
struct ConversionSettings {
    int32_t depth = -1;
    double hres = -1.0, vres = -1.0;
    int32_t targetBytes = -1;
    int32_t quality = -1;
    int32_t imageIndex = -1;
    int32_t transcode = -1;
    int32_t packBits = -1;
    int32_t interlace = -1;
};

struct PreviewSettings {
    int32_t quality = 512;  // -1: no preview picture at all
    bool mark = true;       // clip the preview to the preview mark
};

ConversionSettings StoredConversionSettings();
void StoreConversionSettings(const ConversionSettings& settings);

PreviewSettings StoredPreviewSettings();
// quality is clamped to -1..1024.
void StorePreviewSettings(int32_t quality, bool mark);

}  // namespace vd::image
