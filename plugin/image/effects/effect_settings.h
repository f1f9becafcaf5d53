// One effect with the values of its parameters, as the functions pass it around, and its two
// written forms: the settings text "<hex>…</hex>" of its block, and the readable form for scripts
// ("blur radius=2.5", "tint color=#a05020 amount=0.5").
//
// The block, all big-endian: the effect's four-character code, then each parameter in the order of
// the catalogue, 4 bytes each: numbers as signed 16.16 fixed point, colours as 0x00RRGGBB. Values
// are kept rounded to what the block holds, so both forms of one description are the same block.
#pragma once

#include "image/effects/effect_catalog.h"
#include "util/status_codes.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vd::image {

struct EffectSettings {
    const EffectDefinition* effect = nullptr;
    std::vector<double> values;  // one per parameter, in the catalogue's order
};

// The effect with every parameter at its default.
EffectSettings DefaultSettings(const EffectDefinition& effect);

// A number as the block keeps it (rounded to 1/65536); a colour as a whole 0xRRGGBB.
double BlockValue(const EffectParameter& parameter, double value);

// Why a value does not fit its parameter ("" when it fits), e.g. "blur's radius must be between
// 0.1 and 50, not 80".
std::string RangeProblem(const EffectDefinition& effect, const EffectParameter& parameter, double value);

std::vector<uint8_t> EncodeBlock(const EffectSettings& settings);
// -50 with a message for an unknown code, a block of the wrong length or a value out of range.
util::Status DecodeBlock(const std::vector<uint8_t>& block, EffectSettings& settings, std::string& message);

util::Status ToSettingsText(const EffectSettings& settings, std::string& text);

// "blur radius=2.5": the effect's name (or code) and any of its parameters as name=value, the
// rest at their defaults. -50 with a message for an unknown effect or parameter, a parameter given
// twice, a value that is no number (or colour) or is out of range.
util::Status ParseReadable(std::string_view text, EffectSettings& settings, std::string& message);

// A settings text or the readable form, told apart by the "<hex>" it starts with.
util::Status ParseDescription(std::string_view text, EffectSettings& settings, std::string& message);

}  // namespace vd::image
