// FFmpeg, loaded when the movie layer first needs it and not with the plug-in (see lazy_library.h).
// Every entry into the layer that is about to call FFmpeg starts it here first and gives up with
// the status when it cannot; the rest of the layer calls FFmpeg's functions as usual.
#pragma once

#include "platform/media/errors.h"

namespace vd::media {

// Loads libavformat, libavcodec, libswresample and libavutil once per process, resolves every
// FFmpeg function the layer calls and quiets the libraries' logging. util::kNoCodec (no handler for any
// media) when they cannot be loaded, with the reason as the detail; each later call answers the
// same at once. VANDREL_MEDIA_LAYER=unloadable makes the load fail while the start-up check still
// finds the files (tests use it).
Status StartFfmpeg();

}  // namespace vd::media
