// Reading and writing the tags of pictures and sound files through the metadata module of the
// bundle (Resources/metadata.so), loaded on first use; the module's answers become status codes here.
#pragma once

#include "util/status_codes.h"

#include <string>
#include <vector>

namespace vd::platform::metadata {

inline constexpr const char* kMetadataModuleName = "metadata.so";

// One tag as the libraries read it: the report's section and short label, the library's full key,
// the value as interpreted ("1/250 s") and as stored ("1/250").
struct TagEntry {
    std::string family, key, label, interpreted, raw;
};

struct TagAssignment {
    std::string key;
    std::string value;  // empty: remove the tag
};

// Which of each tag's values a read fills in; the other stays empty. The values of a picture's
// tags are printed one by one, so a read asks only for those it answers with.
enum class TagValues { kInterpreted = 1, kRaw = 2, kBoth = 3 };

// The module in the Resources folder of the bundle this code was loaded from.
std::string MetadataModulePath();

// Every tag of the file, in the order the libraries keep them; a file of a kind no library reads
// has none. -2003 with the reason when the module (or Exiv2 and TagLib) cannot be loaded; -43 for no
// file; -108; -2070 when a library fails on the file. detail says why.
util::Status ReadTags(const std::string& path, TagValues values, std::vector<TagEntry>& tags, std::string& detail);

// Sets the tags in the file in place (callers hand in a copy). -50 for a key no tag family has or a
// value the tag cannot take, -2003 for a file whose tags cannot be written, -36 when the library
// could not save, and the codes of ReadTags.
util::Status WriteTags(const std::string& path, const std::vector<TagAssignment>& assignments, std::string& detail);

}  // namespace vd::platform::metadata
