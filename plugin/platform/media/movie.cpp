#include "platform/media/movie.h"

#include "platform/media/mac_time.h"

#include <algorithm>

namespace vd::media {

Movie::Movie() : creationTime(MacSecondsNow()), modificationTime(creationTime) {}

Track& Movie::AddTrack(Characteristic characteristic, Media media) {
    tracks_.push_back(std::make_unique<Track>(characteristic, std::move(media)));
    return *tracks_.back();
}

void Movie::RemoveTrack(size_t index) {
    if (index < tracks_.size()) tracks_.erase(tracks_.begin() + std::ptrdiff_t(index));
}

std::vector<Track*> Movie::TracksWith(Characteristic characteristic) {
    std::vector<Track*> found;
    for (auto& t : tracks_)
        if (t->characteristic == characteristic) found.push_back(t.get());
    return found;
}

std::vector<const Track*> Movie::TracksWith(Characteristic characteristic) const {
    std::vector<const Track*> found;
    for (const auto& t : tracks_)
        if (t->characteristic == characteristic) found.push_back(t.get());
    return found;
}

const Track* Movie::FirstSoundTrack() const {
    for (const auto& t : tracks_)
        if (t->characteristic == Characteristic::kAudio) return t.get();
    return nullptr;
}

Track* Movie::FirstSoundTrack() {
    return const_cast<Track*>(static_cast<const Movie&>(*this).FirstSoundTrack());
}

int64_t Movie::Duration() const {
    int64_t longest = 0;
    for (const auto& t : tracks_) longest = std::max(longest, t->Duration(timeScale));
    return longest;
}

Status Movie::FilePath(std::string& path) const {
    if (dataReference.kind == DataReference::Kind::kFile) {
        path = dataReference.path;
        return util::kNoError;
    }
    if (tracks_.empty()) return MediaFailure(util::kInvalidTrack, "the movie has no track");
    for (const auto& run : tracks_.front()->media.Runs()) {
        if (!run.store->FilePath().empty()) {
            path = run.store->FilePath();
            return util::kNoError;
        }
    }
    return MediaFailure(util::kFeatureUnsupported, "the movie lives in memory, not in a file");
}

Status Movie::SourceFormat(FourCharCode& subtype) const {
    if (importerSubtype == 0) return MediaFailure(util::kFeatureUnsupported, "the movie was not imported from a file");
    subtype = importerSubtype;
    return util::kNoError;
}

}  // namespace vd::media
