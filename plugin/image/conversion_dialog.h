// The settings dialog of an image exporter: depth, and quality or compression where the format has
// them, answered by a person (GTK) or a script (VANDREL_UI_SCRIPT); the answer as a settings text.
#pragma once

#include "platform/graphics/image_formats.h"
#include "util/status_codes.h"

#include <string>

namespace vd::image {

// Shows the form and answers the settings text of the choices: "<hex>...</hex>" of the type code,
// depth, quality and compression method (32-bit big-endian each, -1 for the exporter's own).
// util::kUserCancelled when cancelled or when no dialog can be shown (detail says why).
util::Status RunImageExportDialog(const platform::ImageFormat& format, std::string& settingsText, std::string& detail);

}  // namespace vd::image
