// The tags of a file as the plug-in answers them: a report in the layout of the sound report (one
// section per tag family, indented "Label: value" lines, so Vandrel_ExtractInfo reads one value by
// "EXIF/DateTimeOriginal"), or one tag's value by its full key or by that short path.
#pragma once

#include "platform/metadata/metadata_module_loader.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vd::metadata {

using platform::metadata::TagEntry;

enum class ValueForm { kInterpreted, kRaw };

// "interpreted" (or nothing) and "raw", in any case, blanks around ignored; none for anything else.
std::optional<ValueForm> ValueFormOf(std::string_view text);

// The longest report handed to the host in one piece; a longer one is cut after its last whole line.
inline constexpr size_t kMetadataReportCapacity = 32767;

// Sections in the order EXIF, IPTC, XMP, ID3v1, ID3v2, Vorbis, MP4, APE; within one, tags in the
// order read, a tag that repeats (IPTC keywords, several artists) on one line with its values
// joined by "; ". Labels keep no ":" or "/" and values no line breaks, so every line reads back.
// Empty for a file without tags.
std::string MetadataReport(const std::vector<TagEntry>& tags, ValueForm form,
                           size_t capacity = kMetadataReportCapacity);

// The value of the tag named by its full key ("Exif.Photo.ExposureTime", "ID3v2.TIT2") or by the
// report's path ("EXIF/ExposureTime"); none when the file does not hold it.
std::optional<std::string> FindTag(const std::vector<TagEntry>& tags, std::string_view name, ValueForm form);

// The text as UTF-8: already valid UTF-8 stays as it is, anything else is read as Latin-1 (how
// files that do not name their encoding were written).
std::string AsUtf8(std::string_view text);

}  // namespace vd::metadata
