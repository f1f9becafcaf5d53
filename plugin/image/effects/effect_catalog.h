// The effects a picture can be given, each under a name for scripts and a four-character code for
// its settings block, with the parameters it takes: their names, ranges and defaults.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace vd::image {

enum class EffectKind {
    kBlur, kSharpen, kEmboss, kEdges, kGrey, kSepia, kInvert, kTint, kBrightness, kGamma, kCrossFade
};

enum class ParameterKind {
    kNumber,  // a 16.16 fixed-point number in the block
    kColour,  // 0x00RRGGBB in the block; "#rrggbb" (or an HTML colour name) in the readable form
};

struct EffectParameter {
    const char* name;   // the readable form's name, e.g. "radius"
    const char* label;  // what a person sees beside its control
    ParameterKind kind;
    double minimum, maximum, byDefault;  // a colour's are 0, 0xFFFFFF and its default as a number
    double step;                         // a slider's step (and the digits it shows)
};

struct EffectDefinition {
    EffectKind kind;
    const char* name;  // e.g. "blur"
    char code[5];      // e.g. "blur"
    const char* title; // the dialog's title
    std::span<const EffectParameter> parameters;
    bool needsSecondPicture;

    uint32_t Code() const;
};

std::span<const EffectDefinition> Effects();

// The effect of that name (any case) or that four-character code; nothing for any other text.
const EffectDefinition* FindEffectByName(std::string_view name);
const EffectDefinition* FindEffectByCode(uint32_t code);

// "blur, sharpen, ...": what a message about an unknown effect offers instead.
std::string_view EffectNameList();

}  // namespace vd::image
