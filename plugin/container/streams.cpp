#include "container/streams.h"

#include "container/stream_types.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/host_binary.h"
#include "fmapi/args/host_data.h"
#include "fmapi/args/host_exprenv.h"
#include "fmapi/args/host_text.h"
#include "fmapi/args/results.h"
#include "fmapi/args/type_code.h"
#include "util/status_codes.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace vd::container {

namespace {

constexpr const char* kMediaTypeMissing = "The specified media type is not in the container";
constexpr const char* kNoMemoryForImage = "Insufficient memory to copy image data";
constexpr size_t kPictHeaderSize = 512;
constexpr size_t kListLimit = 594;
constexpr size_t kListNameLimit = 200;
constexpr size_t kPeekLimit = 600;

fmapi::OwnedQuadChar QuadOf(uint32_t code) {
    return fmapi::OwnedQuadChar(fmapi::NewQuadChar(static_cast<char>(code >> 24), static_cast<char>(code >> 16),
                                                 static_cast<char>(code >> 8), static_cast<char>(code)));
}

uint32_t TypeAt(const FMX_BinaryData* binary, int32_t index) {
    fmapi::OwnedQuadChar code(fmapi::NewEmptyQuadChar());
    fmapi::BinaryGetType(binary, index, code.get());
    return fmapi::QuadCharGetMacType(code.get());
}

bool IsText(const FMX_Data* parameter) { return ArgType(parameter) == FMX_TYPE_TEXT; }
bool IsContainer(const FMX_Data* parameter) { return ArgType(parameter) == FMX_TYPE_BINARY; }

std::string FileNameOf(const FMX_BinaryData* binary) {
    fmapi::OwnedText name;
    if (fmapi::BinaryGetFNAMData(binary, name.get()) != 0) return {};
    return ArgCText(name.get());
}

// Bytes shown as text one character each, so that any stream can be looked at.
std::u16string BytesAsText(const uint8_t* bytes, size_t n) {
    std::u16string text(n, u'\0');
    for (size_t i = 0; i < n; ++i) text[i] = bytes[i];
    return text;
}

uint32_t BigEndian32(const Bytes& b) { return uint32_t(b[0]) << 24 | uint32_t(b[1]) << 16 | uint32_t(b[2]) << 8 | b[3]; }

}  // namespace

FMX_ErrCode AddTypedStream(FMX_BinaryData* binary, uint32_t type, uint32_t length, const void* bytes) {
    return fmapi::BinaryAdd(binary, QuadOf(type).get(), length, bytes);
}

FMX_ErrCode AddSizeStream(FMX_BinaryData* binary, uint16_t width, uint16_t height) {
    uint32_t size = uint32_t(width) << 16 | height;
    const uint8_t bytes[4] = {uint8_t(size >> 24), uint8_t(size >> 16), uint8_t(size >> 8), uint8_t(size)};
    return AddTypedStream(binary, kSizeStream, 4, bytes);
}

FMX_ErrCode EmptyContainerResult(FMX_Data* result) {
    fmapi::OwnedBinaryData empty(fmapi::NewBinaryData());
    fmapi::BinaryRemoveAll(empty.get());
    return SetResultBinary(result, empty.get());
}

uint32_t ClassifyImageContainer(const FMX_Data* parameter) {
    if (IsText(parameter)) return kReferenceCode;
    if (IsContainer(parameter)) {
        const FMX_BinaryData* binary = fmapi::DataGetBinaryData(parameter);
        int32_t count = fmapi::BinaryGetCount(binary);
        if (count == 0) return kReferenceCode;
        int32_t left = count;
        bool sawJpeg = false;
        uint32_t remembered = 0;
        for (int32_t i = 0; i < count; ++i) {
            uint32_t type = TypeAt(binary, i);
            if (type == kVdImageStream || type == kTiffStream || type == kGifStream || type == kPictStream ||
                type == kJfifStream)
                return type;
            if (type == kJpegStream) {
                --left;
                sawJpeg = true;
            } else if (type == kForkStream || type == kFileNameStream || type == kSizeStream) {
                --left;
            } else {
                remembered = type;
            }
        }
        if (left != 0) return remembered;
        if (sawJpeg) return kJpegStream;
    }
    return 0;
}

