#include "image/effects/effect_catalog.h"

#include <cctype>
#include <string>

namespace vd::image {

namespace {

constexpr EffectParameter kBlur[] = {{"radius", "Radius", ParameterKind::kNumber, 0.1, 50, 2, 0.1}};
constexpr EffectParameter kSharpen[] = {{"amount", "Amount", ParameterKind::kNumber, 0, 10, 1, 0.1},
                                        {"radius", "Radius", ParameterKind::kNumber, 0.1, 20, 1, 0.1}};
constexpr EffectParameter kTint[] = {{"color", "Colour", ParameterKind::kColour, 0, 0xFFFFFF, 0xA05020, 1},
                                     {"amount", "Amount", ParameterKind::kNumber, 0, 1, 0.5, 0.01}};
constexpr EffectParameter kBrightness[] = {{"brightness", "Brightness", ParameterKind::kNumber, -1, 1, 0, 0.01},
                                           {"contrast", "Contrast", ParameterKind::kNumber, 0, 4, 1, 0.01}};
constexpr EffectParameter kGamma[] = {{"gamma", "Gamma", ParameterKind::kNumber, 0.1, 10, 1, 0.01}};
constexpr EffectParameter kMix[] = {{"mix", "Mix", ParameterKind::kNumber, 0, 1, 0.5, 0.01}};

constexpr EffectDefinition kEffects[] = {
    {EffectKind::kBlur, "blur", "blur", "Blur", kBlur, false},
    {EffectKind::kSharpen, "sharpen", "shrp", "Sharpen", kSharpen, false},
    {EffectKind::kEmboss, "emboss", "embs", "Emboss", {}, false},
    {EffectKind::kEdges, "edges", "edge", "Edge Detection", {}, false},
    {EffectKind::kGrey, "grey", "grey", "Grey", {}, false},
    {EffectKind::kSepia, "sepia", "sepi", "Sepia", {}, false},
    {EffectKind::kInvert, "invert", "invt", "Invert", {}, false},
    {EffectKind::kTint, "tint", "tint", "Tint", kTint, false},
    {EffectKind::kBrightness, "brightness", "brct", "Brightness and Contrast", kBrightness, false},
    {EffectKind::kGamma, "gamma", "gamm", "Gamma", kGamma, false},
    {EffectKind::kCrossFade, "crossfade", "xfad", "Cross Fade", kMix, true},
};

bool SameWord(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

}  // namespace

uint32_t EffectDefinition::Code() const {
    return uint32_t(uint8_t(code[0])) << 24 | uint32_t(uint8_t(code[1])) << 16 | uint32_t(uint8_t(code[2])) << 8 |
           uint8_t(code[3]);
}

std::span<const EffectDefinition> Effects() { return kEffects; }

const EffectDefinition* FindEffectByName(std::string_view name) {
    for (const EffectDefinition& e : kEffects)
        if (SameWord(e.name, name) || name == std::string_view(e.code, 4)) return &e;
    return nullptr;
}

const EffectDefinition* FindEffectByCode(uint32_t code) {
    for (const EffectDefinition& e : kEffects)
        if (e.Code() == code) return &e;
    return nullptr;
}

std::string_view EffectNameList() {
    static const std::string list = [] {
        std::string names;
        for (const EffectDefinition& e : kEffects) names += (names.empty() ? "" : ", ") + std::string(e.name);
        return names;
    }();
    return list;
}

}  // namespace vd::image
