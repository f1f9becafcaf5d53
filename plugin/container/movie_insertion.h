// What Vandrel_InsertQuickTime does with the file once it is chosen: an image is referred to with
// its size; a movie or sound may first be copied off a remote volume (the media layer reads those
// badly) and, when it has no picture, gets a reference movie beside it so that the field shows a
// placeholder instead of nothing. The reference text is then made for whichever file it ends with.
#pragma once

#include <cstdint>
#include <string>

namespace vd::container {

inline constexpr const char* kWorkaroundAlertTitle = "Workaround being used!";
// The function name at its end has always been spelt so; users search the documentation for it.
inline constexpr const char* kWorkaroundAlertText =
    "Vandrel's Vandrel_InsertQuickTime is about to use a workaround for a bug in QuickTime while accessing "
    "remote media. This workaround may cause the FileMaker script to fail. Please see the documentation for "
    "Vandel_InsertQuickTime for complete information.";

enum class InsertionStep { kAlias, kUnderstanding, kTemporaryCopy, kLinking };

struct InsertedMedia {
    std::string path;  // the file the reference names: the one given, its local copy, or its reference movie
    uint16_t width = 0;
    uint16_t height = 0;
};

// The name of the reference movie of a file: the name up to its last "." (all of it without one)
// and "_ref.mov", in the same folder.
std::string ReferenceMovieName(const std::string& file);

// file is absolute and exists. 0 with media; else the code, and step says which step failed:
// kAlias (the file cannot be read), kUnderstanding (-2003: neither image nor movie),
// kTemporaryCopy, kLinking (the reference movie could not be written; nothing of it is left).
int32_t PrepareInsertion(const std::string& file, InsertedMedia& media, InsertionStep& step);

}  // namespace vd::container
