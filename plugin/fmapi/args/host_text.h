// Thin wrappers over the host's text calls (FM_Text_*), one per call, and an owner for host texts.
#pragma once

#include <fmx/text.h>

#include <cstdint>
#include <memory>

namespace vd::fmapi {

FMX_Text* NewText();
void DeleteText(FMX_Text* text) noexcept;
void TextAssign(FMX_Text* text, const char* s, int32_t encoding);
void TextAssignUnicode(FMX_Text* text, const uint16_t* s);
void TextAssignUnicodeWithLength(FMX_Text* text, const uint16_t* s, uint32_t length);
uint32_t TextGetSize(const FMX_Text* text);
void TextGetUnicode(const FMX_Text* text, uint16_t* buffer, uint32_t position, uint32_t size);
uint32_t TextGetBytes(const FMX_Text* text, char* buffer, uint32_t bufferSize, uint32_t position,
                      uint32_t size, int32_t encoding);
uint32_t TextFindText(const FMX_Text* text, const FMX_Text* what, uint32_t position);
void TextDeleteText(FMX_Text* text, uint32_t position, uint32_t size);
void TextAppendText(FMX_Text* text, const FMX_Text* other, uint32_t position, uint32_t size);
bool TextOperatorEQ(const FMX_Text* a, const FMX_Text* b);

struct TextDeleter {
    void operator()(FMX_Text* text) const noexcept { DeleteText(text); }
};

// A host text we made and must delete.
class OwnedText {
public:
    OwnedText() : text_(NewText()) {}
    FMX_Text* get() const { return text_.get(); }

private:
    std::unique_ptr<FMX_Text, TextDeleter> text_;
};

}  // namespace vd::fmapi
