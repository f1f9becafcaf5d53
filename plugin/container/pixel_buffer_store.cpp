#include "container/pixel_buffer_store.h"

#include "container/container_subsystem.h"
#include "container/stream_types.h"
#include "container/streams.h"
#include "fmapi/args/host_binary.h"
#include "fmapi/args/results.h"
#include "platform/graphics/jpeg_codec.h"
#include "util/status_codes.h"

#include <vector>

namespace vd::container {

int32_t StorePixelBufferAsJpeg(FMX_Data* result, const platform::PixelBuffer& buffer) {
    // Without a JPEG saver (found missing at start-up) there is no way to store the picture.
    if (!JpegExportAvailable()) return util::kNoComponent;
    const int32_t width = buffer.Width() - 1, height = buffer.Height() - 1;
    if (width < 1 || height < 1) return util::kBadParameter;
    std::vector<uint8_t> jpeg;
    if (util::Status s = platform::EncodeJpeg(buffer, width, height, platform::kJpegBestQuality, jpeg))
        return s;
    fmapi::OwnedBinaryData binary(fmapi::NewBinaryData());
    if (FMX_ErrCode e = AddTypedStream(binary.get(), kJpegStream, uint32_t(jpeg.size()), jpeg.data())) return e;
    // Sides are at most PixelBuffer::kMaxSide - 1, so they fit the 16-bit fields.
    if (FMX_ErrCode e = AddSizeStream(binary.get(), uint16_t(width), uint16_t(height))) return e;
    return SetResultBinary(result, binary.get());
}

}  // namespace vd::container
