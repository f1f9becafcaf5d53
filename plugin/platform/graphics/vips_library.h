// libvips, started on first use and never at load: the plug-in must start fast on a machine where
// no picture is ever drawn. Every failure of the library becomes a status here, in one place.
#pragma once

#include "util/status_codes.h"

#include <string>

namespace vd::platform {

// Loads and starts libvips once per process. util::kNoComponent when it cannot be loaded or
// started (LastGraphicsErrorDetail says why, on every call).
util::Status StartVips();
// Whether StartVips has succeeded already (a cheap check, for callers deciding whether to start it).
bool VipsStarted();
// Adds libvips's HEIF loader and saver, which it leaves out as it starts; once per process, before
// a HEIF picture is looked for, read or written. Without the module, HEIF stays unknown to it.
void LoadHeifModule();

// Where in our work libvips failed: the same error means "no such picture" when reading and "the
// library broke" when writing; any failure to start means we have no picture components at all.
enum class GraphicsStep { kStarting, kDecoding, kEncoding };

// The status for the failure libvips has just reported. Reads its error buffer (kept as the detail
// of LastGraphicsErrorDetail) and clears it, so that the next failure does not carry this one's text.
util::Status StatusFromVipsError(GraphicsStep step);

// The library's text of the last failure on this thread ("" after none).
const std::string& LastGraphicsErrorDetail();

}  // namespace vd::platform
