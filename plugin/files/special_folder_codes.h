// The special-folder codes of the file functions: a period and a letter (".D", ".t/sub/a.aif").
#pragma once

#include <optional>

#include "platform/fs/special_folders.h"

namespace vd::files {

// The folder of a code letter (already upper-cased): A D F O P R S T X. U and V are dialogs and
// have no folder here; every other letter has none either.
std::optional<platform::fs::SpecialFolder> SpecialFolderOfCode(char letter);

}  // namespace vd::files
