// GetAsNumber, Abs, Int, Round and Mod.
#include "builtin_function.h"
#include "calc_error.h"
#include "decimal_rounding.h"
#include "function_arguments.h"
#include "operators.h"

#include <algorithm>
#include <cmath>

namespace vdhost::calc {

namespace {

using Args = std::span<const FMX_Data>;

// Text without a single digit has no number in it: the result is empty rather than 0.
FMX_Data getAsNumber(Args a, SourcePosition) {
    if (isNumeric(a[0])) return makeNumber(a[0].number.value);
    auto number = parseNumber(textOf(a[0]).units);
    return number ? makeNumber(*number) : makeText({});
}

FMX_Data absolute(Args a, SourcePosition) { return makeNumber(std::fabs(numberOf(a[0]))); }

// Toward zero: Int ( -2.5 ) is -2.
FMX_Data integer(Args a, SourcePosition) { return makeNumber(std::trunc(numberOf(a[0]))); }

FMX_Data round(Args a, SourcePosition where) {
    // A double has no digits beyond about 330 places either way.
    int places = static_cast<int>(std::clamp(wholeArgument(a[1]), -400LL, 400LL));
    return checkedNumber(roundToPlaces(numberOf(a[0]), places), where);
}

// The remainder takes the sign of the divisor: Mod ( -7 ; 3 ) is 2.
FMX_Data modulo(Args a, SourcePosition where) {
    double n = numberOf(a[0]), d = numberOf(a[1]);
    if (d == 0) throw CalcError(CalcError::Kind::Evaluation, where, "Division by zero");
    double r = std::fmod(n, d);
    if (r != 0 && (r < 0) != (d < 0)) r += d;
    return checkedNumber(r, where);
}

constexpr BuiltinFunction kFunctions[] = {
    {u"GetAsNumber", 1, 1, getAsNumber},
    {u"Abs", 1, 1, absolute},
    {u"Int", 1, 1, integer},
    {u"Round", 2, 2, round},
    {u"Mod", 2, 2, modulo},
};

}  // namespace

std::span<const BuiltinFunction> numberFunctions() { return kFunctions; }

}  // namespace vdhost::calc
