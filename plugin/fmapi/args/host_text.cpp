#include "fmapi/args/host_text.h"

#include "fmapi/args/host_call.h"

namespace vd::fmapi {

FMX_Text* NewText() {
    return Checked([](FMX_CallRecord* r) { return FM_Text_Constructor1(r); });
}

void DeleteText(FMX_Text* text) noexcept {
    if (text) Unchecked([&](FMX_CallRecord* r) { FM_Text_Delete(text, r); });
}

void TextAssign(FMX_Text* text, const char* s, int32_t encoding) {
    Checked([&](FMX_CallRecord* r) { FM_Text_Assign(text, s, encoding, r); });
}

void TextAssignUnicode(FMX_Text* text, const uint16_t* s) {
    Checked([&](FMX_CallRecord* r) { FM_Text_AssignUnicode(text, s, r); });
}

void TextAssignUnicodeWithLength(FMX_Text* text, const uint16_t* s, uint32_t length) {
    Checked([&](FMX_CallRecord* r) { FM_Text_AssignUnicodeWithLength(text, s, length, r); });
}

uint32_t TextGetSize(const FMX_Text* text) {
    return Checked([&](FMX_CallRecord* r) { return FM_Text_GetSize(text, r); });
}

void TextGetUnicode(const FMX_Text* text, uint16_t* buffer, uint32_t position, uint32_t size) {
    Checked([&](FMX_CallRecord* r) { FM_Text_GetUnicode(text, buffer, position, size, r); });
}

uint32_t TextGetBytes(const FMX_Text* text, char* buffer, uint32_t bufferSize, uint32_t position,
                      uint32_t size, int32_t encoding) {
    return Checked([&](FMX_CallRecord* r) {
        return FM_Text_GetBytes(text, buffer, bufferSize, position, size, encoding, r);
    });
}

uint32_t TextFindText(const FMX_Text* text, const FMX_Text* what, uint32_t position) {
    return Checked([&](FMX_CallRecord* r) { return FM_Text_Find(text, what, position, r); });
}

void TextDeleteText(FMX_Text* text, uint32_t position, uint32_t size) {
    Checked([&](FMX_CallRecord* r) { FM_Text_DeleteText(text, position, size, r); });
}

void TextAppendText(FMX_Text* text, const FMX_Text* other, uint32_t position, uint32_t size) {
    Checked([&](FMX_CallRecord* r) { FM_Text_AppendText(text, other, position, size, r); });
}

bool TextOperatorEQ(const FMX_Text* a, const FMX_Text* b) {
    return Checked([&](FMX_CallRecord* r) { return FM_Text_operatorEQ(a, b, r); });
}

}  // namespace vd::fmapi
