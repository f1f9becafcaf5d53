// A field's value (or a calculation's result) as HTML: text and numbers as text, containers by
// their streams (pictures shown, sounds as a waveform with a player, files as a download), and
// every stream of a container offered for download with its type and size.
#pragma once

#include "plugin_media.h"

#include <string>
#include <utility>
#include <vector>

namespace vdhost::serve {

// Where the value's media are fetched from: the query that names it for the /media/ routes
// ("t" and "f" for a field, "r" for a calculation's result).
using ValueAddress = std::vector<std::pair<std::string, std::string>>;

enum class ViewSize { Cell, Page };

std::string renderValue(const FMX_Data& value, const ValueAddress& address, PluginMedia& media, ViewSize size);

}  // namespace vdhost::serve
