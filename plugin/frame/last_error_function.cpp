#include "frame/last_error_function.h"

#include "frame/args/arg_count.h"
#include "frame/args/legacy_result.h"
#include "frame/args/results.h"
#include "frame/errors/vds_error.h"

namespace vd {

FMX_ErrCode LastErrorFunction(const FunctionCall& call) {
    // No Begin here: naming ourselves would clear the outcome we are asked for.
    if (CheckArgCount(call.args, 0)) return SetResultUtf8(call.result, ArgCountStatusText(0));
    char status[512];
    FormatLast(status, sizeof status);
    return SetResultUtf8(call.result, status);
}

}  // namespace vd
