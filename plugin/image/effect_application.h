// Vandrel_EffectApply's work: an effect drawn on the picture of a container (and, for a cross
// fade, a second one) and answered as a VD image with its preview, as Vandrel_TApply answers.
#pragma once

#include "fmapi/outcome.h"
#include "image/effects/effect_settings.h"
#include "platform/graphics/effect_recipe.h"

#include <fmx/fmx.h>

#include <string_view>

namespace vd::image {

// What the graphics layer draws for the settings.
platform::EffectRecipe RecipeOf(const EffectSettings& settings);

// second is nothing when the call gave no second container.
fmapi::Outcome ApplyEffect(const FMX_Data* first, std::string_view description, const FMX_Data* second);

}  // namespace vd::image
