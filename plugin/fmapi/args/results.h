// Setting a function's result, and the host-text helpers results are built with.
#pragma once

#include <fmx/fmx.h>

#include <cstdint>
#include <string_view>

namespace vd {

FMX_ErrCode SetResultText(FMX_Data* result, const FMX_Text* text);
// The common case: a UTF-8 text made into a host text and set.
FMX_ErrCode SetResultUtf8(FMX_Data* result, std::string_view utf8);
FMX_ErrCode SetResultUtf16(FMX_Data* result, std::u16string_view units);
FMX_ErrCode SetResultNumber(FMX_Data* result, int32_t number);
FMX_ErrCode SetResultNumber(FMX_Data* result, double number);
FMX_ErrCode SetResultBinary(FMX_Data* result, const FMX_BinaryData* data);

void TextFromC(FMX_Text* text, const char* s, int32_t encoding);
void TextFromUtf16(FMX_Text* text, std::u16string_view units);
uint32_t TextFind(const FMX_Text* text, const FMX_Text* what, uint32_t position);
void TextDelete(FMX_Text* text, uint32_t position, uint32_t size);
void TextAppend(FMX_Text* text, const FMX_Text* other);
bool TextEquals(const FMX_Text* a, const FMX_Text* b);

}  // namespace vd
