// Setting tags of a file in one step: the file is either wholly updated or left as it was.
#pragma once

#include "fmapi/outcome.h"
#include "platform/metadata/metadata_module_loader.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vd::metadata {

using platform::metadata::TagAssignment;

// "key=value" (blanks around the key ignored, the value kept as typed; an empty value removes the
// tag); none for a text without "=" or with an empty key.
std::optional<TagAssignment> ParseAssignment(std::string_view text);

// Updates a copy beside the file, flushes it and renames it over the file; every tag not named
// stays as it was. The failure with its message, or the success.
fmapi::Outcome UpdateTags(const std::string& path, const std::vector<TagAssignment>& assignments);

}  // namespace vd::metadata
