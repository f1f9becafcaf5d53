// The file whose tags a function reads or writes, from its argument: a path or reference text
// (resolved as the sound functions resolve theirs), a container stored by reference, or, for
// reading only, a container's embedded picture, stored file or sound, written to a private
// temporary file for the libraries, which read files.
#pragma once

#include "fmapi/outcome.h"
#include "sound/temporary_file.h"

#include <fmx/fmx.h>

#include <optional>
#include <string>

namespace vd::metadata {

struct MetadataSource {
    std::string path;               // the file to read
    sound::TemporaryFile temporary;  // the copy of embedded data, removed with the source
};

// The failure with its message, or none with source filled.
std::optional<fmapi::Outcome> SourceForReading(const FMX_Data* parameter, MetadataSource& source);

// The existing file the argument names; a container with embedded data is refused (-50), since
// tags are written into files.
std::optional<fmapi::Outcome> FileForWriting(const FMX_Data* parameter, std::string& path);

}  // namespace vd::metadata
