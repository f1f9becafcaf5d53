// Vandrel_ConvertImage, Vandrel_ListImageOutputTypes, Vandrel_ConversionDialog and
// Vandrel_SetImageDefaults.
#include "image/functions/image_functions.h"

#include "fmapi/args/arguments.h"
#include "fmapi/args/host_number.h"
#include "fmapi/errors/message_table.h"
#include "image/conversion_dialog.h"
#include "image/conversion_settings.h"
#include "image/image_conversion.h"
#include "image/image_type_code.h"
#include "platform/graphics/graphics_importer.h"
#include "platform/graphics/image_formats.h"
#include "util/status_codes.h"

namespace vd::image {

namespace {

constexpr const char* kNoExporter = "Could not find QT exporter for specified image type";

int32_t IntegerArg(const FMX_DataVect* args, uint32_t i) { return fmapi::FixPtAsLong(ArgNumber(args, i)); }
double DoubleArg(const FMX_DataVect* args, uint32_t i) { return fmapi::FixPtAsFloat(ArgNumber(args, i)); }

}  // namespace

fmapi::Outcome ConvertImageFunction(const FunctionCall& call) {
    const uint16_t count = ArgCount(call.args);
    // The message has always named 10 parameters although 11 are what is taken.
    if (count != 2 && count != 11) return fmapi::Outcome::Failure(util::kWrongArgumentCount, "Requires either 2 or 10 parameters");
    uint32_t type = 0;
    if (auto failure = ImageTypeParameter(call.args, 1, type)) return std::move(*failure);
    if (count == 11) {
        ConversionSettings s;
        s.depth = IntegerArg(call.args, 2);
        s.hres = DoubleArg(call.args, 3);
        s.vres = DoubleArg(call.args, 4);
        s.targetBytes = IntegerArg(call.args, 5);
        s.quality = IntegerArg(call.args, 6);
        s.imageIndex = IntegerArg(call.args, 7);
        s.transcode = IntegerArg(call.args, 8);
        s.packBits = IntegerArg(call.args, 9);
        s.interlace = IntegerArg(call.args, 10);
        StoreConversionSettings(s);
    }
    return ConvertImage(ArgData(call.args, 0), type, StoredConversionSettings());
}

fmapi::Outcome ListImageOutputTypesFunction(const FunctionCall&) { return fmapi::Outcome::Text(ImageOutputTypeList()); }

fmapi::Outcome ConversionDialogFunction(const FunctionCall& call) {
    uint32_t type = 0;
    if (auto failure = ImageTypeParameter(call.args, 0, type)) return std::move(*failure);
    const platform::ImageFormat* format = platform::FindImageExporter(type);
    if (!format) return fmapi::Outcome::Failure(util::kNoComponent, kNoExporter);
    std::string text, detail;
    if (util::Status s = RunImageExportDialog(*format, text, detail)) {
        if (detail.empty()) return fmapi::Outcome::Failure(s);
        return fmapi::Outcome::Failure(s, std::string(MessageForCode(s)) + " " + detail);
    }
    return fmapi::Outcome::Text(std::move(text));
}

fmapi::Outcome SetImageDefaultsFunction(const FunctionCall& call) {
    StorePreviewSettings(IntegerArg(call.args, 0), ArgHostBoolean(call.args, 1));
    return fmapi::Outcome::Text(std::string());
}

}  // namespace vd::image