std::optional<fmapi::Outcome> ReadStreamIntoMemory(const FMX_Data* parameter, uint32_t type, Bytes& bytes) {
    const FMX_BinaryData* binary = fmapi::DataGetBinaryData(parameter);
    int32_t index = fmapi::BinaryGetIndex(binary, QuadOf(type).get());
    if (index < 0) return fmapi::Outcome::Failure(util::kNotImageOrPath, kMediaTypeMissing);
    uint32_t size = fmapi::BinaryGetSize(binary, index);
    try {
        bytes.assign(size, 0);
    } catch (const std::bad_alloc&) {
        return fmapi::Outcome::Failure(util::kMemoryFull, kNoMemoryForImage);
    }
    if (FMX_ErrCode e = fmapi::BinaryGetData(binary, index, 0, size, bytes.data())) {
        bytes.clear();
        return fmapi::Outcome::Failure(e, "Could not access stream data");
    }
    return std::nullopt;
}

std::optional<fmapi::Outcome> ReadImageData(const FMX_Data* parameter, Bytes& bytes, uint32_t& type) {
    bytes.clear();
    type = ClassifyImageContainer(parameter);
    if (type == 0) return fmapi::Outcome::Failure(util::kNotImageOrPath, kNotImageOrPathMessage);
    if (type == kReferenceCode) return std::nullopt;
    if (auto failure = ReadStreamIntoMemory(parameter, type, bytes)) return failure;
    try {
        if (type == kPictStream) {
            bytes.insert(bytes.begin(), kPictHeaderSize, 0);
        } else if (type == kVdImageStream) {
            if (bytes.size() < 4) {
                bytes.clear();
                return fmapi::Outcome::Failure(util::kCorruptData);  // too short to hold its type
            }
            type = BigEndian32(bytes);
            if (type == kPictStream)
                bytes.insert(bytes.begin() + 4, kPictHeaderSize - 4, 0);  // the picture now starts at 512
            else
                bytes.erase(bytes.begin(), bytes.begin() + 4);
        }
    } catch (const std::bad_alloc&) {
        bytes.clear();
        return fmapi::Outcome::Failure(util::kMemoryFull, kNoMemoryForImage);
    }
    return std::nullopt;
}

std::string ListStreamTypes(const FMX_Data* parameter) {
    if (ArgEmpty(parameter)) return {};
    if (IsText(parameter)) return "utxt";
    const FMX_BinaryData* binary = fmapi::DataGetBinaryData(parameter);
    std::string list;
    int32_t count = fmapi::BinaryGetCount(binary);
    for (int32_t i = 0; i < count; ++i) {
        if (list.size() > kListLimit) break;
        uint32_t type = TypeAt(binary, i);
        if (!list.empty()) list += '|';
        list += FourCCText(type);
        if (type == kFileNameStream) list += "|" + FileNameOf(binary).substr(0, kListNameLimit);
    }
    return list;
}

std::u16string PeekStream(const FMX_Data* parameter, std::string_view typeText) {
    if (ArgEmpty(parameter)) return u"$$$Empty container";
    if (IsText(parameter)) {
        std::u16string text = ArgUtf16(fmapi::DataGetAsText(parameter));
        return u"$$$Text: " + text.substr(0, kPeekLimit);
    }
    auto type = TypeCodeFromText(typeText);
    const FMX_BinaryData* binary = fmapi::DataGetBinaryData(parameter);
    int32_t index = type ? fmapi::BinaryGetIndex(binary, QuadOf(*type).get()) : -1;
    if (index < 0) return u"$$$That stream type is not in the container";
    if (*type == kFileNameStream) {
        fmapi::OwnedText name;
        fmapi::BinaryGetFNAMData(binary, name.get());
        return ArgUtf16(name.get()).substr(0, kPeekLimit);
    }
    uint32_t size = std::min<uint32_t>(fmapi::BinaryGetSize(binary, index), kPeekLimit);
    Bytes bytes(size);
    if (fmapi::BinaryGetData(binary, index, 0, size, bytes.data()) != 0) return u"$$$That stream type is not in the container";
    return BytesAsText(bytes.data(), bytes.size());
}

fmapi::Outcome RemoveStream(const FMX_Data* parameter, std::string_view typeText) {
    auto type = TypeCodeFromText(typeText);
    bool present = type && IsContainer(parameter) &&
                   fmapi::BinaryGetIndex(fmapi::DataGetBinaryData(parameter), QuadOf(*type).get()) >= 0;
    if (!present) return fmapi::Outcome::Failure(util::kNotImageOrPath, kMediaTypeMissing);
    fmapi::OwnedBinaryData copy(fmapi::CopyBinaryData(fmapi::DataGetBinaryData(parameter)));
    fmapi::BinaryRemove(copy.get(), QuadOf(*type).get());
    fmapi::OwnedData result(fmapi::NewData());
    if (FMX_ErrCode e = SetResultBinary(result.get(), copy.get())) return fmapi::Outcome::Failure(e);
    return fmapi::Outcome::Data(std::move(result));
}

}  // namespace vd::container
