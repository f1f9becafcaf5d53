// What the graphics layer is asked to draw for a picture effect: the operation and its numbers,
// already checked against their ranges by the caller.
#pragma once

#include <cstdint>

namespace vd::platform {

enum class EffectOperation {
    kBlur,        // a: the Gaussian's sigma in pixels
    kSharpen,     // a: amount (libvips's slopes m1 and m2), b: radius (its sigma)
    kEmboss,      // a relief: a 3 x 3 directional kernel around mid-grey
    kEdges,       // the Sobel operator on each channel
    kGrey,        // the luminance, as RGB
    kSepia,       // the classic sepia matrix
    kInvert,      // 255 - value
    kTint,        // colour; a: amount, the luminance coloured mixed into the picture
    kBrightness,  // a: brightness -1..1 (added as a x 255), b: contrast factor about mid-grey
    kGamma,       // a: gamma (out = 255 x (in / 255) ^ (1 / gamma))
    kCrossFade,   // a: mix, 0 the first picture, 1 the second
};

struct EffectRecipe {
    EffectOperation operation = EffectOperation::kInvert;
    double a = 0, b = 0;
    uint32_t colour = 0;  // 0x00RRGGBB
};

}  // namespace vd::platform
