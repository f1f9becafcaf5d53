#include "image/effect_dialog.h"

#include "fmapi/errors/message_table.h"
#include "image/container_importer.h"
#include "image/effect_application.h"
#include "image/effects/effect_settings.h"
#include "platform/graphics/effect_drawing.h"
#include "platform/graphics/graphics_importer.h"
#include "platform/ui/effect_form.h"

#include <memory>

namespace vd::image {

namespace {

// The pictures of the preview, made small only when a form first asks for it: a script answers
// without any picture being decoded.
struct PreviewSources {
    platform::GraphicsImporter first, second;
    bool hasSecond = false;
    bool tried = false;
    platform::EffectPreview preview;
    util::Status opened = util::kNoError;

    bool Ready() {
        if (!tried) {
            tried = true;
            opened = preview.Open(first, hasSecond ? &second : nullptr);
        }
        return opened == util::kNoError;
    }
};

platform::ui::EffectControl ControlOf(const EffectParameter& p, double value) {
    platform::ui::EffectControl c;
    c.name = p.name;
    c.label = p.label;
    c.colour = p.kind == ParameterKind::kColour;
    c.minimum = p.minimum;
    c.maximum = p.maximum;
    c.step = p.step;
    c.value = value;
    return c;
}

EffectSettings SettingsOf(const EffectDefinition& effect, const std::vector<double>& values) {
    EffectSettings settings{&effect, {}};
    for (size_t i = 0; i < effect.parameters.size(); ++i)
        settings.values.push_back(BlockValue(effect.parameters[i], i < values.size() ? values[i] : 0));
    return settings;
}

}  // namespace

fmapi::Outcome RunEffectDialog(std::string_view effectType, const FMX_Data* preview, const FMX_Data* preview2) {
    EffectSettings start;
    std::string message;
    if (util::Status s = ParseDescription(effectType, start, message)) return fmapi::Outcome::Failure(s, message);
    const EffectDefinition& effect = *start.effect;

    auto sources = std::make_shared<PreviewSources>();
    if (preview) {
        if (auto failure = OpenImporterForContainer(preview, sources->first)) return std::move(*failure);
        if (preview2) {
            if (auto failure = OpenImporterForContainer(preview2, sources->second)) return std::move(*failure);
            sources->hasSecond = true;
        }
    }

    platform::ui::EffectFormRequest form;
    form.title = effect.title;
    for (size_t i = 0; i < effect.parameters.size(); ++i)
        form.controls.push_back(ControlOf(effect.parameters[i], start.values[i]));
    if (preview) {
        form.preview = [sources, &effect](const std::vector<double>& values, platform::ui::PreviewFrame& frame) {
            if (!sources->Ready()) return false;
            platform::PreviewPixels pixels;
            if (sources->preview.Render(RecipeOf(SettingsOf(effect, values)), pixels)) return false;
            frame.width = pixels.width;
            frame.height = pixels.height;
            frame.rgb = std::move(pixels.rgb);
            return true;
        };
    }

    const platform::ui::EffectFormAnswer answer = platform::ui::ShowEffectForm(form);
    if (answer.status != util::kNoError) {
        if (answer.detail.empty()) return fmapi::Outcome::Failure(answer.status);
        return fmapi::Outcome::Failure(answer.status, std::string(MessageForCode(answer.status)) + " " + answer.detail);
    }
    const EffectSettings chosen = SettingsOf(effect, answer.values);
    for (size_t i = 0; i < effect.parameters.size(); ++i)
        if (std::string problem = RangeProblem(effect, effect.parameters[i], chosen.values[i]); !problem.empty())
            return fmapi::Outcome::Failure(util::kBadParameter, problem);
    std::string text;
    if (util::Status s = ToSettingsText(chosen, text)) return fmapi::Outcome::Failure(s);
    return fmapi::Outcome::Text(std::move(text));
}

}  // namespace vd::image
