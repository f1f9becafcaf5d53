// The alias record a QuickTime data reference of kind 'alis' carries: where the referred file is,
// as a full path and as levels up from the referring movie's folder and down to the file, so that
// a movie moved together with its file still finds it. We write the classic record's fixed part
// (the names, the levels) and the full POSIX path as an extra field; readers that know only the
// classic fields (FFmpeg's mov demuxer among them) find what they use there.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vd::media {

// The record for target (absolute) as seen from a movie in aliasFolder (absolute).
std::vector<uint8_t> BuildAliasRecord(const std::string& target, const std::string& aliasFolder);

struct AliasTarget {
    std::string absolutePath;  // as it was when the record was made
    uint16_t levelsFrom = 0;   // folders up from the referring movie's folder, plus one
    uint16_t levelsTo = 0;     // path components down from there to the file, the file included
};

// What a record says; nothing for one too short or without a path.
std::optional<AliasTarget> ParseAliasRecord(const uint8_t* bytes, size_t size);

// The file a record names for a movie in movieFolder: found by its levels when a file is there,
// else at its absolute path when one is there; nothing when neither exists.
std::optional<std::string> ResolveAliasTarget(const AliasTarget& target, const std::string& movieFolder);

}  // namespace vd::media
