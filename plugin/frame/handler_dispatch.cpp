#include "frame/handler_dispatch.h"

#include "container/streams.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/results.h"
#include "fmapi/errors/vds_error.h"
#include "frame/function_table.h"
#include "platform/common/interrupt_cleanup.h"
#include "util/status_codes.h"

#include <new>
#include <optional>

namespace vd {

namespace {

std::optional<fmapi::Outcome> RefusedCount(const CountRule& rule, const FMX_DataVect* args) {
    if (rule.status == 0) return std::nullopt;
    const int count = ArgCount(args);
    if (count >= rule.min && (rule.max < 0 || count <= rule.max)) return std::nullopt;
    return fmapi::Outcome::Failure(rule.status, rule.message ? rule.message : "");
}

const char* AnsweringName(const FunctionEntry& entry) {
    const FunctionEntry* other = entry.answersAs ? FindFunction(entry.answersAs) : nullptr;
    return other ? other->name : entry.name;
}

// Vandrel_GetLastError reports on the error object, so it must leave it as it is.
FMX_ErrCode AnswerKeepingLastError(const FunctionEntry& entry, const FunctionCall& call, FMX_Data* result) {
    std::optional<fmapi::Outcome> outcome = RefusedCount(entry.ownCount, call.args);
    if (!outcome) outcome.emplace(entry.handler(call));
    if (!outcome->Failed()) return outcome->SetValue(result);
    return SetResultUtf8(result, StatusText(outcome->Status(), nullptr, outcome->Message()));
}

FMX_ErrCode Answer(const FunctionEntry& entry, const FunctionCall& call, FMX_Data* result) {
    gLastError.Clear();
    gLastError.SetName(entry.name);
    std::optional<fmapi::Outcome> outcome = RefusedCount(entry.ownCount, call.args);
    // A refused count is the function's own; what its operation answers may carry another's name.
    const char* answeringName = outcome ? entry.name : AnsweringName(entry);
    if (!outcome) outcome.emplace(entry.handler(call));
    gLastError.Set(outcome->Status(), outcome->Message());
    if (!outcome->Failed()) return outcome->SetValue(result);
    if (entry.reporting == Reporting::kEmptyResult) return 0;
    if (entry.reporting == Reporting::kEmptyContainer) return container::EmptyContainerResult(result);
    if (entry.reporting == Reporting::kErrorCode) {
        outcome->SetValue(result);
        return static_cast<FMX_ErrCode>(outcome->Status());
    }
    return SetResultUtf8(result, StatusText(gLastError.Code(), answeringName, gLastError.Message()));
}

FMX_ErrCode ReportEscaped(const FunctionEntry& entry, int32_t code, FMX_Data* result) noexcept {
    // The handler may have failed before anything was reported; the message must still name it.
    gLastError.SetName(entry.name);
    gLastError.Set(code);
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
        const FunctionCall call{*entry, env, args};
        if (entry->reporting == Reporting::kKeepsLastError) return AnswerKeepingLastError(*entry, call, result);
        return Answer(*entry, call, result);
    } catch (const std::bad_alloc&) {
        return ReportEscaped(*entry, util::kMemoryFull, result);
    } catch (...) {
        return ReportEscaped(*entry, util::kUnknownError, result);
    }
}

}  // namespace vd
