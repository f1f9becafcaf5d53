// Small pictures for the cells of a table page, made once per value and kept in memory while the
// server runs, so a page of a thousand records with pictures costs its HTML and the previews the
// browser has not seen yet. A picture that is small already is its own preview; a larger one is
// shrunk by vipsthumbnail (libvips' command-line tool), and where that is missing or fails, the
// picture itself is shown.
#pragma once

#include "stream_kinds.h"

#include <cstdint>
#include <deque>
#include <filesystem>
#include <map>
#include <string>

namespace vdhost::serve {

// Which picture a preview shows: the containerFingerprint of its value. Records holding the same
// picture share one preview; a value stored anew has a new fingerprint and gets its own.
using PreviewKey = std::string;

class PicturePreviews {
public:
    static constexpr int kEdge = 160;                      // the longer side of a made preview, in pixels
    static constexpr size_t kSmallEnough = 24 * 1024;      // pictures up to this size are shown as they are
    static constexpr size_t kKept = 4096;                  // previews kept; the oldest go first
    static constexpr int kSecondsToShrink = 20;            // vipsthumbnail is ended after that long

    // folder: a private folder for the files vipsthumbnail reads and writes.
    explicit PicturePreviews(std::filesystem::path folder) : folder_(std::move(folder)) {}

    // The preview of picture (a browser picture of the value the key names).
    ByteSlice preview(const PreviewKey& key, const ByteSlice& picture);

private:
    std::optional<ByteSlice> shrink(const ByteSlice& picture);

    std::filesystem::path folder_;
    std::map<PreviewKey, ByteSlice> previews_;
    std::deque<PreviewKey> order_;  // oldest first
    unsigned made_ = 0;
};

}  // namespace vdhost::serve
