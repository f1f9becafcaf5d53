#include "sound/functions/sound_functions.h"

#include "container/movie_parameter.h"
#include "container/pixel_buffer_store.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/host_number.h"
#include "fmapi/args/value_readers.h"
#include "sound/sound_function_steps.h"
#include "sound/waveform/waveform.h"
#include "util/status_codes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

namespace vd::sound {

namespace {

// An optional argument counts as given when it is there and not empty: hosts that demand all of
// a function's arguments are passed "" for the ones left out.
bool Given(const FMX_DataVect* args, uint32_t i) { return i < ArgCount(args) && !ArgEmpty(ArgData(args, i)); }

// A side in pixels; sizes beyond 32 bits are kept too large (and refused as such), not wrapped.
std::optional<int32_t> ArgPixels(const FMX_DataVect* args, uint32_t i) {
    const double value = fmapi::FixPtAsFloat(ArgNumber(args, i));
    if (std::isnan(value)) return std::nullopt;
    return int32_t(std::clamp(std::trunc(value), -1.0, double(std::numeric_limits<int32_t>::max())));
}

platform::Rgba RgbaOf(const util::RgbColor& c) { return {c.red, c.green, c.blue, 255}; }

}  // namespace

// A failure leaves the result empty (the function's table row says so); the status is there for
// Vandrel_GetLastError.
fmapi::Outcome DrawWaveformFunction(const FunctionCall& call) {
    const FMX_DataVect* args = call.args;
    media::Movie movie;
    bool found = false;
    if (int32_t e = container::MovieFromParameter(args, 0, movie, found))
        return StepFailure(e, "Could not get parameter #1 as movie.");
    if (!found) return StepFailure(util::kBadParameter, "Could not get parameter #1 as movie.");

    WaveformRequest request;
    const auto selection = ParseWaveformSelector(ArgCText(ArgText(args, 1)));
    if (!selection) return StepFailure(util::kBadParameter, "Invalid track/channel specified in parameter #2.");
    request.selection = *selection;
    const auto width = ArgPixels(args, 2);
    if (!width) return StepFailure(util::kBadParameter, "Could not get parameter #3 as number.");
    const auto height = ArgPixels(args, 3);
    if (!height) return StepFailure(util::kBadParameter, "Could not get parameter #4 as number.");
    request.width = *width, request.height = *height;
    if (int32_t e = CheckWaveformSize(request.width, request.height)) return StepFailure(e, "");

    uint32_t time = 0;
    if (Given(args, 4)) {
        if (int16_t e = ArgTime(args, 4, time)) return StepFailure(e, "Could not get parameter #5 as time.");
        request.start = time;
    }
    if (Given(args, 5)) {
        if (int16_t e = ArgTime(args, 5, time)) return StepFailure(e, "Could not get parameter #6 as time.");
        request.end = time;
    }
    util::RgbColor color;
    if (Given(args, 6)) {
        if (int16_t e = ArgColor(args, 6, color)) return StepFailure(e, "Could not get parameter #7 as HTML color.");
        request.colors.wave = RgbaOf(color);
    }
    if (Given(args, 7)) {
        if (int16_t e = ArgColor(args, 7, color)) return StepFailure(e, "Could not get parameter #8 as HTML color.");
        request.colors.background = RgbaOf(color);
    }

    std::optional<platform::PixelBuffer> picture;
    WaveformOutcome drawn = DrawWaveform(std::move(movie), request, picture);
    if (drawn.code != 0) return StepFailure(drawn.code, drawn.message);
    fmapi::OwnedData result(fmapi::NewData());
    const int32_t stored = container::StorePixelBufferAsJpeg(result.get(), *picture);
    if (stored != 0) return StepFailure(stored, "Failed to put picture into container.");
    return fmapi::Outcome::Data(std::move(result));
}

}  // namespace vd::sound
