// The default folder of the file functions: the base of relative paths and where the choose
// dialogs open. It lasts until the plug-in is unloaded, and starts as the user's home folder.
#pragma once

#include <string>

namespace vd::files {

// The folder set last, or the home folder as it is now when none was set ("/" without one).
std::string DefaultFolder();

void SetDefaultFolder(std::string absolutePath);

}  // namespace vd::files
