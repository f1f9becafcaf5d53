// Vandrel_EffectDialog's work: the controls of one effect with a live preview, answered by a
// person (GTK) or a script (VANDREL_UI_SCRIPT), and the choice as the effect's settings text.
#pragma once

#include "fmapi/outcome.h"

#include <fmx/fmx.h>

#include <string_view>

namespace vd::image {

// effectType is an effect's name or code, or a whole description whose values the controls start
// from. The previews are nothing when not given. Answers the settings text, or -50 for an effect
// we do not know, the failure of a preview picture that cannot be opened, and -128 when the
// dialog is cancelled or cannot be shown (with the reason).
fmapi::Outcome RunEffectDialog(std::string_view effectType, const FMX_Data* preview, const FMX_Data* preview2);

}  // namespace vd::image
