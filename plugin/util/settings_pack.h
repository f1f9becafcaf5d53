// The packed block of a settings text: the settings' length (4 bytes, big-endian) and then the
// settings as one zlib stream, which any zlib inflate can read after skipping the length.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "util/status_codes.h"

namespace vd::util {

// Settings are a few hundred bytes of exporter or recorder state; a block claiming more than this is
// refused before anything is allocated for it.
inline constexpr size_t kMaxUnpackedSettingsBytes = size_t{256} << 20;

// Replaces the settings with their packed block. On failure the bytes stay as they were.
Status PackSettings(std::vector<uint8_t>& bytes) noexcept;

// Replaces the packed block with the settings. -50 for a block of 3 bytes or fewer, a damaged
// stream, or a stream whose length disagrees with the header; -108 for a claimed length above
// kMaxUnpackedSettingsBytes. On failure the block stays as it was.
Status UnpackSettings(std::vector<uint8_t>& block) noexcept;

}  // namespace vd::util
