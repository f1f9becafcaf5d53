#include "sound/functions/extract_info_function.h"

#include "fmapi/args/arguments.h"
#include "fmapi/args/results.h"
#include "fmapi/errors/vds_error.h"
#include "sound/information/information_extraction.h"

namespace vd::sound {

FMX_ErrCode ExtractInfoFunction(const FunctionCall& call) {
    VDSError& error = Begin("Vandrel_ExtractInfo");
    uint16_t count = ArgCount(call.args);
    if (count < 1 || count > 2) {
        error.SetCode(-50);
        error.SetMessage("This function requires 1 or 2 arguments.");
        return SetResultUtf8(call.result, error.StatusText());
    }
    std::string report = ArgCText(ArgText(call.args, 0));
    std::string key = count > 1 ? ArgCText(ArgText(call.args, 1)) : std::string();
    Extraction found = ExtractInfo(report, key);
    error.SetCode(found.code);
    if (found.code != 0) {
        if (!found.value.empty()) error.SetMessage(found.value);
        return SetResultUtf8(call.result, error.StatusText());
    }
    return SetResultUtf8(call.result, found.value);
}

}  // namespace vd::sound
