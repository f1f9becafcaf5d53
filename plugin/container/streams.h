// The plug-in's one layer over container data: adding streams to results, classifying container
// arguments, reading streams, and the listings of a container's streams.
#pragma once

#include "fmapi/outcome.h"

#include <fmx/fmx.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vd::container {

using Bytes = std::vector<uint8_t>;

// Appends a stream; the host's code (0, or -48 when the type is there already).
FMX_ErrCode AddTypedStream(FMX_BinaryData* binary, uint32_t type, uint32_t length, const void* bytes);
// A "SIZE" stream of 4 bytes: width and height as 16-bit big-endian values.
FMX_ErrCode AddSizeStream(FMX_BinaryData* binary, uint16_t width, uint16_t height);
// Sets the result to a container without streams.
FMX_ErrCode EmptyContainerResult(FMX_Data* result);

// What a function answers (with util::kNotImageOrPath) for an argument that is neither.
inline constexpr const char* kNotImageOrPathMessage = "Parameter must be image or path";

// "ref " for a text argument or a container without streams; the deciding image stream type; or 0
// for neither. An unknown stream type wins over "JPEG" when both are there.
uint32_t ClassifyImageContainer(const FMX_Data* parameter);

// The whole stream of that type, or the failure: 20400 when the container has no such stream, -108
// when the copy cannot be made, the host's code when the stream cannot be read.
std::optional<fmapi::Outcome> ReadStreamIntoMemory(const FMX_Data* parameter, uint32_t type, Bytes& bytes);

// The image bytes of an embedded image, ready for an image importer: a "PICT" picture gets its
// 512-byte file header back, a VD image ("VDIM": a type code, then the image) answers its inner type
// and bytes (a PICT inside again at byte 512). type is "ref " (and bytes empty) when the image is
// not embedded. The failure, or none.
std::optional<fmapi::Outcome> ReadImageData(const FMX_Data* parameter, Bytes& bytes, uint32_t& type);

// The stream types in order, joined by "|"; after "FNAM" the file name (at most 200 bytes). "" for
// an empty parameter, "utxt" for text. The listing stops before a type once it exceeds 594 characters.
std::string ListStreamTypes(const FMX_Data* parameter);

// At most 600 bytes of a stream as text (each byte one character); "$$$Empty container",
// "$$$Text: " and the text, or "$$$That stream type is not in the container".
std::u16string PeekStream(const FMX_Data* parameter, std::string_view typeText);

// A copy of the container without the stream of that type; 20400 "The specified media type is not in
// the container" when it has none.
fmapi::Outcome RemoveStream(const FMX_Data* parameter, std::string_view typeText);

}  // namespace vd::container
