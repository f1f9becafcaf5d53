#include "image/file_insertion.h"

#include "container/reference_result.h"
#include "container/stream_types.h"
#include "container/streams.h"
#include "fmapi/args/host_text.h"
#include "fmapi/args/results.h"
#include "fmapi/args/text_conversion.h"
#include "fmapi/host_identity.h"
#include "image/referenced_file.h"
#include "platform/fs/whole_file.h"
#include "platform/graphics/web_fetch.h"
#include "util/blank_trim.h"
#include "util/reference_prefix.h"
#include "util/status_codes.h"

#include <algorithm>
#include <optional>
#include <string>

namespace vd::image {

namespace {

// A container stream holds at most this much here; larger files are refused before they are read.
constexpr uint64_t kLargestInsertedFile = uint64_t(1) << 30;

struct Source {
    std::string path;        // a file
    std::string webAddress;  // or a web address
};

std::u16string TextOfBytes(const container::Bytes& bytes) {
    const std::string_view view(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (std::optional<std::u16string> utf16 = Utf8ToUtf16(view)) return std::move(*utf16);
    // Not UTF-8: every byte is the character of the same number, so nothing is lost.
    return std::u16string(bytes.begin(), bytes.end());
}

util::Status ReadSource(const Source& source, container::Bytes& bytes) {
    if (!source.path.empty()) return platform::fs::ReadWholeFile(source.path, bytes, kLargestInsertedFile);
    std::string detail;
    platform::WebLimits limits = platform::WebLimitsFromEnvironment();
    limits.maxBytes = std::min<uint64_t>(limits.maxBytes, kLargestInsertedFile);
    return platform::FetchUrl(source.webAddress, limits, bytes, detail);
}

fmapi::Outcome FileContainer(const Source& source, const container::Bytes& bytes) {
    fmapi::OwnedBinaryData binary(fmapi::NewBinaryData());
    if (FMX_ErrCode e = container::AddTypedStream(binary.get(), container::kFileStream, uint32_t(bytes.size()), bytes.data()))
        return fmapi::Outcome::Failure(e);
    if (fmapi::HostKeepsFileNames()) {
        std::string name;
        if (source.path.empty()) {
            name = source.webAddress;
        } else {
            util::AppendPlatformPrefix(name, "file");
            name += source.path;
        }
        fmapi::OwnedText text;
        TextFromC(text.get(), name.c_str(), FMX_ENCODING_UTF8);
        if (FMX_ErrCode e = fmapi::BinaryAddFNAMData(binary.get(), text.get())) return fmapi::Outcome::Failure(e);
    }
    fmapi::OwnedData result(fmapi::NewData());
    if (FMX_ErrCode e = SetResultBinary(result.get(), binary.get())) return fmapi::Outcome::Failure(e);
    return fmapi::Outcome::Data(std::move(result));
}

}  // namespace

fmapi::Outcome InsertFile(const FMX_Data* parameter, bool byReference, bool asText) {
    Source source;
    std::string text;
    if (const int32_t resolved = ResolveReferencedFile(parameter, source.path, text); resolved != 0) {
        source.path.clear();
        const std::string_view trimmed = util::TrimBlanks(text);
        if (resolved == util::kContainerData || !IsWebAddress(trimmed))
            return fmapi::Outcome::Failure(resolved, "Could not find referenced file");
        source.webAddress = std::string(trimmed);
    }

    if (byReference) {
        if (source.path.empty()) return fmapi::Outcome::Failure(util::kNoError, "Source must be a file to import by reference");
        std::string reference;
        if (int32_t e = container::ReferenceText(source.path, "file", 0, 0, reference))
            return fmapi::Outcome::Failure(e, "Could not get database file path.");
        return fmapi::Outcome::Text(std::move(reference));
    }

    container::Bytes bytes;
    if (util::Status s = ReadSource(source, bytes)) return fmapi::Outcome::Failure(s, "Error reading target data");
    if (asText) return fmapi::Outcome::Text(TextOfBytes(bytes));
    return FileContainer(source, bytes);
}

}  // namespace vd::image
