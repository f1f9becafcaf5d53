// The transformation a script builds up call by call and Vandrel_TApply draws: one for the whole
// plug-in, kept from call to call (only the host's main thread calls the functions that use it).
#pragma once

#include "image/transform/matrix_record.h"

#include <array>
#include <cstdint>

namespace vd::image {

// A rectangle of signed 16-bit values. It is inactive exactly when its left, read as an unsigned
// 16-bit value, is 65535, so a crop whose left is -1 crops nothing.
struct Rect16 {
    int16_t top = 0, left = -1, bottom = 0, right = 0;
    bool Active() const { return uint16_t(left) != 0xFFFF; }
};

// sourceScale, then the x and y of the top-left, top-right, bottom-right and bottom-left corners.
using QuadValues = std::array<double, 9>;

struct TransformState {
    MatrixRecord matrix;
    Rect16 crop;    // the part of the picture drawn
    Rect16 resize;  // right: the width asked for, bottom: the height
    bool quadPending = false;
    QuadValues quad{};

    TransformState();
};

// The plug-in's one state.
TransformState& SharedTransformState();

// Identity matrix, both rectangles inactive, no quad waiting.
void ClearTransform(TransformState& state);
// The nine values kept, everything else cleared, and the quad waiting for the next apply.
void StoreQuad(TransformState& state, const QuadValues& values);

// The waiting quad folded into the matrix for a picture width x height: the corner values count
// in units of which sourceScale spans the whole picture, and the mapping of the picture's corners
// onto them acts after what the matrix held. False (state unchanged) when the corners make no
// mapping (sourceScale 0, three corners on a line).
bool FoldQuad(TransformState& state, int32_t width, int32_t height);

// The factors that scale a source rectangle of width x height to the resize rectangle's size: a
// factor whose divisor is 0 is 0, and a dimension of 0 takes the other's factor.
struct ResizeFactors {
    Fixed x = 0, y = 0;
};
ResizeFactors FactorsForResize(const Rect16& resize, int16_t width, int16_t height);

}  // namespace vd::image
