#include "metadata/tag_update.h"

#include "platform/metadata/sibling_copy.h"
#include "util/blank_trim.h"
#include "util/status_codes.h"

namespace vd::metadata {

namespace {

std::string WithDetail(const std::string& message, const std::string& detail) {
    return detail.empty() ? message : message + " (" + detail + ")";
}

}  // namespace

std::optional<TagAssignment> ParseAssignment(std::string_view text) {
    const size_t equals = text.find('=');
    if (equals == std::string_view::npos) return std::nullopt;
    const std::string_view key = util::TrimBlanks(text.substr(0, equals));
    if (key.empty()) return std::nullopt;
    return TagAssignment{std::string(key), std::string(text.substr(equals + 1))};
}

fmapi::Outcome UpdateTags(const std::string& path, const std::vector<TagAssignment>& assignments) {
    platform::metadata::SiblingCopy copy;
    if (util::Status s = copy.Make(path))
        return fmapi::Outcome::Failure(s, "Could not make the copy beside the file that is updated in its place.");
    std::string detail;
    if (util::Status s = platform::metadata::WriteTags(copy.Path(), assignments, detail))
        return fmapi::Outcome::Failure(s, WithDetail("Could not set the tags.", detail));
    if (util::Status s = copy.Commit())
        return fmapi::Outcome::Failure(s, "Could not put the updated file in place of the old one.");
    return fmapi::Outcome::Failure(util::kNoError);
}

}  // namespace vd::metadata
