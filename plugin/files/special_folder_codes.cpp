#include "files/special_folder_codes.h"

namespace vd::files {

std::optional<platform::fs::SpecialFolder> SpecialFolderOfCode(char letter) {
    using platform::fs::SpecialFolder;
    switch (letter) {
        case 'A': return SpecialFolder::Applications;
        case 'D': return SpecialFolder::Desktop;
        case 'F': return SpecialFolder::HostFolder;
        case 'O': return SpecialFolder::Documents;
        case 'P': return SpecialFolder::Preferences;
        case 'R': return SpecialFolder::Root;
        case 'S': return SpecialFolder::System;
        case 'T': return SpecialFolder::TemporaryItems;
        // Missing from the refusal message since the first release; scripts use it all the same.
        case 'X': return SpecialFolder::Trash;
        default: return std::nullopt;
    }
}

}  // namespace vd::files
