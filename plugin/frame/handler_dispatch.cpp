#include "frame/handler_dispatch.h"

#include "fmapi/args/results.h"
#include "fmapi/errors/vds_error.h"
#include "frame/function_table.h"
#include "platform/common/interrupt_cleanup.h"

#include <new>

namespace vd {

namespace {

FMX_ErrCode ReportEscaped(const FunctionEntry& entry, int32_t code, FMX_Data* result) noexcept {
    // The handler may have failed before it named itself; the message must still name it.
    gLastError.SetContext(entry.name);
    gLastError.SetCode(code);
    try {
        if (SetResultUtf8(result, gLastError.StatusText()) == 0) return 0;
    } catch (...) {
        // The host cannot take even the status text: its error code is all that is left.
    }
    return static_cast<FMX_ErrCode>(code);
}

}  // namespace

FMX_ErrCode DispatchCall(int16_t functionId, const FMX_ExprEnv* env, const FMX_DataVect* args,
                         FMX_Data* result) noexcept {
    const FunctionEntry* entry = FindFunction(functionId);
    if (!entry) return FMX_ERR_PARAMETER;
    platform::ClearStopRequest();
    try {
        return entry->handler(FunctionCall{*entry, env, args, result});
    } catch (const std::bad_alloc&) {
        return ReportEscaped(*entry, -108, result);
    } catch (...) {
        return ReportEscaped(*entry, -1, result);
    }
}

}  // namespace vd
