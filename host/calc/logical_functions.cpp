// IsEmpty, and the constants True and False (written without parentheses).
#include "builtin_function.h"
#include "function_arguments.h"

namespace vdhost::calc {

namespace {

using Args = std::span<const FMX_Data>;

FMX_Data isEmpty(Args a, SourcePosition) { return makeBoolean(emptyOf(a[0])); }
FMX_Data trueValue(Args, SourcePosition) { return makeBoolean(true); }
FMX_Data falseValue(Args, SourcePosition) { return makeBoolean(false); }

constexpr BuiltinFunction kFunctions[] = {
    {u"IsEmpty", 1, 1, isEmpty},
    {u"True", 0, 0, trueValue},
    {u"False", 0, 0, falseValue},
};

}  // namespace

std::span<const BuiltinFunction> logicalFunctions() { return kFunctions; }

}  // namespace vdhost::calc
