// The file a container parameter names: a path or reference text, or a container stored by
// reference whose lines are tried in order. Relative names are taken from the database's folder.
#pragma once

#include <fmx/fmx.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace vd::image {

// 0 with the absolute path of an existing file. util::kContainerData for a container that holds
// streams (embedded data, no file at all); -1302 for a folder; the resolution's code otherwise.
// text is the parameter's text either way, for callers that go on to try it as a web address.
int32_t ResolveReferencedFile(const FMX_Data* parameter, std::string& path, std::string& text);

// "http://" or "https://" at the very start.
bool IsWebAddress(std::string_view text);

}  // namespace vd::image
