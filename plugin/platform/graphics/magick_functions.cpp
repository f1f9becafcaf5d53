// MagickCore's functions reached through addresses resolved on first use (see
// platform/common/lazy_library.h); each is defined here with its header's parameters, hidden.
#include "platform/graphics/magick_functions.h"

#include "platform/common/lazy_library.h"
#include "platform/common/library_sonames.h"

#include <magick/MagickCore.h>

#include <iterator>

namespace vd::platform {

namespace {

constexpr const char* kSonames[] = {kMagickCoreLibrary};

#define VD_MAGICK_FUNCTIONS(X)                                                                                 \
    X(0, MagickCoreGenesis, (const char* path, const MagickBooleanType establish), (path, establish))          \
    X(0, SetMagickResourceLimit, (const ResourceType type, const MagickSizeType limit), (type, limit))         \
    X(0, AcquireExceptionInfo, (void), ())                                                                     \
    X(0, DestroyExceptionInfo, (ExceptionInfo * exception), (exception))                                       \
    X(0, AcquireImageInfo, (void), ())                                                                         \
    X(0, DestroyImageInfo, (ImageInfo * info), (info))                                                         \
    X(0, BlobToImage, (const ImageInfo* info, const void* blob, const size_t length, ExceptionInfo* exception), \
      (info, blob, length, exception))                                                                         \
    X(0, ImageToBlob, (const ImageInfo* info, Image* image, size_t* length, ExceptionInfo* exception),          \
      (info, image, length, exception))                                                                        \
    X(0, DestroyImageList, (Image * images), (images))                                                         \
    X(0, GetImageListLength, (const Image* images), (images))                                                  \
    X(0, GetImageFromList, (const Image* images, const ssize_t index), (images, index))                        \
    X(0, ExportImagePixels,                                                                                    \
      (const Image* image, const ssize_t x, const ssize_t y, const size_t columns, const size_t rows,           \
       const char* map, const StorageType type, void* pixels, ExceptionInfo* exception),                       \
      (image, x, y, columns, rows, map, type, pixels, exception))                                              \
    X(0, ConstituteImage,                                                                                      \
      (const size_t columns, const size_t rows, const char* map, const StorageType type, const void* pixels,   \
       ExceptionInfo* exception),                                                                              \
      (columns, rows, map, type, pixels, exception))                                                           \
    X(0, RelinquishMagickMemory, (void* memory), (memory))

enum Function : size_t { VD_MAGICK_FUNCTIONS(VD_LAZY_INDEX) kFunctionCount };
constexpr LazySymbol kSymbols[] = {VD_MAGICK_FUNCTIONS(VD_LAZY_SYMBOL)};
static_assert(std::size(kSymbols) == kFunctionCount);

void* gAddresses[kFunctionCount];
constinit LazyLibraries gMagick(kSonames, kSymbols, gAddresses, "VANDREL_MAGICK_LAYER");

}  // namespace

std::string_view LoadMagick() { return gMagick.Load(); }

}  // namespace vd::platform

// ImageMagick's headers declare its functions visible, so the forwarders' hidden attribute is
// ignored here; the module's version script keeps them out of its exports all the same.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wattributes"
#define VD_FORWARDER(library, name, parameters, arguments) \
    VD_LAZY_FORWARDER(vd::platform::gMagick, vd::platform, name, parameters, arguments)
VD_MAGICK_FUNCTIONS(VD_FORWARDER)
#undef VD_FORWARDER
#pragma GCC diagnostic pop
