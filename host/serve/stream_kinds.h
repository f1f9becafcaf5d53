// What the streams of a container are, as far as a browser cares: a picture it shows as it is, a
// picture only the plug-in can turn into one, a sound, a file with its name, or bytes to download.
#pragma once

#include "api/objects.h"

#include <memory>
#include <optional>
#include <string>

namespace vdhost::serve {

// A run of bytes inside a shared buffer, served without copying.
struct ByteSlice {
    std::shared_ptr<const StreamBytes> owner;
    size_t offset = 0;
    size_t length = 0;
    std::string mediaType;
};

// The first picture a browser shows as it is: a "JPEG", "JFIF", "PNGf" or "GIFf" stream, or one
// of those wrapped in a "VDIM" stream (its type code, then the picture).
std::optional<ByteSlice> browserPicture(const FMX_BinaryData& binary);

// True when there is a picture stream browsers do not show ("PICT", "TIFF", "BMPf", a "VDIM" of
// another kind ...), which the plug-in may convert.
bool hasOtherPicture(const FMX_BinaryData& binary);

// The index of the "snd " stream, or -1.
int soundStreamIndex(const FMX_BinaryData& binary);

// The stored file's name from the "FNAM" stream, when there is one.
std::optional<std::string> storedFileName(const FMX_BinaryData& binary);

// The media type a stream is downloaded as.
std::string downloadMediaType(uint32_t type);

// True for streams that describe the others rather than hold content ("FNAM", "SIZE").
bool isDescriptionStream(uint32_t type);

}  // namespace vdhost::serve
