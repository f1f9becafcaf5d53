#include "container/movie_parameter.h"

#include "container/database_location.h"
#include "container/sound_resource_movie.h"
#include "container/stream_types.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/host_binary.h"
#include "fmapi/args/host_data.h"
#include "fmapi/args/host_exprenv.h"
#include "platform/media/movie_from_file.h"
#include "platform/media/reference_movie_layout.h"
#include "platform/media/reference_movie_reader.h"
#include "util/status_codes.h"

#include <climits>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include <sys/stat.h>

namespace vd::container {

namespace {


// A reference text or path opened as a movie; only its first kReferenceTextLimit bytes are read.
// A text longer than the system allows any path to be is a bad name: cut, it would name another
// file, and "not found" would send the user looking for one that cannot exist.
int32_t OpenReference(std::string_view text, media::Movie& movie, const media::OpenOptions& options) {
    if (text.size() >= PATH_MAX) return util::kBadName;
    util::FileLocation location;
    if (int32_t e = ResolveAgainstDatabase(text.substr(0, kReferenceTextLimit), location)) return e;
    return media::MovieFromFile(util::FullPath(location), movie, options);
}

bool IsExistingFile(std::string_view line, std::string& path) {
    util::FileLocation location;
    if (ResolveAgainstDatabase(line, location) != 0 || !location.leafName.empty()) return false;
    path = util::FullPath(location);
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

// The lines of a by-reference container ("size:w,h", a relative and an absolute reference) tried
// in order until one names a file.
int32_t OpenStoredReference(const FMX_Data* parameter, media::Movie& movie, const media::OpenOptions& options) {
    const std::string text = ArgCText(fmapi::DataGetAsText(parameter));
    for (std::string_view line : StoredReferenceLines(text)) {
        std::string path;
        if (IsExistingFile(line, path)) return media::MovieFromFile(path, movie, options);
    }
    return util::kFileNotFound;
}

int32_t OpenSoundStream(const FMX_BinaryData* binary, media::Movie& movie) {
    fmapi::OwnedQuadChar type(fmapi::NewQuadChar('s', 'n', 'd', ' '));
    const int32_t index = fmapi::BinaryGetIndex(binary, type.get());
    if (index < 0) return util::kNoSoundStream;
    std::vector<uint8_t> bytes;
    try {
        bytes.resize(fmapi::BinaryGetSize(binary, index));
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    if (!bytes.empty())
        if (FMX_ErrCode e = fmapi::BinaryGetData(binary, index, 0, uint32_t(bytes.size()), bytes.data())) return e;
    return MovieFromSoundResource(bytes, movie);
}

// The movie a reference movie stands for: its sound track's alias, unless that names the movie
// itself. Any other movie stays as it is.
int32_t FollowReferenceMovie(media::Movie& movie, const media::OpenOptions& options) {
    if (movie.dataReference.kind != media::DataReference::Kind::kFile) return 0;
    const auto texts = movie.TracksWith(media::Characteristic::kText);
    if (texts.empty() || texts.front()->media.FirstTextSample() != media::NoPreviewSample()) return 0;
    std::string referred;
    if (int32_t e = media::ReferredSoundFile(movie.dataReference.path, referred)) return e;
    if (referred.empty()) return 0;
    media::Movie opened;
    if (int32_t e = media::MovieFromFile(referred, opened, options)) return e;
    movie = std::move(opened);
    return 0;
}

}  // namespace

int32_t MovieFromParameter(const FMX_DataVect* args, uint32_t index, media::Movie& movie, bool& found,
                           const media::OpenOptions& options) {
    found = false;
    if (index >= ArgCount(args)) return util::kBadParameter;
    const FMX_Data* parameter = ArgData(args, index);
    if (ArgEmpty(parameter)) return 0;
    int32_t e = 0;
    media::Movie opened;
    switch (ArgType(parameter)) {
        case FMX_TYPE_TEXT: e = OpenReference(ArgCText(fmapi::DataGetAsText(parameter)), opened, options); break;
        case FMX_TYPE_BINARY: {
            const FMX_BinaryData* binary = fmapi::DataGetBinaryData(parameter);
            e = fmapi::BinaryGetCount(binary) > 0 ? OpenSoundStream(binary, opened) : OpenStoredReference(parameter, opened, options);
            break;
        }
        default: return 0;
    }
    if (e) return e;
    if (options.followReferenceMovies)
        if (int32_t f = FollowReferenceMovie(opened, options)) return f;
    movie = std::move(opened);
    found = true;
    return 0;
}

}  // namespace vd::container
