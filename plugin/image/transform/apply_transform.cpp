#include "image/transform/apply_transform.h"

#include "container/stream_types.h"
#include "container/streams.h"
#include "fmapi/args/host_binary.h"
#include "fmapi/args/results.h"
#include "image/container_importer.h"
#include "image/vd_image.h"
#include "platform/graphics/draw_matrix.h"
#include "platform/graphics/graphics_importer.h"
#include "util/status_codes.h"

namespace vd::image {

namespace {

constexpr const char* kConversionFailed = "Conversion to VD image failed";

platform::DrawMatrix ToDrawMatrix(const MatrixRecord& m) {
    const DoubleMatrix d = ToDoubles(m);
    platform::DrawMatrix draw;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) draw.m[i][j] = d[size_t(i)][size_t(j)];
    return draw;
}

}  // namespace

fmapi::Outcome ApplyTransform(const FMX_Data* parameter, TransformState& state) {
    platform::GraphicsImporter importer;
    if (auto failure = OpenImporterForContainer(parameter, importer)) return std::move(*failure);
    if (!platform::FindImageExporter(container::kPictStream))
        return fmapi::Outcome::Failure(util::kNoComponent, "Could not find QT exporter for VD image type");

    if (state.crop.Active())
        importer.SetSourceRect({state.crop.left, state.crop.top, state.crop.right, state.crop.bottom});
    if (state.quadPending) {
        const platform::ImageDescription& d = importer.Description();
        // Corners that make no mapping (a sourceScale of 0, three on a line) draw nothing.
        if (!FoldQuad(state, d.width, d.height)) return fmapi::Outcome::Failure(util::kBadParameter, kConversionFailed);
    }
    if (state.resize.Active()) {
        const platform::ClipRect source = importer.SourceRect();
        const ResizeFactors f = FactorsForResize(state.resize, int16_t(source.right - source.left),
                                                 int16_t(source.bottom - source.top));
        ScaleMatrix(state.matrix, f.x, f.y, 0, 0);
    }
    importer.SetMatrix(ToDrawMatrix(state.matrix));

    fmapi::OwnedBinaryData binary(fmapi::NewBinaryData());
    if (auto failure = AddVdImage(binary.get(), importer, kConversionFailed)) return std::move(*failure);
    fmapi::OwnedData result(fmapi::NewData());
    if (FMX_ErrCode e = SetResultBinary(result.get(), binary.get())) return fmapi::Outcome::Failure(e);
    return fmapi::Outcome::Data(std::move(result));
}

}  // namespace vd::image
