// What a function's handler returns. A handler reads its arguments, calls one operation and returns
// the outcome: a value on success, or a status with the function's own message for it. It never
// names itself, checks its argument count or touches the error object and the host's result: the
// dispatch (frame/handler_dispatch.h) does all of that from the function's table row, so every
// function reports the same way. For example:
//
//     fmapi::Outcome ExtractInfoFunction(const FunctionCall& call) {
//         const std::string report = ArgCText(ArgText(call.args, 0));
//         const std::string key = ArgCount(call.args) > 1 ? ArgCText(ArgText(call.args, 1)) : "";
//         Extraction found = ExtractInfo(report, key);
//         if (found.code != 0) return fmapi::Outcome::Failure(found.code, found.value);
//         return fmapi::Outcome::Text(found.value);
//     }
//
// Its count rule ("1 or 2 arguments", -50) and how it reports stand in its row of the function
// table (frame/function_table.cpp).
#pragma once

#include "fmapi/args/host_binary.h"

#include <fmx/fmx.h>

#include <cstdint>
#include <string>
#include <variant>

namespace vd::fmapi {

class Outcome {
public:
    // Successes (status 0, "No error."): the value becomes the function's result.
    static Outcome Text(std::string utf8);
    static Outcome Text(std::u16string units);
    static Outcome Number(int32_t value);
    static Outcome Number(double value);
    // A success that sets no result at all.
    static Outcome Nothing();
    // A data value the operation filled, such as a container made through the container layer.
    static Outcome Data(OwnedData value);

    // The status and the function's own message for it; an empty message leaves the code's table
    // text. The result becomes the status text. A status of 0 is still a failure when the function
    // says so ("$0:...: Cancel").
    static Outcome Failure(int32_t status, std::string message = {});
    // A failure that still sets a number as the result, for functions that answer their failures
    // as the call's error code (Reporting::kErrorCode) and a value beside it.
    static Outcome FailureWithNumber(int32_t status, double value);

    bool Failed() const noexcept { return failed_; }
    int32_t Status() const noexcept { return status_; }
    const std::string& Message() const noexcept { return message_; }

    // Sets a success's value as the host's result (a failure sets nothing but a number it was
    // given); 0 or the host's code.
    FMX_ErrCode SetValue(FMX_Data* result) const;

private:
    using Value = std::variant<std::monostate, std::string, std::u16string, int32_t, double, OwnedData>;

    Outcome(int32_t status, std::string message, Value value, bool failed);

    int32_t status_;
    std::string message_;
    Value value_;
    bool failed_;
};

}  // namespace vd::fmapi
