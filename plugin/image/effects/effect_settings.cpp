#include "image/effects/effect_settings.h"

#include "util/words.h"
#include "util/html_color.h"
#include "util/settings_text.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace vd::image {

namespace {

using util::SameWord;
using util::NextWord;

constexpr double kFixedOne = 65536.0;

std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

std::string_view Trim(std::string_view text) {
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front()))) text.remove_prefix(1);
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back()))) text.remove_suffix(1);
    return text;
}

std::string ParameterList(const EffectDefinition& effect) {
    std::string list;
    for (const EffectParameter& p : effect.parameters) list += (list.empty() ? "" : ", ") + std::string(p.name);
    return list.empty() ? "it takes none" : "its parameters are " + list;
}

bool ReadValue(const EffectParameter& parameter, std::string_view text, double& value) {
    if (parameter.kind == ParameterKind::kColour) {
        util::RgbColor colour;
        if (util::ParseHtmlColor(text, colour) != util::kNoError) return false;
        value = double(uint32_t(colour.red) << 16 | uint32_t(colour.green) << 8 | colour.blue);
        return true;
    }
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end && std::isfinite(value);
}

void Put32(std::vector<uint8_t>& out, uint32_t value) {
    for (int shift : {24, 16, 8, 0}) out.push_back(uint8_t(value >> shift));
}

uint32_t Get32(const std::vector<uint8_t>& in, size_t at) {
    return uint32_t(in[at]) << 24 | uint32_t(in[at + 1]) << 16 | uint32_t(in[at + 2]) << 8 | in[at + 3];
}

util::Status Refuse(std::string& message, std::string text) {
    message = std::move(text);
    return util::kBadParameter;
}

}  // namespace

EffectSettings DefaultSettings(const EffectDefinition& effect) {
    EffectSettings settings{&effect, {}};
    for (const EffectParameter& p : effect.parameters) settings.values.push_back(BlockValue(p, p.byDefault));
    return settings;
}

double BlockValue(const EffectParameter& parameter, double value) {
    if (parameter.kind == ParameterKind::kColour) return std::round(value);
    return std::round(value * kFixedOne) / kFixedOne;
}

std::string RangeProblem(const EffectDefinition& effect, const EffectParameter& parameter, double value) {
    if (value >= parameter.minimum && value <= parameter.maximum) return {};
    if (parameter.kind == ParameterKind::kColour)
        return std::string(effect.name) + "'s " + parameter.name + " is no colour";
    return std::string(effect.name) + "'s " + parameter.name + " must be between " + Number(parameter.minimum) +
           " and " + Number(parameter.maximum) + ", not " + Number(value);
}

std::vector<uint8_t> EncodeBlock(const EffectSettings& settings) {
    std::vector<uint8_t> block;
    Put32(block, settings.effect->Code());
    for (size_t i = 0; i < settings.values.size(); ++i) {
        const double v = settings.values[i];
        if (settings.effect->parameters[i].kind == ParameterKind::kColour)
            Put32(block, uint32_t(v));
        else
            Put32(block, uint32_t(int32_t(std::lround(v * kFixedOne))));
    }
    return block;
}

util::Status DecodeBlock(const std::vector<uint8_t>& block, EffectSettings& settings, std::string& message) {
    if (block.size() < 4) return Refuse(message, "the effect description holds no effect");
    const EffectDefinition* effect = FindEffectByCode(Get32(block, 0));
    if (!effect) return Refuse(message, "the effect description names no effect we know");
    if (block.size() != 4 + 4 * effect->parameters.size())
        return Refuse(message, "the description of " + std::string(effect->name) + " has " +
                                   std::to_string(block.size()) + " bytes, not " +
                                   std::to_string(4 + 4 * effect->parameters.size()));
    EffectSettings decoded{effect, {}};
    for (size_t i = 0; i < effect->parameters.size(); ++i) {
        const EffectParameter& p = effect->parameters[i];
        const uint32_t raw = Get32(block, 4 + 4 * i);
        const double v = p.kind == ParameterKind::kColour ? double(raw) : double(int32_t(raw)) / kFixedOne;
        if (std::string problem = RangeProblem(*effect, p, v); !problem.empty()) return Refuse(message, problem);
        decoded.values.push_back(v);
    }
    settings = std::move(decoded);
    return util::kNoError;
}

util::Status ToSettingsText(const EffectSettings& settings, std::string& text) {
    return util::SettingsToHexText(EncodeBlock(settings), text);
}

util::Status ParseReadable(std::string_view text, EffectSettings& settings, std::string& message) {
    const std::string_view name = NextWord(text);
    if (name.empty()) return Refuse(message, "the effect description is empty");
    const EffectDefinition* effect = FindEffectByName(name);
    if (!effect)
        return Refuse(message, "there is no effect \"" + std::string(name) + "\"; the effects are " +
                                   std::string(EffectNameList()));
    EffectSettings parsed = DefaultSettings(*effect);
    std::vector<bool> given(effect->parameters.size(), false);
    for (std::string_view pair = NextWord(text); !pair.empty(); pair = NextWord(text)) {
        const size_t equals = pair.find('=');
        const std::string_view key = pair.substr(0, equals);
        size_t index = 0;
        while (index < effect->parameters.size() && !SameWord(effect->parameters[index].name, key)) ++index;
        if (index == effect->parameters.size())
            return Refuse(message, std::string(effect->name) + " has no parameter \"" + std::string(key) + "\"; " +
                                       ParameterList(*effect));
        const EffectParameter& p = effect->parameters[index];
        if (equals == std::string_view::npos)
            return Refuse(message, std::string(effect->name) + "'s " + p.name + " is given as " + p.name + "=value");
        if (given[index]) return Refuse(message, std::string(effect->name) + "'s " + p.name + " is given twice");
        given[index] = true;
        double v = 0;
        const std::string_view written = pair.substr(equals + 1);
        if (!ReadValue(p, written, v))
            return Refuse(message, std::string(effect->name) + "'s " + p.name + " \"" + std::string(written) +
                                       "\" is no " + (p.kind == ParameterKind::kColour ? "colour" : "number"));
        v = BlockValue(p, v);
        if (std::string problem = RangeProblem(*effect, p, v); !problem.empty()) return Refuse(message, problem);
        parsed.values[index] = v;
    }
    settings = std::move(parsed);
    return util::kNoError;
}

util::Status ParseDescription(std::string_view text, EffectSettings& settings, std::string& message) {
    const std::string_view trimmed = Trim(text);
    if (!trimmed.starts_with(util::kSettingsOpenTag)) return ParseReadable(trimmed, settings, message);
    std::vector<uint8_t> block;
    if (util::Status s = util::HexTextToSettings(trimmed, block)) {
        if (s != util::kBadParameter) return s;
        return Refuse(message, "the effect description is no settings text that can be read");
    }
    return DecodeBlock(block, settings, message);
}

}  // namespace vd::image
