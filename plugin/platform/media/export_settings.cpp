#include "platform/media/export_settings.h"

namespace vd::media {

namespace {

constexpr FourCharCode kMark = FourCC("vdex");
constexpr uint16_t kLayoutVersion = 1;

void Put(std::vector<uint8_t>& out, uint32_t value, int bytes) {
    for (int shift = (bytes - 1) * 8; shift >= 0; shift -= 8) out.push_back(uint8_t(value >> shift));
}

uint32_t Get(const std::vector<uint8_t>& in, size_t offset, int bytes) {
    uint32_t value = 0;
    for (int i = 0; i < bytes; ++i) value = value << 8 | in[offset + size_t(i)];
    return value;
}

}  // namespace

std::vector<uint8_t> ExportSettingsBytes(const ExportSettings& s) {
    std::vector<uint8_t> out;
    out.reserve(kExportSettingsSize);
    Put(out, kMark, 4);
    Put(out, kLayoutVersion, 2);
    Put(out, 0, 2);
    Put(out, s.subtype, 4);
    Put(out, uint32_t(s.sampleRate), 4);
    Put(out, uint16_t(s.channels), 2);
    Put(out, uint16_t(s.sampleSize), 2);
    Put(out, uint32_t(s.bitRate), 4);
    Put(out, uint32_t(s.quality), 4);
    Put(out, uint32_t(s.compressionLevel), 4);
    return out;
}

Status ExportSettingsFromBytes(const std::vector<uint8_t>& bytes, ExportSettings& settings) {
    if (bytes.size() < kExportSettingsSize || Get(bytes, 0, 4) != kMark || Get(bytes, 4, 2) != kLayoutVersion)
        return MediaFailure(util::kBadParameter, "these are no sound export settings");
    ExportSettings s;
    s.subtype = Get(bytes, 8, 4);
    s.sampleRate = int32_t(Get(bytes, 12, 4));
    s.channels = int16_t(Get(bytes, 16, 2));
    s.sampleSize = int16_t(Get(bytes, 18, 2));
    s.bitRate = int32_t(Get(bytes, 20, 4));
    s.quality = int32_t(Get(bytes, 24, 4));
    s.compressionLevel = int32_t(Get(bytes, 28, 4));
    if (s.sampleRate < 0 || s.channels < 0 || s.sampleSize < 0 || s.bitRate < 0)
        return MediaFailure(util::kBadParameter, "the sound export settings hold a negative rate, size or count");
    settings = s;
    return util::kNoError;
}

}  // namespace vd::media
