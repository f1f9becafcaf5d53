#include "metadata/functions/metadata_functions.h"

#include "fmapi/args/arguments.h"
#include "metadata/metadata_source.h"
#include "metadata/tag_update.h"
#include "util/status_codes.h"

namespace vd::metadata {

fmapi::Outcome SetMetadataFunction(const FunctionCall& call) {
    const uint16_t count = ArgCount(call.args);
    if (count < 2) return fmapi::Outcome::Failure(util::kBadParameter, "This function requires 2 or more parameters.");
    std::string path;
    if (auto failure = FileForWriting(ArgData(call.args, 0), path)) return std::move(*failure);
    std::vector<TagAssignment> assignments;
    for (uint16_t i = 1; i < count; ++i) {
        std::optional<TagAssignment> assignment = ParseAssignment(ArgCText(ArgText(call.args, i)));
        if (!assignment)
            return fmapi::Outcome::Failure(util::kBadParameter,
                                           "Argument #" + std::to_string(i + 1) + " is not \"key=value\".");
        assignments.push_back(std::move(*assignment));
    }
    return UpdateTags(path, assignments);
}

}  // namespace vd::metadata
