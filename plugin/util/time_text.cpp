#include "util/time_text.h"

#include <cmath>

#include "util/blank_trim.h"

namespace vd::util {

namespace {

constexpr uint64_t kFixedOne = 65536;
constexpr uint64_t kSaturationRaw = uint64_t{1} << 31;
// Whole seconds at or beyond this saturate anyway; holding them here keeps the sums from overflowing.
constexpr uint64_t kSecondsCap = kSaturationRaw / kFixedOne;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }


// floor(0.d1d2...dn x 65536), exactly: the long multiplication runs from the last digit up, and the
// carry out of the first digit is the whole part of the product.
uint64_t FractionToFixed(std::string_view digits) {
    uint64_t carry = 0;
    for (size_t i = digits.size(); i-- > 0;) {
        carry = (static_cast<uint64_t>(digits[i] - '0') * kFixedOne + carry) / 10;
    }
    return carry;
}

struct Field {
    uint64_t whole = 0;  // held at kSecondsCap
    size_t wholeDigits = 0;
    std::string_view fraction;
    bool hasPoint = false;
};

bool ParseField(std::string_view text, bool fractionAllowed, Field& field) {
    size_t i = 0;
    while (i < text.size() && IsDigit(text[i])) {
        field.whole = field.whole * 10 + static_cast<uint64_t>(text[i] - '0');
        if (field.whole > kSecondsCap) field.whole = kSecondsCap;
        ++i;
    }
    field.wholeDigits = i;
    if (i < text.size() && text[i] == '.' && fractionAllowed) {
        field.hasPoint = true;
        const size_t start = ++i;
        while (i < text.size() && IsDigit(text[i])) ++i;
        field.fraction = text.substr(start, i - start);
    }
    return i == text.size() && (field.wholeDigits > 0 || !field.fraction.empty());
}

Status ParseUnsignedTime(std::string_view text, uint32_t& fixed) {
    Field fields[3];
    size_t count = 0;
    while (true) {
        const size_t colon = text.find(':');
        if (count == 3) return kBadParameter;
        if (!ParseField(text.substr(0, colon), colon == std::string_view::npos, fields[count])) return kBadParameter;
        ++count;
        if (colon == std::string_view::npos) break;
        text.remove_prefix(colon + 1);
    }
    uint64_t seconds = 0;
    for (size_t i = 0; i < count; ++i) {
        // Minutes and seconds that follow a larger unit are clock digits.
        if (i > 0 && (fields[i].wholeDigits > 2 || fields[i].whole >= 60)) return kBadParameter;
        seconds = seconds * 60 + fields[i].whole;
        if (seconds > kSecondsCap) seconds = kSecondsCap;
    }
    const uint64_t raw = seconds * kFixedOne + FractionToFixed(fields[count - 1].fraction);
    fixed = raw >= kSaturationRaw ? kMaxFixedTime : static_cast<uint32_t>(raw);
    return kNoError;
}

}  // namespace

uint32_t SecondsToFixed(double seconds) {
    const double raw = seconds * static_cast<double>(kFixedOne);
    if (!(raw < static_cast<double>(kSaturationRaw))) return kMaxFixedTime;
    if (!(raw > 0.0)) return 0;
    return static_cast<uint32_t>(raw);
}

Status ParseSignedTimeText(std::string_view text, SignedFixedTime& time) {
    text = TrimBlanks(text);
    const bool negative = !text.empty() && text.front() == '-';
    if (negative) text.remove_prefix(1);
    uint32_t magnitude = 0;
    if (const Status status = ParseUnsignedTime(text, magnitude); status != kNoError) return status;
    time = SignedFixedTime{magnitude, negative};
    return kNoError;
}

Status ParseTimeText(std::string_view text, uint32_t& fixed) {
    SignedFixedTime time;
    if (const Status status = ParseSignedTimeText(text, time); status != kNoError) return status;
    if (time.negative) return kBadParameter;
    fixed = time.magnitude;
    return kNoError;
}

Status TimeFromSeconds(double seconds, uint32_t& fixed) {
    if (std::isnan(seconds) || seconds < 0.0) return kBadParameter;
    fixed = SecondsToFixed(seconds);
    return kNoError;
}

Status SignedTimeFromSeconds(double seconds, SignedFixedTime& time) {
    if (std::isnan(seconds)) return kBadParameter;
    time = SignedFixedTime{SecondsToFixed(std::fabs(seconds)), seconds < 0.0};
    return kNoError;
}

}  // namespace vd::util
