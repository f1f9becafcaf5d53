#include "image/transform/matrix_record.h"

#include "util/matrix3.h"

#include <cmath>
#include <numbers>
#include <optional>

namespace vd::image {

namespace {

constexpr DoubleMatrix kIdentity{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

using util::Multiply;
using util::Translation;

// m := m then (the operation about the point): move the point to the origin, operate, move back.
void AppendAbout(MatrixRecord& m, const DoubleMatrix& operation, Fixed aboutX, Fixed aboutY) {
    const double x = Fix2X(aboutX), y = Fix2X(aboutY);
    const DoubleMatrix about = Multiply(Multiply(Translation(-x, -y), operation), Translation(x, y));
    m = FromDoubles(Multiply(ToDoubles(m), about));
}

// Nearly singular matrices count as singular: their inverse would be all rounding.
std::optional<DoubleMatrix> Inverse(const DoubleMatrix& m) { return util::Inverse(m, 1e-12); }

// The mapping of the unit square's corners (0,0), (1,0), (1,1), (0,1) onto the quadrilateral's.
std::optional<DoubleMatrix> SquareToQuad(const FixedQuad& q) {
    double x[4], y[4];
    for (int i = 0; i < 4; ++i) x[i] = Fix2X(q[size_t(i)].x), y[i] = Fix2X(q[size_t(i)].y);
    const double sx = x[0] - x[1] + x[2] - x[3], sy = y[0] - y[1] + y[2] - y[3];
    double g = 0, h = 0;
    if (sx != 0 || sy != 0) {  // not a parallelogram: a perspective is needed
        const double dx1 = x[1] - x[2], dx2 = x[3] - x[2], dy1 = y[1] - y[2], dy2 = y[3] - y[2];
        const double det = dx1 * dy2 - dx2 * dy1;
        if (det == 0) return std::nullopt;
        g = (sx * dy2 - dx2 * sy) / det;
        h = (dx1 * sy - sx * dy1) / det;
    }
    return DoubleMatrix{{{x[1] - x[0] + g * x[1], y[1] - y[0] + g * y[1], g},
                         {x[3] - x[0] + h * x[3], y[3] - y[0] + h * y[3], h},
                         {x[0], y[0], 1}}};
}

}  // namespace

DoubleMatrix ToDoubles(const MatrixRecord& m) {
    DoubleMatrix d;
    for (int i = 0; i < 3; ++i) {
        d[i][0] = Fix2X(m.matrix[i][0]);
        d[i][1] = Fix2X(m.matrix[i][1]);
        d[i][2] = Frac2X(m.matrix[i][2]);
    }
    return d;
}

MatrixRecord FromDoubles(const DoubleMatrix& d) {
    MatrixRecord m;
    for (int i = 0; i < 3; ++i) {
        m.matrix[i][0] = X2Fix(d[i][0]);
        m.matrix[i][1] = X2Fix(d[i][1]);
        m.matrix[i][2] = X2Frac(d[i][2]);
    }
    return m;
}

void SetIdentityMatrix(MatrixRecord& m) { m = FromDoubles(kIdentity); }

bool IsIdentityMatrix(const MatrixRecord& m) {
    MatrixRecord identity;
    SetIdentityMatrix(identity);
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            if (m.matrix[i][j] != identity.matrix[i][j]) return false;
    return true;
}

void ScaleMatrix(MatrixRecord& m, Fixed scaleX, Fixed scaleY, Fixed aboutX, Fixed aboutY) {
    AppendAbout(m, {{{Fix2X(scaleX), 0, 0}, {0, Fix2X(scaleY), 0}, {0, 0, 1}}}, aboutX, aboutY);
}

void SkewMatrix(MatrixRecord& m, Fixed skewX, Fixed skewY, Fixed aboutX, Fixed aboutY) {
    AppendAbout(m, {{{1, Fix2X(skewY), 0}, {Fix2X(skewX), 1, 0}, {0, 0, 1}}}, aboutX, aboutY);
}

void RotateMatrix(MatrixRecord& m, Fixed degrees, Fixed aboutX, Fixed aboutY) {
    const double radians = Fix2X(degrees) * std::numbers::pi / 180.0;
    const double c = std::cos(radians), s = std::sin(radians);
    AppendAbout(m, {{{c, s, 0}, {-s, c, 0}, {0, 0, 1}}}, aboutX, aboutY);
}

void ConcatMatrix(const MatrixRecord& a, MatrixRecord& b) { b = FromDoubles(Multiply(ToDoubles(a), ToDoubles(b))); }

bool QuadToQuadMatrix(const FixedQuad& source, const FixedQuad& destination, MatrixRecord& m) {
    const std::optional<DoubleMatrix> fromSquare = SquareToQuad(source);
    const std::optional<DoubleMatrix> toQuad = SquareToQuad(destination);
    if (!fromSquare || !toQuad) return false;
    const std::optional<DoubleMatrix> toSquare = Inverse(*fromSquare);
    if (!toSquare || !Inverse(*toQuad)) return false;
    DoubleMatrix result = Multiply(*toSquare, *toQuad);
    const double w = result[2][2];
    if (w == 0 || !std::isfinite(w)) return false;
    for (auto& row : result)
        for (double& v : row) v /= w;
    m = FromDoubles(result);
    return true;
}

}  // namespace vd::image
