#include "platform/media/reference_movie_reader.h"

#include "platform/media/alias_record.h"
#include "platform/media/four_char_code.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <optional>
#include <span>
#include <vector>

namespace vd::media {

namespace {

// A movie atom larger than this is not a reference movie we wrote (ours are a few kilobytes per
// minute of sound); it is not read whole.
constexpr uint64_t kLargestMovieAtom = uint64_t(64) << 20;
constexpr uint32_t kTrackEnabled = 1, kSelfReference = 1;

uint32_t Be32(const uint8_t* p) { return uint32_t(p[0]) << 24 | uint32_t(p[1]) << 16 | uint32_t(p[2]) << 8 | p[3]; }

struct Atom {
    FourCharCode type;
    std::span<const uint8_t> body;
};

// The atoms directly inside bytes; a damaged size ends the list.
std::vector<Atom> Children(std::span<const uint8_t> bytes) {
    std::vector<Atom> atoms;
    size_t at = 0;
    while (at + 8 <= bytes.size()) {
        uint64_t size = Be32(&bytes[at]);
        size_t header = 8;
        if (size == 1) {
            if (at + 16 > bytes.size()) break;
            size = uint64_t(Be32(&bytes[at + 8])) << 32 | Be32(&bytes[at + 12]);
            header = 16;
        } else if (size == 0) {
            size = bytes.size() - at;
        }
        if (size < header || size > bytes.size() - at) break;
        atoms.push_back({Be32(&bytes[at + 4]), bytes.subspan(at + header, size_t(size) - header)});
        at += size_t(size);
    }
    return atoms;
}

std::optional<Atom> Child(std::span<const uint8_t> bytes, const char (&type)[5]) {
    for (const Atom& atom : Children(bytes))
        if (atom.type == FourCC(type)) return atom;
    return std::nullopt;
}

// The movie atom of the file, read whole.
Status ReadMovieAtom(const std::string& path, std::vector<uint8_t>& moov) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return StatusFromErrno(errno ? errno : ENOENT, MediaStep::kOpening);
    for (;;) {
        uint8_t header[16];
        if (!in.read(reinterpret_cast<char*>(header), 8)) break;
        uint64_t size = Be32(header);
        uint64_t headerSize = 8;
        if (size == 1) {
            if (!in.read(reinterpret_cast<char*>(header + 8), 8)) break;
            size = uint64_t(Be32(header + 8)) << 32 | Be32(header + 12);
            headerSize = 16;
        }
        if (size == 0 || size < headerSize) break;
        if (Be32(header + 4) == FourCC("moov")) {
            if (size - headerSize > kLargestMovieAtom) break;
            moov.resize(size_t(size - headerSize));
            if (!in.read(reinterpret_cast<char*>(moov.data()), std::streamsize(moov.size()))) break;
            return util::kNoError;
        }
        in.seekg(std::streamoff(size - headerSize), std::ios::cur);
        if (!in) break;
    }
    return MediaFailure(util::kMovieNotFound, path + " has no movie atom we can read");
}

bool IsEnabledSoundTrack(std::span<const uint8_t> trak, std::span<const uint8_t>& mediaInformation) {
    const auto header = Child(trak, "tkhd");
    const auto media = Child(trak, "mdia");
    if (!header || header->body.size() < 4 || !media) return false;
    if (!(Be32(header->body.data()) & kTrackEnabled)) return false;
    const auto handler = Child(media->body, "hdlr");
    if (!handler || handler->body.size() < 12 || Be32(handler->body.data() + 8) != FourCC("soun")) return false;
    const auto information = Child(media->body, "minf");
    mediaInformation = information ? information->body : std::span<const uint8_t>{};
    return true;
}

}  // namespace

Status ReferredSoundFile(const std::string& moviePath, std::string& referred) {
    referred.clear();
    std::vector<uint8_t> moov;
    if (Status s = ReadMovieAtom(moviePath, moov)) return s;
    std::optional<std::span<const uint8_t>> sound;
    for (const Atom& atom : Children(moov)) {
        std::span<const uint8_t> information;
        if (atom.type == FourCC("trak") && IsEnabledSoundTrack(atom.body, information)) {
            sound = information;
            break;
        }
    }
    if (!sound) return MediaFailure(util::kInvalidTrack, moviePath + " has no enabled sound track");
    const auto dinf = Child(*sound, "dinf");
    const auto dref = dinf ? Child(dinf->body, "dref") : std::nullopt;
    if (!dref || dref->body.size() < 8) return MediaFailure(util::kInvalidMedia, moviePath + ": its sound has no data reference");
    for (const Atom& entry : Children(dref->body.subspan(8))) {
        if (entry.type != FourCC("alis") || entry.body.size() < 4) continue;
        if (Be32(entry.body.data()) & kSelfReference) return util::kNoError;
        const std::optional<AliasTarget> target = ParseAliasRecord(entry.body.data() + 4, entry.body.size() - 4);
        if (!target) return MediaFailure(util::kInvalidMedia, moviePath + ": its sound's alias names no file");
        const std::string folder = std::filesystem::path(moviePath).parent_path().string();
        const std::optional<std::string> file = ResolveAliasTarget(*target, folder);
        if (!file) return MediaFailure(util::kFileNotFound, moviePath + ": " + target->absolutePath + " is gone");
        referred = *file;
        return util::kNoError;
    }
    return MediaFailure(util::kInvalidMedia, moviePath + ": its sound has no alias data reference");
}

}  // namespace vd::media
