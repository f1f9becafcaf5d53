// What the plug-in asks of the media layer before it registers its functions: is the layer there
// (its version word), and can images be exported as JPEG. Both answers come from a cheap look for
// the libraries; nothing is loaded or initialised until a function first needs it.
#pragma once

#include <cstdint>

namespace vd::platform {

// The version word of the media layer when its libraries (libavformat 59, libavcodec 59,
// libswresample 4, libavutil 57) are installed; 0 when one is missing. Setting the environment
// variable VANDREL_MEDIA_LAYER to "absent" makes the layer count as missing (tests use it; with
// "unloadable" the layer counts as there, and its load at first use fails: see StartFfmpeg).
inline constexpr uint32_t kMediaLayerVersion = 0x07700000;
uint32_t MediaLayerVersion();

// Whether the JPEG saver can be had: libvips 42 and the JPEG codec library it saves through.
// VANDREL_JPEG_EXPORT=absent makes it unavailable.
bool JpegExporterPresent();

}  // namespace vd::platform
