#include "container/movie_insertion.h"

#include "container/workaround_switches.h"
#include "platform/common/posix_status.h"
#include "platform/common/tick_count.h"
#include "platform/fs/remote_volume.h"
#include "platform/fs/special_folders.h"
#include "platform/fs/tree_copy.h"
#include "platform/graphics/image_file_probe.h"
#include "platform/media/media_probe.h"
#include "platform/media/reference_movie_writer.h"
#include "platform/ui/dialog_service.h"
#include "util/status_codes.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include <time.h>
#include <unistd.h>

namespace vd::container {

namespace {

constexpr uint16_t kStillToWarn = 0x8000;
constexpr uint32_t kGiveUpTicks = 5 * 60;

uint16_t Clamped(int32_t v) { return uint16_t(std::clamp<int32_t>(v, 0, 0xFFFF)); }

// A copy in the private temporary folder named "temp-<ticks>" and the file's extension; it stays
// there, since the reference points at it.
int32_t CopyToTemporaryFolder(const std::string& file, std::string& copy) {
    std::string folder;
    if (util::Status s = platform::fs::FindSpecialFolder(platform::fs::SpecialFolder::TemporaryItems, folder)) return s;
    const std::string extension = std::filesystem::path(file).extension().string();
    const uint32_t first = sound::TickCount();
    for (;;) {
        const uint32_t ticks = sound::TickCount();
        const std::string candidate = folder + "/temp-" + std::to_string(ticks) + extension;
        const util::Status s = platform::fs::CopyItemTree(file, candidate, false);
        if (s == 0) {
            copy = candidate;
            return 0;
        }
        if (s != util::kAlreadyExists || ticks - first > kGiveUpTicks) return s;
        timespec pause{0, 5000000};
        nanosleep(&pause, nullptr);
    }
}

int32_t PrepareMovie(const std::string& file, InsertedMedia& media, InsertionStep& step) {
    step = InsertionStep::kUnderstanding;
    media::MediaProbe probe;
    if (media::ProbeMediaFile(file, probe) != 0) return util::kNoCodec;
    const bool linkMedia = WorkaroundValue(gLinkMediaWorkaround);

    std::string path = file;
    if (WorkaroundValue(gRemoteFileWorkaround) && platform::fs::IsOnRemoteVolume(file)) {
        if (gRemoteFileWorkaround & kStillToWarn) {
            platform::ui::ShowNotice(kWorkaroundAlertTitle, kWorkaroundAlertText);
            gRemoteFileWorkaround &= uint16_t(~kStillToWarn);
        }
        step = InsertionStep::kTemporaryCopy;
        if (int32_t e = CopyToTemporaryFolder(file, path)) return e;
    }
    if (linkMedia && !probe.hasVisual) {
        step = InsertionStep::kLinking;
        const std::string movie = ReferenceMovieName(path);
        if (int32_t e = media::WriteReferenceMovie(path, movie)) return e;
        path = movie;
    }
    media.path = path;
    media.width = media.height = 0;
    return 0;
}

}  // namespace

std::string ReferenceMovieName(const std::string& file) {
    const std::filesystem::path path(file);
    const std::string name = path.filename().string();
    const size_t dot = name.rfind('.');
    return (path.parent_path() / ((dot == std::string::npos ? name : name.substr(0, dot)) + "_ref.mov")).string();
}

int32_t PrepareInsertion(const std::string& file, InsertedMedia& media, InsertionStep& step) {
    step = InsertionStep::kAlias;
    if (::access(file.c_str(), R_OK) != 0) return platform::StatusFromErrno(errno);

    step = InsertionStep::kUnderstanding;
    // Only a header that loads makes an image: the image library's loaders recognise some sound
    // files by their first bytes too (a WAV, an MPEG-4 sound), and then fail to load them.
    int32_t width = 0, height = 0;
    if (platform::ImageFileSize(file, width, height) == 0) {
        media.path = file;
        media.width = Clamped(width);
        media.height = Clamped(height);
        return 0;
    }
    return PrepareMovie(file, media, step);
}

}  // namespace vd::container
