#include "frame/not_implemented.h"

#include "fmapi/args/results.h"
#include "fmapi/errors/vds_error.h"
#include "frame/function_table.h"

namespace vd {

FMX_ErrCode NotImplemented(const FunctionCall& call) {
    VDSError& error = Begin(call.entry.name);
    error.SetCode(-4);
    return SetResultUtf8(call.result, error.StatusText());
}

}  // namespace vd
