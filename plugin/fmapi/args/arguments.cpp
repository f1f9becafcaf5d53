#include "fmapi/args/arguments.h"

#include "fmapi/args/boolean_words.h"
#include "fmapi/args/host_data.h"
#include "fmapi/args/host_text.h"
#include "util/status_codes.h"

#include <algorithm>
#include <limits>
#include <new>

namespace vd {

uint16_t ArgCount(const FMX_DataVect* args) {
    uint32_t n = fmapi::VectSize(args);
    return n > std::numeric_limits<uint16_t>::max() ? std::numeric_limits<uint16_t>::max() : static_cast<uint16_t>(n);
}

const FMX_Text* ArgText(const FMX_DataVect* args, uint32_t i) { return fmapi::VectAtAsText(args, i); }
const FMX_FixPt* ArgNumber(const FMX_DataVect* args, uint32_t i) { return fmapi::VectAtAsNumber(args, i); }
bool ArgHostBoolean(const FMX_DataVect* args, uint32_t i) { return fmapi::VectAtAsBoolean(args, i); }
const FMX_BinaryData* ArgBinary(const FMX_DataVect* args, uint32_t i) { return fmapi::VectAtAsBinaryData(args, i); }
const FMX_Data* ArgData(const FMX_DataVect* args, uint32_t i) { return fmapi::VectAt(args, i); }
int32_t ArgType(const FMX_Data* data) { return fmapi::DataGetNativeType(data); }
bool ArgEmpty(const FMX_Data* data) { return fmapi::DataIsEmpty(data); }

std::u16string ArgUtf16(const FMX_Text* text) {
    uint32_t length = fmapi::TextGetSize(text);
    std::u16string units(length, u'\0');
    if (length) fmapi::TextGetUnicode(text, reinterpret_cast<uint16_t*>(units.data()), 0, length);
    return units;
}

std::string ArgCText(const FMX_Text* text) {
    uint32_t length = fmapi::TextGetSize(text);
    // A UTF-16 unit never takes more than four bytes of UTF-8 (a pair takes four for two units).
    std::string bytes(static_cast<size_t>(length) * 4 + 1, '\0');
    uint32_t written = fmapi::TextGetBytes(text, bytes.data(), static_cast<uint32_t>(bytes.size()), 0,
                                          FMX_TEXT_ALL, FMX_ENCODING_UTF8);
    bytes.resize(std::min<size_t>(written, bytes.size()));
    return bytes;
}

int16_t ArgBoolean(const FMX_DataVect* args, uint32_t i, bool& value) {
    if (i >= ArgCount(args)) return util::kBadParameter;
    try {
        value = BooleanFromWord(ArgCText(ArgText(args, i)));
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    return 0;
}

}  // namespace vd
