#include "recording/recording_target.h"

#include "files/default_folder.h"
#include "files/file_path_resolver.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/host_number.h"
#include "platform/common/posix_status.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace vd::recording {

namespace {

constexpr int32_t kTextType = 1;
constexpr int32_t kNumberType = 2;
constexpr int32_t kContainerType = 6;

int32_t TemporaryTarget(RecordingTarget& target, std::string& message) {
    if (const int32_t s = sound::TemporaryFile::Create(".mov", target.temporary)) {
        message = "Could not get reference to a temporary file.";
        return s;
    }
    target.kind = RecordingTarget::Kind::kTemporary;
    target.path = target.temporary.Path();
    return 0;
}

int32_t FileTarget(const FMX_DataVect* args, RecordingTarget& target, bool& made, std::string& message) {
    const files::ResolvedItem item = files::ResolveFilePath(files::ReadPathArgument(args, 0), files::DefaultFolder());
    if (item.Exists()) {
        std::error_code error;
        if (std::filesystem::is_directory(item.Path(), error)) {
            message = "Recording target must be a file, not directory.";
            return util::kNotAFile;
        }
        target.kind = RecordingTarget::Kind::kFile;
        target.path = item.Path();
        return 0;
    }
    if (item.status == util::kNotAFolder) {
        message = "Parent folder must be a directory.";
        return util::kFolderNotFound;
    }
    if (!item.Located()) {
        message = item.message.empty() ? "Failed to create recording file." : item.message;
        return item.status;
    }
    const std::string path = item.Path();
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd < 0) {
        message = "Failed to create recording file.";
        return platform::StatusFromErrno(errno);
    }
    ::close(fd);
    made = true;
    target.kind = RecordingTarget::Kind::kFile;
    target.path = path;
    return 0;
}

}  // namespace

int32_t ChooseRecordingTarget(const FMX_DataVect* args, RecordingTarget& target, bool& made, std::string& message) {
    made = false;
    const FMX_Data* data = ArgData(args, 0);
    switch (ArgType(data)) {
        case kTextType:
            if (ArgCText(ArgText(args, 0)).empty()) return TemporaryTarget(target, message);
            return FileTarget(args, target, made, message);
        case kNumberType:
            // Any number but 0 records nothing and is no error; databases rely on it as a switch.
            if (fmapi::FixPtAsLong(ArgNumber(args, 0)) == 0) return TemporaryTarget(target, message);
            target.kind = RecordingTarget::Kind::kNowhere;
            return 0;
        case kContainerType:
            message = "QuickTime reference is not a meaningful destination for recording.";
            return util::kBadParameter;
        default:
            message = "Unknown parameter type. Should be Text, Container or Number.";
            return util::kBadParameter;
    }
}

}  // namespace vd::recording
