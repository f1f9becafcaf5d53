#include "fmapi/args/results.h"

#include "fmapi/args/host_data.h"
#include "fmapi/args/host_number.h"
#include "fmapi/args/host_text.h"

#include <string>

namespace vd {

FMX_ErrCode SetResultText(FMX_Data* result, const FMX_Text* text) {
    fmapi::OwnedLocale locale(FMX_LOCALE_CURRENT);
    return fmapi::DataSetAsText(result, text, locale.get(), FMX_TYPE_TEXT);
}

FMX_ErrCode SetResultUtf8(FMX_Data* result, std::string_view utf8) {
    fmapi::OwnedText text;
    std::string terminated(utf8);  // the host reads up to the NUL
    TextFromC(text.get(), terminated.c_str(), FMX_ENCODING_UTF8);
    return SetResultText(result, text.get());
}

FMX_ErrCode SetResultUtf16(FMX_Data* result, std::u16string_view units) {
    fmapi::OwnedText text;
    TextFromUtf16(text.get(), units);
    return SetResultText(result, text.get());
}

FMX_ErrCode SetResultNumber(FMX_Data* result, int32_t number) {
    fmapi::OwnedFixPt value;
    fmapi::FixPtAssignInt(value.get(), number);
    return fmapi::DataSetAsNumber(result, value.get(), FMX_TYPE_NUMBER);
}

FMX_ErrCode SetResultNumber(FMX_Data* result, double number) {
    fmapi::OwnedFixPt value;
    fmapi::FixPtAssignDouble(value.get(), number);
    return fmapi::DataSetAsNumber(result, value.get(), FMX_TYPE_NUMBER);
}

FMX_ErrCode SetResultBinary(FMX_Data* result, const FMX_BinaryData* data) {
    return fmapi::DataSetBinaryData(result, data, true);
}

void TextFromC(FMX_Text* text, const char* s, int32_t encoding) { fmapi::TextAssign(text, s, encoding); }

void TextFromUtf16(FMX_Text* text, std::u16string_view units) {
    fmapi::TextAssignUnicodeWithLength(text, reinterpret_cast<const uint16_t*>(units.data()),
                                      static_cast<uint32_t>(units.size()));
}

uint32_t TextFind(const FMX_Text* text, const FMX_Text* what, uint32_t position) {
    return fmapi::TextFindText(text, what, position);
}

void TextDelete(FMX_Text* text, uint32_t position, uint32_t size) { fmapi::TextDeleteText(text, position, size); }

void TextAppend(FMX_Text* text, const FMX_Text* other) { fmapi::TextAppendText(text, other, 0, FMX_TEXT_ALL); }

bool TextEquals(const FMX_Text* a, const FMX_Text* b) { return fmapi::TextOperatorEQ(a, b); }

}  // namespace vd
