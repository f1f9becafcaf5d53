// The transformation matrix and its operations, as the platform's matrix calls define them. A
// point is a row vector: [x' y' w'] = [x y 1] × matrix, the result being (x'/w', y'/w'). So
// matrix[2][0] and matrix[2][1] translate, matrix[0][2] and matrix[1][2] are the perspective terms,
// and "A then B" is the product A × B. The first two columns are 16.16, the last one 2.30.
// Every operation works in double precision and stores each entry back, rounded and saturated,
// in its column's format.
#pragma once

#include "image/transform/fixed_point.h"

#include <array>

namespace vd::image {

struct MatrixRecord {
    Fixed matrix[3][3];
};

using DoubleMatrix = std::array<std::array<double, 3>, 3>;

struct FixedPoint {
    Fixed x = 0, y = 0;
};
// Corners in the order top-left, top-right, bottom-right, bottom-left.
using FixedQuad = std::array<FixedPoint, 4>;

void SetIdentityMatrix(MatrixRecord& m);
bool IsIdentityMatrix(const MatrixRecord& m);

// m := m then the scale by (scaleX, scaleY) about the point (aboutX, aboutY).
void ScaleMatrix(MatrixRecord& m, Fixed scaleX, Fixed scaleY, Fixed aboutX, Fixed aboutY);
// m := m then the skew x' = x + skewX·y, y' = y + skewY·x about the point.
void SkewMatrix(MatrixRecord& m, Fixed skewX, Fixed skewY, Fixed aboutX, Fixed aboutY);
// m := m then the rotation by degrees about the point: x' = x·cos − y·sin, y' = x·sin + y·cos, so
// with y growing downwards a positive angle turns clockwise on the screen.
void RotateMatrix(MatrixRecord& m, Fixed degrees, Fixed aboutX, Fixed aboutY);
// b := a then b (a acts first).
void ConcatMatrix(const MatrixRecord& a, MatrixRecord& b);
// m := the projective mapping of the source quadrilateral's corners onto the destination's,
// normalised so that matrix[2][2] is 1.0. False, m unchanged, when either quadrilateral is
// degenerate (three corners on a line) and no such mapping exists.
bool QuadToQuadMatrix(const FixedQuad& source, const FixedQuad& destination, MatrixRecord& m);

DoubleMatrix ToDoubles(const MatrixRecord& m);
MatrixRecord FromDoubles(const DoubleMatrix& d);

}  // namespace vd::image
