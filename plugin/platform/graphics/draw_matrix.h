// Where a picture is drawn: the part of it taken (the source rectangle, in the picture's pixel
// coordinates) and the 3 x 3 matrix that takes it into the plane. Points are row vectors,
// [x' y' w'] = [x y 1] × m, so m[2][0] and m[2][1] translate and m[0][2], m[1][2] are the
// perspective terms. Coordinates are continuous: pixel (i, j) covers [i, i+1) x [j, j+1).
#pragma once

#include "platform/graphics/graphics_importer.h"
#include "util/status_codes.h"

namespace vd::platform {

struct DrawMatrix {
    double m[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

    bool IsIdentity() const;
    // No perspective: w' is the same for every point (and not 0).
    bool IsAffine() const;
};

// The smallest rectangle of whole pixels that holds the source rectangle mapped by the matrix
// (what a drawing of it is as large as). util::kBadParameter when the mapped rectangle has no
// area or reaches past the horizon of a perspective; util::kMemoryFull when it holds more than
// kMaxImagePixels.
util::Status MappedBounds(const ClipRect& source, const DrawMatrix& matrix, ClipRect& bounds);

}  // namespace vd::platform
