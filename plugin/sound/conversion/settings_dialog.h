// The settings dialog of a sound exporter: one control per setting the exporter takes, each a
// list of the values it offers, answered by a person (GTK) or a script (VANDREL_UI_SCRIPT).
#pragma once

#include "platform/media/export_settings.h"
#include "util/status_codes.h"

#include <string>

namespace vd::sound {

// Shows the dialog for the exporter, starting from settings (whose subtype names the exporter),
// and stores the choices there. util::kUserCancelled when cancelled or when no dialog can be
// shown (detail says why); util::kBadParameter for a script answer the dialog does not offer.
util::Status RunExportSettingsDialog(const std::string& exporterName, media::ExportSettings& settings,
                                     std::string& detail);

}  // namespace vd::sound
