// Vandrel_GetImageInfo's report: what the picture of a container says about itself.
#pragma once

#include "fmapi/outcome.h"

#include <fmx/fmx.h>

#include <cstdint>
#include <string>

namespace vd::image {

struct ImageInfo {
    int16_t height = 0, width = 0, depth = 0;
    int32_t quality = 0;        // the libraries do not tell a picture's spatial quality
    int32_t vDpi = 0, hDpi = 0;
    int32_t imageCount = 0;
    int32_t dataSize = 0;
    uint32_t compressorType = 0;
    std::string compressorName; // at most 31 characters
};

// The labelled lines, height before width and vertical resolution before horizontal, each ended
// by a carriage return.
std::string ImageInfoReport(const ImageInfo& info);

// The report of the container's picture, or the failure to open it.
fmapi::Outcome DescribeImage(const FMX_Data* parameter);

}  // namespace vd::image
