#include "platform/media/media_layer.h"

#include "platform/common/library_search.h"
#include "platform/common/library_sonames.h"

#include <array>
#include <cstdlib>
#include <cstring>

namespace vd::platform {

namespace {

bool ForcedAbsent(const char* variable) {
    const char* value = std::getenv(variable);
    return value && std::strcmp(value, "absent") == 0;
}

bool AllPresent(std::initializer_list<const char*> sonames) {
    auto folders = LibrarySearchFolders();
    for (const char* soname : sonames)
        if (FindLibrary(soname, folders).empty()) return false;
    return true;
}

}  // namespace

uint32_t MediaLayerVersion() {
    if (ForcedAbsent("VANDREL_MEDIA_LAYER")) return 0;
    return AllPresent({kAvFormatLibrary, kAvCodecLibrary, kSwResampleLibrary, kAvUtilLibrary})
               ? kMediaLayerVersion
               : 0;
}

bool JpegExporterPresent() {
    if (ForcedAbsent("VANDREL_JPEG_EXPORT")) return false;
    // Debian's libvips saves JPEG through libjpeg 62; without it vips has no jpegsave operation.
    return AllPresent({kVipsLibrary, kJpegLibrary});
}

}  // namespace vd::platform
