// Base64Encode and Base64Decode, for texts (as UTF-8) and for files in containers.
#include "api/fnam.h"
#include "api/text_codec.h"
#include "base64.h"
#include "builtin_function.h"
#include "calc_error.h"
#include "function_arguments.h"

namespace vdhost::calc {

namespace {

using Args = std::span<const FMX_Data>;

constexpr uint32_t kFileType = 0x46494C45;  // 'FILE'
constexpr uint32_t kSizeType = 0x53495A45;  // 'SIZE'

// The stream that holds a container's file: "FILE" when there is one, otherwise the first stream
// that is not about the file (its name or its image size).
const Stream* fileStream(const FMX_BinaryData& binary) {
    if (int32_t index = binary.indexOf(kFileType); index >= 0) return &binary.streams[static_cast<size_t>(index)];
    for (const Stream& s : binary.streams)
        if (s.type != kFnamType && s.type != kSizeType) return &s;
    return nullptr;
}

FMX_Data base64EncodeFunction(Args a, SourcePosition) {
    if (isContainer(a[0])) {
        const Stream* stream = fileStream(a[0].binary);
        if (!stream || !stream->bytes) return makeText({});
        return makeTextUtf8(base64Encode(stream->bytes->data(), stream->bytes->size()));
    }
    std::string utf8 = utf8Of(a[0]);
    return makeTextUtf8(base64Encode(reinterpret_cast<const uint8_t*>(utf8.data()), utf8.size()));
}

// Base64Decode ( text ) is the decoded UTF-8 as text; Base64Decode ( text ; fileName ) a container
// holding the decoded bytes as a file of that name.
FMX_Data base64DecodeFunction(Args a, SourcePosition where) {
    auto bytes = base64Decode(textArgument(a[0]));
    if (!bytes) throw CalcError(CalcError::Kind::Evaluation, where, "Base64Decode was given text that is not valid base64");
    if (a.size() == 1)
        return makeText(utf8ToUtf16(std::string_view(reinterpret_cast<const char*>(bytes->data()), bytes->size())));

    std::u16string fileName(textArgument(a[1]));
    FMX_BinaryData binary;
    binary.streams.push_back(Stream{kFileType, StreamBytes::copyOf(bytes->data(), bytes->size())});
    // A file without a name is still a file; it just has no "FNAM" stream.
    if (!fileName.empty()) binary.streams.push_back(Stream{kFnamType, std::make_shared<const StreamBytes>(encodeFnam(fileName))});
    // An embedded file shows as its name, as a container shows in a layout.
    return makeContainer(std::move(binary), std::move(fileName));
}

constexpr BuiltinFunction kFunctions[] = {
    {u"Base64Encode", 1, 1, base64EncodeFunction},
    {u"Base64Decode", 1, 2, base64DecodeFunction},
};

}  // namespace

std::span<const BuiltinFunction> base64Functions() { return kFunctions; }

}  // namespace vdhost::calc
