#include "metadata/metadata_source.h"

#include "container/database_location.h"
#include "container/stored_reference.h"
#include "container/stream_types.h"
#include "container/streams.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/host_binary.h"
#include "fmapi/args/host_data.h"
#include "fmapi/args/host_exprenv.h"
#include "fmapi/args/host_text.h"
#include "platform/common/posix_status.h"
#include "platform/common/unique_fd.h"
#include "util/file_location.h"
#include "util/status_codes.h"

#include <cerrno>
#include <climits>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>

namespace vd::metadata {

namespace {

constexpr const char* kEmptyMessage = "The container in argument #1 seems to be empty.";
constexpr const char* kNoFileMessage = "Could not find the file named by argument #1.";

// A reference text or path as the sound functions read theirs: relative to the database's folder.
util::Status ResolveReference(std::string_view text, std::string& path) {
    if (text.size() >= PATH_MAX) return util::kBadName;
    util::FileLocation location;
    if (int e = container::ResolveAgainstDatabase(text.substr(0, container::kReferenceTextLimit), location))
        return util::Status(e);
    if (!location.leafName.empty()) return util::kFileNotFound;
    path = util::FullPath(location);
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) return platform::StatusFromErrno(errno);
    return S_ISDIR(info.st_mode) ? util::kNotAFile : util::kNoError;
}

// A text argument, or the lines of a container stored by reference tried in order.
std::optional<fmapi::Outcome> ReferencedFile(const FMX_Data* parameter, std::string& path) {
    const std::string text = ArgCText(fmapi::DataGetAsText(parameter));
    util::Status status = util::kFileNotFound;
    if (ArgType(parameter) != FMX_TYPE_BINARY) {
        status = ResolveReference(text, path);
    } else {
        for (std::string_view line : container::StoredReferenceLines(text))
            if ((status = ResolveReference(line, path)) == util::kNoError) break;
    }
    if (status != util::kNoError) return fmapi::Outcome::Failure(status, kNoFileMessage);
    return std::nullopt;
}

bool HasStream(const FMX_BinaryData* binary, uint32_t type) {
    fmapi::OwnedQuadChar code(fmapi::NewEmptyQuadChar());
    fmapi::QuadCharSetMacType(code.get(), type);
    return fmapi::BinaryGetIndex(binary, code.get()) >= 0;
}

// ".mp3" of a stored file named "song.mp3": TagLib tells some kinds of file by their extension.
std::string ExtensionOfStoredFile(const FMX_BinaryData* binary) {
    fmapi::OwnedText name;
    if (fmapi::BinaryGetFNAMData(binary, name.get()) != 0) return {};
    const std::string text = ArgCText(name.get());
    const size_t dot = text.rfind('.');
    if (dot == std::string::npos || text.size() - dot > 8 || text.find('/', dot) != std::string::npos) return {};
    return text.substr(dot);
}

std::optional<fmapi::Outcome> WriteTemporary(const container::Bytes& bytes, const std::string& extension,
                                             MetadataSource& source) {
    if (media::Status s = sound::TemporaryFile::Create(extension, source.temporary))
        return fmapi::Outcome::Failure(s, "Could not make a temporary file for the container's data.");
    platform::UniqueFd fd(::open(source.temporary.Path().c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
    bool written = fd.Valid();
    for (size_t done = 0; written && done < bytes.size();) {
        const ssize_t put = ::write(fd.Get(), bytes.data() + done, bytes.size() - done);
        if (put < 0 && errno == EINTR) continue;
        written = put > 0;
        if (written) done += size_t(put);
    }
    if (!written || fd.Close() != 0)
        return fmapi::Outcome::Failure(platform::StatusFromErrno(errno), "Could not write the container's data to a temporary file.");
    source.path = source.temporary.Path();
    return std::nullopt;
}

std::optional<fmapi::Outcome> EmbeddedData(const FMX_Data* parameter, MetadataSource& source) {
    const FMX_BinaryData* binary = fmapi::DataGetBinaryData(parameter);
    container::Bytes bytes;
    if (HasStream(binary, container::kFileStream)) {
        if (auto failure = container::ReadStreamIntoMemory(parameter, container::kFileStream, bytes)) return failure;
        return WriteTemporary(bytes, ExtensionOfStoredFile(binary), source);
    }
    if (HasStream(binary, container::kSoundStream)) {
        if (auto failure = container::ReadStreamIntoMemory(parameter, container::kSoundStream, bytes)) return failure;
        return WriteTemporary(bytes, ".snd", source);
    }
    uint32_t type = 0;
    if (auto failure = container::ReadImageData(parameter, bytes, type)) return failure;
    return WriteTemporary(bytes, ".img", source);
}

}  // namespace

std::optional<fmapi::Outcome> SourceForReading(const FMX_Data* parameter, MetadataSource& source) {
    if (ArgEmpty(parameter)) return fmapi::Outcome::Failure(util::kBadParameter, kEmptyMessage);
    const int32_t type = ArgType(parameter);
    if (type == FMX_TYPE_BINARY && fmapi::BinaryGetCount(fmapi::DataGetBinaryData(parameter)) > 0)
        return EmbeddedData(parameter, source);
    if (type != FMX_TYPE_TEXT && type != FMX_TYPE_BINARY)
        return fmapi::Outcome::Failure(util::kBadParameter, "Argument #1 must be a container or a path.");
    return ReferencedFile(parameter, source.path);
}

std::optional<fmapi::Outcome> FileForWriting(const FMX_Data* parameter, std::string& path) {
    if (ArgEmpty(parameter)) return fmapi::Outcome::Failure(util::kBadParameter, kEmptyMessage);
    const int32_t type = ArgType(parameter);
    if (type == FMX_TYPE_BINARY && fmapi::BinaryGetCount(fmapi::DataGetBinaryData(parameter)) > 0)
        return fmapi::Outcome::Failure(util::kBadParameter,
                                       "Tags are written into files: argument #1 must be a path or a reference.");
    if (type != FMX_TYPE_TEXT && type != FMX_TYPE_BINARY)
        return fmapi::Outcome::Failure(util::kBadParameter, "Argument #1 must be a path or a reference.");
    return ReferencedFile(parameter, path);
}

}  // namespace vd::metadata
