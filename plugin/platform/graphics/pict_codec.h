// Direct-colour QuickDraw pictures, the pictures of VD images: one 32-bit pixmap of three 8-bit
// components (red, green, blue planes of each row, PackBits packed) behind the 512-byte file
// header. We read and write this layout ourselves, quickly and without holding the picture twice;
// any other picture (indexed colours, drawing opcodes, alpha, several pixmaps) goes to ImageMagick.
#pragma once

#include "util/status_codes.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vd::platform {

inline constexpr size_t kPictFileHeader = 512;

struct PictLayout {
    struct Row {
        size_t offset, length;  // the row's data in the file, its count left out
    };
    int32_t width = 0, height = 0;
    double hDpi = 72, vDpi = 72;
    std::vector<Row> rows;
};

// Whether the file (header included) is a picture of our layout, and where its rows are. Every
// row is checked to unpack to exactly its length and only comments may follow the pixmap, so that
// rows can then be decoded in any order without a failure; nothing is unpacked here.
bool ReadPictLayout(const uint8_t* file, size_t size, PictLayout& layout);

// Row y of a picture ReadPictLayout took: its red, green and blue planes into planes (room for
// three times the width).
void DecodePictRow(const uint8_t* file, const PictLayout& layout, int32_t y, uint8_t* planes);

// Writes a picture of our layout row by row into a vector, the file header first.
class PictWriter {
public:
    // util::kBadParameter for a size QuickDraw's 16-bit coordinates cannot hold.
    util::Status Begin(int32_t width, int32_t height, double hDpi, double vDpi, std::vector<uint8_t>& file);
    // count rows of interleaved RGB pixels, stride bytes apart.
    util::Status AddRows(const uint8_t* pixels, size_t stride, int32_t count);
    util::Status Finish();

private:
    std::vector<uint8_t>* file_ = nullptr;
    int32_t width_ = 0, height_ = 0, rowsWritten_ = 0;
    std::vector<uint8_t> planes_;  // one row split into its three components
};

}  // namespace vd::platform
