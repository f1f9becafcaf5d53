// What the operators of a calculation do with their values.
#pragma once

#include "api/objects.h"
#include "source_position.h"

namespace vdhost::calc {

enum class BinaryOperator {
    Or, Xor, And,
    Equal, NotEqual, Less, LessEqual, Greater, GreaterEqual,
    Concatenate,
    Add, Subtract, Multiply, Divide,
    Power,
};

enum class UnaryOperator { Not, Negate, Plus };

// And and Or here evaluate both sides; the tree short-circuits them before calling this.
FMX_Data applyBinary(BinaryOperator op, const FMX_Data& left, const FMX_Data& right, SourcePosition where);
FMX_Data applyUnary(UnaryOperator op, const FMX_Data& operand, SourcePosition where);

// Numerically when either side is a number or boolean, otherwise as texts without regard to case.
int compareValues(const FMX_Data& left, const FMX_Data& right);

// Numbers that are not finite cannot be shown or handed to plug-ins; they are an evaluation error.
FMX_Data checkedNumber(double value, SourcePosition where);

}  // namespace vdhost::calc
