#include "metadata/functions/metadata_functions.h"

#include "fmapi/args/arguments.h"
#include "metadata/metadata_source.h"
#include "metadata/tag_report.h"
#include "util/status_codes.h"

namespace vd::metadata {

namespace {

// The platform's "user data item was not found": a tag the file does not hold.

}  // namespace

fmapi::Outcome GetMetadataFunction(const FunctionCall& call) {
    const uint16_t count = ArgCount(call.args);
    if (count < 1) return fmapi::Outcome::Failure(util::kBadParameter, "This function requires 1 to 3 parameters.");
    MetadataSource source;
    if (auto failure = SourceForReading(ArgData(call.args, 0), source)) return std::move(*failure);
    const std::string tag = count > 1 ? ArgCText(ArgText(call.args, 1)) : std::string();
    const std::optional<ValueForm> form = ValueFormOf(count > 2 ? ArgCText(ArgText(call.args, 2)) : std::string());
    if (!form) return fmapi::Outcome::Failure(util::kBadParameter, "The format must be \"interpreted\" or \"raw\".");

    const auto values = *form == ValueForm::kRaw ? platform::metadata::TagValues::kRaw
                                                 : platform::metadata::TagValues::kInterpreted;
    std::vector<TagEntry> tags;
    std::string detail;
    if (util::Status s = platform::metadata::ReadTags(source.path, values, tags, detail))
        return fmapi::Outcome::Failure(s, "Could not read the tags." + (detail.empty() ? "" : " " + detail));
    if (tag.empty()) return fmapi::Outcome::Text(MetadataReport(tags, *form));
    if (std::optional<std::string> value = FindTag(tags, tag, *form)) return fmapi::Outcome::Text(std::move(*value));
    return fmapi::Outcome::Failure(util::kTagNotFound, "The tag \"" + tag + "\" is not in this file.");
}

}  // namespace vd::metadata
