// Which picture format bytes hold, by the signature at their start. PICT, TGA and MacPaint have
// none that can be trusted, so they are known by a file's extension instead.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vd::platform {

// The format's type code, or 0 when no signature we know matches.
uint32_t ImageTypeFromSignature(const uint8_t* bytes, size_t size);

// The type code a file-name extension stands for ("pct", "tga", "PNTG" ...), or 0.
uint32_t ImageTypeFromExtension(std::string_view path);

}  // namespace vd::platform
