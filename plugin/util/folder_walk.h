// Builds an absolute path from pieces of a typed path, taking "." and ".." on the text itself rather
// than asking the file system: a target that does not exist yet still has to be placed, and what
// ".." means must not depend on symbolic links on the way (it means what it means in a shell's cd).
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "util/status_codes.h"

namespace vd::util {

class FolderWalk {
public:
    // The floor is an absolute, normalised path below which the walk cannot go. At the floor ".."
    // either stays there, as "/.." is "/" and "C:\.." is "C:\", or fails with -120, as it does for
    // a relative path that climbs above the root.
    enum class AtFloor { Fail, Stay };
    FolderWalk(std::string floor, AtFloor atFloor);

    // Every piece between the separators, in order. Empty pieces ("a//b", a trailing separator) and
    // "." are skipped, ".." leaves the last folder.
    Status Walk(std::string_view text, std::string_view separators);

    std::string Path() const;

private:
    Status Step(std::string_view piece);

    std::string floor_;
    AtFloor atFloor_;
    std::vector<std::string> names_;
};

// The absolute path with its ".", ".." and empty pieces taken out; "/.." is "/".
std::string NormalizeAbsolutePath(std::string_view path);

}  // namespace vd::util
