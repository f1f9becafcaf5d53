// The report Vandrel_GetItemInfo answers: four lines for a folder, ten for any other item, each
// ended by a return.
#pragma once

#include <string>

#include "platform/fs/catalog_info.h"

namespace vd::files {

std::string FormatItemReport(const platform::fs::CatalogInfo& info);

// A four-character code as the report prints it: its characters in reading order, up to the first
// NUL (a file without a type shows nothing after "Type: ").
std::string FourCharText(uint32_t code);

}  // namespace vd::files
