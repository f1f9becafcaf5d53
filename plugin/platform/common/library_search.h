// Whether a shared library could be loaded, answered by looking for its file where the dynamic
// linker would look, without loading it: loading FFmpeg and libvips costs ~100 ms of constructors
// and dependencies, far too much for a plug-in that must start in a few milliseconds.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vd::platform {

// LD_LIBRARY_PATH, then the folders of /etc/ld.so.conf (with its includes), then the system
// folders, in the dynamic linker's order; each folder once.
std::vector<std::string> LibrarySearchFolders();

// The first readable file of that name in the folders, or empty.
std::string FindLibrary(std::string_view soname, const std::vector<std::string>& folders);

}  // namespace vd::platform
