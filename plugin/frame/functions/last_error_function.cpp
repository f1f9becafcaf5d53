#include "frame/functions/last_error_function.h"

#include "fmapi/args/arg_count.h"
#include "fmapi/args/legacy_result.h"
#include "fmapi/args/results.h"
#include "fmapi/errors/vds_error.h"

namespace vd {

FMX_ErrCode LastErrorFunction(const FunctionCall& call) {
    // No Begin here: naming ourselves would clear the outcome we are asked for.
    if (CheckArgCount(call.args, 0)) return SetResultUtf8(call.result, ArgCountStatusText(0));
    char status[512];
    FormatLast(status, sizeof status);
    return SetResultUtf8(call.result, status);
}

}  // namespace vd
