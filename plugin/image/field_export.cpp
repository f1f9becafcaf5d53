#include "image/field_export.h"

#include "container/output_file.h"
#include "container/stream_types.h"
#include "container/streams.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/host_binary.h"
#include "fmapi/args/host_data.h"
#include "image/image_type_code.h"
#include "image/referenced_file.h"
#include "platform/fs/tree_copy.h"
#include "platform/fs/whole_file.h"
#include "util/status_codes.h"

#include <new>
#include <optional>

#include <sys/stat.h>

namespace vd::image {

namespace {

constexpr util::Status kEmptyContainer = 20103;
constexpr const char* kTargetExists = "Target file already exists and replace flag is false";

// What is to be written: the bytes and their type, or the file a reference names.
struct Content {
    container::Bytes bytes;
    uint32_t type = 0;
    std::optional<container::Bytes> resourceFork;
    std::string referencedFile;  // not empty: copy this file instead
};

bool HoldsStreams(const FMX_Data* data) {
    return ArgType(data) == FMX_TYPE_BINARY && fmapi::BinaryGetCount(fmapi::DataGetBinaryData(data)) > 0;
}

std::optional<fmapi::Outcome> ReadContent(const FMX_Data* container, Content& content) {
    if (ArgEmpty(container)) return fmapi::Outcome::Failure(kEmptyContainer, "Empty Container");
    const int32_t type = ArgType(container);
    if (type == FMX_TYPE_TEXT) {
        try {
            const std::string text = ArgCText(fmapi::DataGetAsText(container));
            content.bytes.assign(text.begin(), text.end());
        } catch (const std::bad_alloc&) {
            return fmapi::Outcome::Failure(util::kMemoryFull, "Out of memory");
        }
        content.type = container::FourCC("TEXT");
        return std::nullopt;
    }
    if (type == FMX_TYPE_BINARY && !HoldsStreams(container)) {
        std::string text;
        if (int32_t e = ResolveReferencedFile(container, content.referencedFile, text))
            return fmapi::Outcome::Failure(e, "Source item not found");
        return std::nullopt;
    }
    if (auto failure = container::ReadImageData(container, content.bytes, content.type)) return failure;
    if (content.type == container::kReferenceCode || content.type == 0)
        return fmapi::Outcome::Failure(util::kNotImageOrPath, container::kNotImageOrPathMessage);
    // A container without a resource fork is the usual case, not a failure.
    container::Bytes fork;
    if (auto failure = container::ReadStreamIntoMemory(container, container::kForkStream, fork)) {
        if (failure->Status() != util::kNotImageOrPath) return failure;
    } else {
        content.resourceFork = std::move(fork);
    }
    return std::nullopt;
}

bool IsFolder(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool Exists(const std::string& path) {
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0;
}

const char* MessageFor(platform::fs::WriteStep step, bool replacing) {
    switch (step) {
        case platform::fs::WriteStep::kCreating: return "Could not export file (disk space, permissions)";
        case platform::fs::WriteStep::kWriting: return "Could not write to file (disk space, permissions)";
        case platform::fs::WriteStep::kResourceFork: return "Could not write to resource fork (disk space, permissions)";
        case platform::fs::WriteStep::kReplacing: break;
    }
    return replacing ? "Could not overwrite existing file (busy, locked, permissions)"
                     : "Could not export file (disk space, permissions)";
}

}  // namespace

std::string WithExtensionOfType(const std::string& path, uint32_t type) {
    const std::string name = path.substr(path.rfind('/') + 1);
    // A leading point makes a hidden name, not an extension.
    if (name.find('.', 1) != std::string::npos && !name.empty()) return path;
    const std::string extension = ExtensionOfType(type);
    return extension.empty() ? path : path + "." + extension;
}

fmapi::Outcome ExportField(const FMX_DataVect* args, uint32_t pathIndex, bool replace) {
    Content content;
    if (auto failure = ReadContent(ArgData(args, 0), content)) return std::move(*failure);

    std::string target;
    container::OutputFileStep step;
    if (int32_t e = container::OutputFileFromParameter(args, pathIndex, target, step))
        return fmapi::Outcome::Failure(e, "Bad path or filename");
    if (IsFolder(target)) return fmapi::Outcome::Failure(util::kNotAFile, "Target must specify a file, not a directory");

    if (!content.referencedFile.empty()) {
        if (Exists(target) && !replace) return fmapi::Outcome::Failure(util::kTargetExists, kTargetExists);
        if (util::Status s = platform::fs::CopyItemTree(content.referencedFile, target, replace))
            return fmapi::Outcome::Failure(s, "CopyItem failed");
        return fmapi::Outcome::Text(std::string());
    }

    target = WithExtensionOfType(target, content.type);
    if (IsFolder(target)) return fmapi::Outcome::Failure(util::kNotAFile, "Target must specify a file, not a directory");
    const bool replacing = Exists(target);
    if (replacing && !replace) return fmapi::Outcome::Failure(util::kTargetExists, kTargetExists);

    platform::fs::WholeFile file{content.bytes.data(), content.bytes.size(),
                                 content.resourceFork ? &*content.resourceFork : nullptr};
    platform::fs::WriteStep failed;
    if (util::Status s = platform::fs::WriteWholeFile(target, file, replace, failed)) {
        // Another process made the file between our look and our write.
        if (s == util::kAlreadyExists && !replace) return fmapi::Outcome::Failure(util::kTargetExists, kTargetExists);
        return fmapi::Outcome::Failure(s, MessageFor(failed, replacing));
    }
    return fmapi::Outcome::Text(std::string());
}

}  // namespace vd::image
