// Affine matrices go to libvips's affine transform; a perspective goes through a map of where
// each drawn pixel comes from (projective_map.h), itself computed lazily, so that no whole-size
// buffer is ever made.
//
// libvips puts pixel centres on whole coordinates while our coordinates put them on halves; the
// half-pixel shifts are folded into the offsets and the inverse matrix below. The picture gets a
// border of its own edge pixels first, so that samples inside the picture's area never blend with
// the white beyond it.
#include "platform/graphics/matrix_drawing.h"

#include "platform/graphics/vips_call.h"
#include "platform/graphics/projective_map.h"
#include "platform/graphics/vips_library.h"
#include "platform/graphics/vips_steps.h"
#include "util/matrix3.h"

#include <vips/vips.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

namespace vd::platform {

namespace {

using Matrix3 = MapMatrix;

using util::Multiply;
using util::Translation;

std::optional<Matrix3> Inverse(const DrawMatrix& d) {
    Matrix3 m;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) m[size_t(i)][size_t(j)] = d.m[i][j];
    return util::Inverse(m);
}

std::vector<double> White(const VipsImage* image) { return std::vector<double>(size_t(image->Bands), 255.0); }

// The matrix with w' = 1, so its linear part and translation are what libvips's affine takes.
DrawMatrix Normalised(const DrawMatrix& matrix) {
    DrawMatrix n = matrix;
    for (auto& row : n.m)
        for (double& v : row) v /= matrix.m[2][2];
    return n;
}

// image is the picture part with its one-pixel border; (originX, originY) is where that part's
// top-left pixel sits in the picture.
util::Status DrawAffine(VipsImagePtr& image, double originX, double originY, const DrawMatrix& matrix,
                        const ClipRect& bounds) {
    const auto& m = Normalised(matrix).m;
    // Bordered pixel (i, j) has its centre at (originX + i − 0.5, originY + j − 0.5) in our
    // coordinates; libvips wants the drawn pixel's centre less one half.
    const double x0 = originX - 0.5, y0 = originY - 0.5;
    VipsCall affine("affine");
    affine.Set("in", image.get())
        .SetDoubles("matrix", {m[0][0], m[1][0], m[0][1], m[1][1]})
        .SetInts("oarea", {bounds.left, bounds.top, bounds.right - bounds.left, bounds.bottom - bounds.top})
        .Set("odx", x0 * m[0][0] + y0 * m[1][0] + m[2][0] - 0.5)
        .Set("ody", x0 * m[0][1] + y0 * m[1][1] + m[2][1] - 0.5)
        .SetEnum("extend", VIPS_TYPE_EXTEND, VIPS_EXTEND_BACKGROUND)
        .SetDoubles("background", White(image.get()));
    return Apply(affine, image);
}

util::Status DrawProjective(VipsImagePtr& image, double originX, double originY, const DrawMatrix& matrix,
                            const ClipRect& bounds) {
    const std::optional<Matrix3> inverse = Inverse(matrix);
    if (!inverse) return util::kBadParameter;
    // Drawn pixel (X, Y) → its centre in the plane → the picture → the bordered pixel's index.
    const Matrix3 k = Multiply(Multiply(Translation(bounds.left + 0.5, bounds.top + 0.5), *inverse),
                               Translation(0.5 - originX, 0.5 - originY));
    const int width = bounds.right - bounds.left, height = bounds.bottom - bounds.top;

    VipsImagePtr index;
    if (util::Status s = ProjectiveMapImage(k, width, height, index)) return s;
    VipsCall map("mapim");
    map.Set("in", image.get())
        .Set("index", index.get())
        .SetEnum("extend", VIPS_TYPE_EXTEND, VIPS_EXTEND_BACKGROUND)
        .SetDoubles("background", White(image.get()));
    return Apply(map, image);
}

}  // namespace

util::Status DrawThroughMatrix(VipsImagePtr& image, const ClipRect& source, const DrawMatrix& matrix) {
    ClipRect bounds;
    if (util::Status s = MappedBounds(source, matrix, bounds)) return s;
    const int32_t left = std::max(source.left, 0), top = std::max(source.top, 0);
    const int32_t right = std::min(source.right, image->Xsize), bottom = std::min(source.bottom, image->Ysize);
    if (right <= left || bottom <= top) return util::kBadParameter;

    if (left != 0 || top != 0 || right != image->Xsize || bottom != image->Ysize) {
        VipsCall part("extract_area");
        part.Set("input", image.get()).Set("left", left).Set("top", top).Set("width", right - left).Set("height", bottom - top);
        if (util::Status s = Apply(part, image)) return s;
    }
    VipsCall border("embed");
    border.Set("in", image.get())
        .Set("x", 1)
        .Set("y", 1)
        .Set("width", right - left + 2)
        .Set("height", bottom - top + 2)
        .SetEnum("extend", VIPS_TYPE_EXTEND, VIPS_EXTEND_COPY);
    if (util::Status s = Apply(border, image)) return s;

    if (matrix.IsAffine()) return DrawAffine(image, left, top, matrix, bounds);
    return DrawProjective(image, left, top, matrix, bounds);
}

}  // namespace vd::platform
