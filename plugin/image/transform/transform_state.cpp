#include "image/transform/transform_state.h"

#include <cstddef>

namespace vd::image {

TransformState::TransformState() { SetIdentityMatrix(matrix); }

TransformState& SharedTransformState() {
    static TransformState state;
    return state;
}

void ClearTransform(TransformState& state) {
    SetIdentityMatrix(state.matrix);
    state.crop = Rect16{};
    state.resize = Rect16{};
    state.quadPending = false;
}

void StoreQuad(TransformState& state, const QuadValues& values) {
    state.quad = values;
    ClearTransform(state);
    state.quadPending = true;
}

bool FoldQuad(TransformState& state, int32_t width, int32_t height) {
    const FixedQuad source{{{0, 0}, {X2Fix(width), 0}, {X2Fix(width), X2Fix(height)}, {0, X2Fix(height)}}};
    const double sx = double(width) / state.quad[0], sy = double(height) / state.quad[0];
    FixedQuad destination;
    for (size_t corner = 0; corner < 4; ++corner)
        destination[corner] = {X2Fix(sx * state.quad[1 + 2 * corner]), X2Fix(sy * state.quad[2 + 2 * corner])};
    MatrixRecord mapping;
    if (!QuadToQuadMatrix(source, destination, mapping)) return false;
    ConcatMatrix(state.matrix, mapping);
    state.matrix = mapping;
    state.quadPending = false;
    return true;
}

ResizeFactors FactorsForResize(const Rect16& resize, int16_t width, int16_t height) {
    const int16_t xDim = resize.right, yDim = resize.bottom;
    float fy = height != 0 ? float(yDim) / float(height) : 0.0f;
    float fx = width != 0 ? float(xDim) / float(width) : 0.0f;
    if (yDim == 0) fy = fx;
    else if (xDim == 0) fx = fy;
    return {TruncatedFactor(fx), TruncatedFactor(fy)};
}

}  // namespace vd::image
