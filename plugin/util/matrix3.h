// 3 x 3 matrices of doubles as the picture transforms use them: points are row vectors
// (x, y, 1) times the matrix, so a product applies its left factor first.
#pragma once

#include <array>
#include <optional>

namespace vd::util {

using Matrix3 = std::array<std::array<double, 3>, 3>;

Matrix3 Multiply(const Matrix3& a, const Matrix3& b);
Matrix3 Translation(double dx, double dy);
// The inverse, or nothing when the determinant is not finite, is 0, or is smaller in size than
// smallest.
std::optional<Matrix3> Inverse(const Matrix3& m, double smallest = 0);

}  // namespace vd::util
