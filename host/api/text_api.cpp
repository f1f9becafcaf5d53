// FM_Text_*: host texts.
#include "host_call.h"
#include "objects.h"
#include "text_codec.h"

#include <algorithm>
#include <cstring>

using namespace vdhost;

namespace {

// The range [position, position + size) clamped to the text.
std::u16string_view slice(const std::u16string& s, uint32_t position, uint32_t size) {
    if (position >= s.size()) return {};
    size_t n = std::min<size_t>(size, s.size() - position);
    return std::u16string_view(s).substr(position, n);
}

size_t unicodeLength(const uint16_t* s) {
    size_t n = 0;
    while (s[n]) ++n;
    return n;
}

}  // namespace

FMX_API FMX_Text* FM_Text_Constructor1(FMX_CallRecord* rec) {
    return hostCall(rec, [] { return new FMX_Text(); });
}

FMX_API void FM_Text_Delete(FMX_Text* text, FMX_CallRecord* rec) {
    hostCall(rec, [&] { delete text; });
}

FMX_API void FM_Text_Assign(FMX_Text* text, const char* s, int32_t encoding, FMX_CallRecord* rec) {
    hostCall(rec, [&] {
        auto& t = deref(text);
        std::string_view bytes(&deref(s));
        if (encoding == FMX_ENCODING_UTF8)
            t.units = utf8ToUtf16(bytes);
        else if (encoding == FMX_ENCODING_NATIVE)
            t.units = latin1ToUtf16(bytes);
        else
            throw CallFailure();
    });
}

FMX_API void FM_Text_AssignUnicode(FMX_Text* text, const uint16_t* s, FMX_CallRecord* rec) {
    hostCall(rec, [&] {
        auto& t = deref(text);
        const uint16_t* p = &deref(s);
        t.units.assign(reinterpret_cast<const char16_t*>(p), unicodeLength(p));
    });
}

FMX_API void FM_Text_AssignUnicodeWithLength(FMX_Text* text, const uint16_t* s, uint32_t length,
                                             FMX_CallRecord* rec) {
    hostCall(rec, [&] {
        auto& t = deref(text);
        if (length && !s) throw CallFailure();
        t.units.assign(reinterpret_cast<const char16_t*>(s), length);
    });
}

FMX_API uint32_t FM_Text_GetSize(const FMX_Text* text, FMX_CallRecord* rec) {
    return hostCall(rec, [&] { return static_cast<uint32_t>(deref(text).units.size()); });
}

FMX_API void FM_Text_GetUnicode(const FMX_Text* text, uint16_t* buffer, uint32_t position, uint32_t size,
                                FMX_CallRecord* rec) {
    hostCall(rec, [&] {
        auto part = slice(deref(text).units, position, size);
        if (part.empty()) return;
        std::memcpy(&deref(buffer), part.data(), part.size() * sizeof(char16_t));
    });
}

FMX_API uint32_t FM_Text_GetBytes(const FMX_Text* text, char* buffer, uint32_t bufferSize, uint32_t position,
                                  uint32_t size, int32_t encoding, FMX_CallRecord* rec) {
    return hostCall(rec, [&]() -> uint32_t {
        auto part = slice(deref(text).units, position, size);
        if (bufferSize == 0) return 0;
        deref(buffer);
        std::string bytes;
        if (encoding == FMX_ENCODING_UTF8)
            bytes = utf16ToUtf8Limited(part, bufferSize);
        else if (encoding == FMX_ENCODING_NATIVE)
            bytes = utf16ToLatin1(part).substr(0, bufferSize);
        else
            throw CallFailure();
        std::memcpy(buffer, bytes.data(), bytes.size());
        if (bytes.size() < bufferSize) buffer[bytes.size()] = '\0';
        return static_cast<uint32_t>(bytes.size());
    });
}

FMX_API uint32_t FM_Text_Find(const FMX_Text* text, const FMX_Text* what, uint32_t position,
                              FMX_CallRecord* rec) {
    return hostCallOr(rec, FMX_TEXT_NOT_FOUND, [&]() -> uint32_t {
        const auto& s = deref(text).units;
        const auto& w = deref(what).units;
        if (position > s.size()) return FMX_TEXT_NOT_FOUND;
        auto at = s.find(w, position);
        return at == std::u16string::npos ? FMX_TEXT_NOT_FOUND : static_cast<uint32_t>(at);
    });
}

FMX_API void FM_Text_DeleteText(FMX_Text* text, uint32_t position, uint32_t size, FMX_CallRecord* rec) {
    hostCall(rec, [&] {
        auto& s = deref(text).units;
        if (position >= s.size()) return;
        s.erase(position, std::min<size_t>(size, s.size() - position));
    });
}

FMX_API void FM_Text_AppendText(FMX_Text* text, const FMX_Text* other, uint32_t position, uint32_t size,
                                FMX_CallRecord* rec) {
    hostCall(rec, [&] {
        auto& s = deref(text).units;
        // Copy first: other may be the same text.
        std::u16string part(slice(deref(other).units, position, size));
        s += part;
    });
}

FMX_API bool FM_Text_operatorEQ(const FMX_Text* a, const FMX_Text* b, FMX_CallRecord* rec) {
    return hostCall(rec, [&] { return deref(a).units == deref(b).units; });
}
