#include "fmapi/outcome.h"

#include "fmapi/args/results.h"

#include <utility>

namespace vd::fmapi {

Outcome::Outcome(int32_t status, std::string message, Value value, bool failed)
    : status_(status), message_(std::move(message)), value_(std::move(value)), failed_(failed) {}

Outcome Outcome::Text(std::string utf8) { return {0, {}, std::move(utf8), false}; }

Outcome Outcome::Text(std::u16string units) { return {0, {}, std::move(units), false}; }

Outcome Outcome::Number(int32_t value) { return {0, {}, value, false}; }

Outcome Outcome::Number(double value) { return {0, {}, value, false}; }

Outcome Outcome::Nothing() { return {0, {}, std::monostate{}, false}; }

Outcome Outcome::FailureWithNumber(int32_t status, double value) { return {status, {}, value, true}; }

Outcome Outcome::Data(OwnedData value) { return {0, {}, std::move(value), false}; }

Outcome Outcome::Failure(int32_t status, std::string message) {
    return {status, std::move(message), std::monostate{}, true};
}

FMX_ErrCode Outcome::SetValue(FMX_Data* result) const {
    if (failed_) {
        const auto* number = std::get_if<double>(&value_);
        return number ? SetResultNumber(result, *number) : 0;
    }
    if (const auto* text = std::get_if<std::string>(&value_)) return SetResultUtf8(result, *text);
    if (const auto* units = std::get_if<std::u16string>(&value_)) return SetResultUtf16(result, *units);
    if (const auto* number = std::get_if<int32_t>(&value_)) return SetResultNumber(result, *number);
    if (const auto* number = std::get_if<double>(&value_)) return SetResultNumber(result, *number);
    if (const auto* data = std::get_if<OwnedData>(&value_))
        return SetResultBinary(result, DataGetBinaryData(data->get()));
    return 0;
}

}  // namespace vd::fmapi
