#include "image/conversion_settings.h"

#include <algorithm>
#include <mutex>

namespace vd::image {

namespace {

std::mutex gLock;
ConversionSettings gConversion;
PreviewSettings gPreview;

}  // namespace

ConversionSettings StoredConversionSettings() {
    std::lock_guard lock(gLock);
    return gConversion;
}

void StoreConversionSettings(const ConversionSettings& settings) {
    std::lock_guard lock(gLock);
    gConversion = settings;
}

PreviewSettings StoredPreviewSettings() {
    std::lock_guard lock(gLock);
    return gPreview;
}

void StorePreviewSettings(int32_t quality, bool mark) {
    std::lock_guard lock(gLock);
    gPreview.quality = std::clamp(quality, -1, 1024);
    gPreview.mark = mark;
}

}  // namespace vd::image
