// A graphics importer: a picture opened from bytes, a file or a web address, described without
// decoding its pixels where the format allows, and exported to any writable format with the
// exporter's settings. The library behind each format stays inside this layer.
#pragma once

#include "platform/graphics/web_fetch.h"
#include "util/status_codes.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vd::platform {

struct ImageFormat;
struct DrawMatrix;  // platform/graphics/draw_matrix.h

struct ImageDescription {
    uint32_t type = 0;  // the format's type code ("JPEG", "PICT" ...)
    int32_t width = 0, height = 0;
    int16_t depth = 0;  // bits per pixel: 24 for RGB, 32 with alpha, 8 for grey
    double hDpi = 72, vDpi = 72;
    int32_t imageCount = 1;
    std::string name;   // what the format is called
};

// A rectangle as the picture's coordinates give it: left <= x < right, top <= y < bottom.
struct ClipRect {
    int32_t left = 0, top = 0, right = 0, bottom = 0;
};

// -1 leaves the exporter's own choice. quality is on the 0..1024 scale of the settings (1024:
// lossless where the format can be, 1023 the best lossy quality).
struct ImageExportSettings {
    int32_t depth = -1;          // 24 drops alpha, 32 keeps or adds it, 1..8 and 33..40 grey, 1 and 33 black and white
    double hDpi = -1, vDpi = -1;
    int32_t targetBytes = -1;    // a lossy format searches for the best quality that fits
    int32_t quality = -1;
    int32_t imageIndex = -1;     // from 1: which picture of a file that holds several
    bool dontRecompress = false; // a picture already in the target format is passed on unchanged
    int32_t compression = -1;    // TIFF: 1 none, 5 LZW, 8 deflate, 32773 PackBits; TGA, SGI, BMP: 32773 run-length
    // When not empty, only the picture inside an odd number of these rectangles is drawn; the rest is white.
    std::vector<ClipRect> clip;
};

// Pictures larger than this are refused (-108) before any pixel is decoded.
inline constexpr int64_t kMaxImagePixels = int64_t(1) << 28;

class GraphicsImporter {
public:
    GraphicsImporter();
    ~GraphicsImporter();
    GraphicsImporter(GraphicsImporter&&) noexcept;
    GraphicsImporter& operator=(GraphicsImporter&&) noexcept;

    // The bytes become the importer's. type names the format (needed for those without a
    // signature: PICT, TGA, MacPaint); 0 or a code we do not know: the bytes' signature decides.
    // util::kNoCodec when no format takes them; the format's status when its header is damaged.
    util::Status OpenBytes(std::vector<uint8_t> bytes, uint32_t type);
    // A file, its format known by its signature, else by its extension.
    util::Status OpenFile(const std::string& path);
    // A web image fetched whole within the limits (FetchUrl's statuses), then opened as bytes.
    util::Status OpenUrl(const std::string& url, const WebLimits& limits, std::string& detail);

    const ImageDescription& Description() const;
    // The file it was opened on, or "" for bytes and web images.
    const std::string& FilePath() const;
    // The address of a web image, or "".
    const std::string& WebAddress() const;

    // What an export draws: the part of the picture (in its own pixel coordinates; parts outside
    // it are white) and the matrix that takes that part into the plane, the result being as large
    // as the part's mapped bounds. The whole picture and the identity until set; opening resets them.
    void SetSourceRect(const ClipRect& rect);
    // The rectangle set, else the picture's natural bounds (0, 0, width, height).
    ClipRect SourceRect() const;
    void SetMatrix(const DrawMatrix& matrix);
    // The size of the data the picture is read from: the file's, or the bytes'.
    int64_t DataSize() const;

    // The picture in the format. util::kBadParameter for an image index past the last picture;
    // util::kMemoryFull for a picture too large to hold; the library's status otherwise.
    util::Status Export(const ImageFormat& format, const ImageExportSettings& settings,
                        std::vector<uint8_t>& out) const;

    struct State;

private:
    std::unique_ptr<State> state_;
};

// The writable format of a type code, or nothing (no such format, or no writer on this machine).
const ImageFormat* FindImageExporter(uint32_t type);

}  // namespace vd::platform
