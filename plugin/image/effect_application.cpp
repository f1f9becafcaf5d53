#include "image/effect_application.h"

#include "container/stream_types.h"
#include "container/streams.h"
#include "fmapi/args/host_binary.h"
#include "fmapi/args/results.h"
#include "image/container_importer.h"
#include "image/vd_image.h"
#include "platform/graphics/effect_drawing.h"
#include "platform/graphics/graphics_importer.h"
#include "platform/graphics/vips_library.h"
#include "util/status_codes.h"

namespace vd::image {

namespace {

constexpr const char* kDrawingFailed = "The effect could not be drawn";
constexpr const char* kConversionFailed = "Conversion to VD image failed";

platform::EffectOperation OperationOf(EffectKind kind) {
    switch (kind) {
        case EffectKind::kBlur: return platform::EffectOperation::kBlur;
        case EffectKind::kSharpen: return platform::EffectOperation::kSharpen;
        case EffectKind::kEmboss: return platform::EffectOperation::kEmboss;
        case EffectKind::kEdges: return platform::EffectOperation::kEdges;
        case EffectKind::kGrey: return platform::EffectOperation::kGrey;
        case EffectKind::kSepia: return platform::EffectOperation::kSepia;
        case EffectKind::kInvert: return platform::EffectOperation::kInvert;
        case EffectKind::kTint: return platform::EffectOperation::kTint;
        case EffectKind::kBrightness: return platform::EffectOperation::kBrightness;
        case EffectKind::kGamma: return platform::EffectOperation::kGamma;
        case EffectKind::kCrossFade: return platform::EffectOperation::kCrossFade;
    }
    return platform::EffectOperation::kInvert;
}

std::string WithDetail(const char* message) {
    const std::string& detail = platform::LastGraphicsErrorDetail();
    if (detail.empty()) return message;
    return std::string(message) + " (" + detail.substr(0, detail.find_last_not_of("\n") + 1) + ")";
}

}  // namespace

platform::EffectRecipe RecipeOf(const EffectSettings& settings) {
    platform::EffectRecipe recipe;
    recipe.operation = OperationOf(settings.effect->kind);
    // Numbers go to a and b in the catalogue's order; a colour goes to colour and takes no letter.
    double* next[] = {&recipe.a, &recipe.b};
    size_t used = 0;
    for (size_t i = 0; i < settings.values.size(); ++i) {
        if (settings.effect->parameters[i].kind == ParameterKind::kColour)
            recipe.colour = uint32_t(settings.values[i]);
        else if (used < 2)
            *next[used++] = settings.values[i];
    }
    return recipe;
}

fmapi::Outcome ApplyEffect(const FMX_Data* first, std::string_view description, const FMX_Data* second) {
    EffectSettings settings;
    std::string message;
    if (util::Status s = ParseDescription(description, settings, message)) return fmapi::Outcome::Failure(s, message);
    if (settings.effect->needsSecondPicture && !second)
        return fmapi::Outcome::Failure(util::kBadParameter, std::string(settings.effect->name) +
                                                                " needs a second picture (container2)");

    platform::GraphicsImporter firstImporter, secondImporter;
    if (auto failure = OpenImporterForContainer(first, firstImporter)) return std::move(*failure);
    const bool useSecond = settings.effect->needsSecondPicture;
    if (useSecond)
        if (auto failure = OpenImporterForContainer(second, secondImporter)) return std::move(*failure);
    if (!platform::FindImageExporter(container::kPictStream))
        return fmapi::Outcome::Failure(util::kNoComponent, "Could not find QT exporter for VD image type");

    platform::GraphicsImporter drawn;
    if (util::Status s = platform::ApplyEffect(firstImporter, useSecond ? &secondImporter : nullptr,
                                               RecipeOf(settings), drawn))
        return fmapi::Outcome::Failure(s, WithDetail(kDrawingFailed));

    fmapi::OwnedBinaryData binary(fmapi::NewBinaryData());
    if (auto failure = AddVdImage(binary.get(), drawn, kConversionFailed)) return std::move(*failure);
    fmapi::OwnedData result(fmapi::NewData());
    if (FMX_ErrCode e = SetResultBinary(result.get(), binary.get())) return fmapi::Outcome::Failure(e);
    return fmapi::Outcome::Data(std::move(result));
}

}  // namespace vd::image
