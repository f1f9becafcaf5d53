#include "image/image_type_code.h"

#include "container/stream_types.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/type_code.h"

namespace vd::image {

namespace {

constexpr int32_t kBadTypeCode = 20101;
constexpr int32_t kTypeCodeNotText = 20102;

struct TypeExtension {
    uint32_t code;
    const char* extension;
};

// Searched in this order.
constexpr TypeExtension kTypeTable[] = {
    {container::FourCC("BMPf"), "bmp"}, {container::FourCC("JPEG"), "jpg"}, {container::FourCC("jp2 "), "jp2"},
    {container::FourCC("PNTG"), "pnt"}, {container::FourCC("8BPS"), "psd"}, {container::FourCC("PICT"), "pct"},
    {container::FourCC("PNGf"), "png"}, {container::FourCC("qtif"), "qti"}, {container::FourCC(".sgi"), "sgi"},
    {container::FourCC("TPIC"), "tga"}, {container::FourCC("TIFF"), "tif"}, {container::FourCC("GIFf"), "gif"},
    {container::FourCC("snd "), "snd"}, {container::FourCC("TEXT"), "txt"},
};

}  // namespace

std::optional<fmapi::Outcome> ImageTypeParameter(const FMX_DataVect* args, uint32_t index, uint32_t& code) {
    if (index >= ArgCount(args) || ArgType(ArgData(args, index)) != FMX_TYPE_TEXT)
        return fmapi::Outcome::Failure(kTypeCodeNotText, "Image type code must be text");
    const std::optional<uint32_t> parsed = TypeCodeFromText(ArgCText(ArgText(args, index)));
    if (!parsed)
        return fmapi::Outcome::Failure(kBadTypeCode,
                                       "Image type code must be exactly 4 characters, empty, or start a list of items");
    code = *parsed;
    return std::nullopt;
}

std::string ExtensionOfType(uint32_t code) {
    for (const TypeExtension& t : kTypeTable)
        if (t.code == code) return t.extension;
    return {};
}

}  // namespace vd::image
