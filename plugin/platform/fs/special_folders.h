// The folders a Mac finds by type (applications, desktop, documents, preferences, system, temporary
// items, trash) and where each lives on a Linux desktop.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "util/status_codes.h"

namespace vd::platform::fs {

enum class SpecialFolder {
    Applications,    // /usr/share/applications, where desktop entries of installed programs live
    Desktop,         // the XDG desktop folder
    Documents,       // the XDG documents folder
    Preferences,     // $XDG_CONFIG_HOME, else ~/.config
    Root,            // "/"
    System,          // /etc
    TemporaryItems,  // $TMPDIR/vandrel-<uid>, else /tmp/vandrel-<uid>: private to this user
    Trash,           // $XDG_DATA_HOME/Trash/files, else ~/.local/share/Trash/files
    HostFolder,      // the folder of the running program
};

// The folder's absolute path, made (with its parents) when it is missing. The temporary items
// folder must be a real folder (not a link) owned by us and closed to everyone else; one that is
// not is refused (-54) rather than used.
util::Status FindSpecialFolder(SpecialFolder folder, std::string& path);

// The same path without making anything, for questions about a folder that must not create it.
util::Status LocateSpecialFolder(SpecialFolder folder, std::string& path);

// The user's home folder: $HOME, else the password database's entry.
std::optional<std::string> UserHomeFolder();

// An XDG user folder as ~/.config/user-dirs.dirs names it ("XDG_DESKTOP_DIR=\"$HOME/Desktop\""),
// read from the file's text. Nothing when the file does not name it.
std::optional<std::string> UserDirFromConfig(std::string_view configText, std::string_view key,
                                             const std::string& home);

}  // namespace vd::platform::fs
