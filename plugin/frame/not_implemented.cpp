#include "frame/not_implemented.h"

#include "frame/args/results.h"
#include "frame/errors/vds_error.h"
#include "frame/function_table.h"

namespace vd {

FMX_ErrCode NotImplemented(const FunctionCall& call) {
    VDSError& error = Begin(call.entry.name);
    error.SetCode(-4);
    return SetResultUtf8(call.result, error.StatusText());
}

}  // namespace vd
