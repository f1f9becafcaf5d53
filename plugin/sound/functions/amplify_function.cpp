// Vandrel_Amplify and Vandrel_Normalize, which is Vandrel_Amplify with the normalize mode chosen
// for the caller and the error text made its own.
#include "container/sound_container.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/host_number.h"
#include "fmapi/errors/vds_error.h"
#include "sound/editing/amplify.h"
#include "sound/functions/editing_functions.h"
#include "sound/sound_function_steps.h"
#include "sound/editing/wav_conversion.h"

#include <cmath>
#include <optional>
#include <string>
#include <string_view>

namespace vd::sound {

namespace {

constexpr int32_t kParamErr = -50;
constexpr const char* kAmplifyName = "Vandrel_Amplify";

struct GainAndLimit {
    float gain = 1.0f;
    float limit = 1.0f;
};

// Argument i as a number; nullopt when it is no number at all.
std::optional<float> NumberArgument(const FMX_DataVect* args, uint32_t i) {
    const double value = fmapi::FixPtAsFloat(ArgNumber(args, i));
    if (std::isnan(value)) return std::nullopt;
    return float(value);
}

// The whole of Vandrel_Amplify; forced takes the place of the gain and limit arguments.
FMX_ErrCode Amplify(const FMX_DataVect* args, FMX_Data* result, const std::optional<GainAndLimit>& forced) {
    VDSError& error = Begin(kAmplifyName);
    const uint16_t count = ArgCount(args);
    if (!forced && count < 2) return ReportFailure(error, result, kParamErr, "This function requires 2 or 3 parameters.");

    SoundMovie sound;
    if (int32_t e = OpenSoundParameter(args, 0, sound))
        return ReportFailure(error, result, e, "Could not get parameter #1 as sound.");
    GainAndLimit settings;
    if (forced) {
        settings = *forced;
    } else {
        const auto gain = NumberArgument(args, 1);
        if (!gain) return ReportFailure(error, result, kParamErr, "Could not get parameter #2 as number.");
        settings.gain = *gain;
        if (count >= 3) {  // more than three are not refused: the rest are not read
            const auto limit = NumberArgument(args, 2);
            if (!limit) return ReportFailure(error, result, kParamErr, "Could not get parameter #3 as number.");
            settings.limit = *limit;
        }
    }
    if (media::Status s = EnsurePcm(sound))
        return ReportFailure(error, result, s, UnlessTemporaryFileFailed(sound.temporaryFileFailed, "Could not convert sound."));

    media::Movie amplified;
    if (media::Status s = AmplifyMovie(sound.movie, settings.gain, settings.limit, amplified))
        return ReportFailure(error, result, s, "Could not amplify sound.");
    SoundMovie rendered;
    RenderStep step;
    if (media::Status s = RenderResult(std::move(amplified), {}, rendered, step))
        return ReportFailure(error, result, s,
                             UnlessTemporaryFileFailed(step == RenderStep::kTemporaryFile, "Could not amplify sound."));
    if (int32_t e = container::StoreMovieAsSound(result, rendered.movie))
        return ReportFailure(error, result, e, "Could not set QuickTime container.");
    error.SetCode(0);
    return 0;
}

// The message after "Vandrel_Amplify" and the two characters that follow it (": "), or all of it.
std::string WithoutAmplifyPrefix(std::string_view message) {
    const size_t at = message.find(kAmplifyName);
    if (at == std::string_view::npos) return std::string(message);
    const size_t from = std::min(message.size(), at + std::string_view(kAmplifyName).size() + 2);
    return std::string(message.substr(from));
}

}  // namespace

FMX_ErrCode AmplifyFunction(const FunctionCall& call) { return Amplify(call.args, call.result, std::nullopt); }

FMX_ErrCode NormalizeFunction(const FunctionCall& call) {
    VDSError& error = Begin("Vandrel_Normalize");
    if (ArgCount(call.args) != 1)
        return ReportFailure(error, call.result, kParamErr, "This function requires 1 parameter.");
    const FMX_ErrCode answer = Amplify(call.args, call.result, GainAndLimit{kNormalizeLimit, kNormalizeLimit});
    // The result stays what Vandrel_Amplify set; the error text is told as this function's own.
    const std::string message = WithoutAmplifyPrefix(gLastError.Message());
    gLastError.SetContext("Vandrel_Normalize");
    gLastError.SetMessage(message);
    return answer;
}

}  // namespace vd::sound
