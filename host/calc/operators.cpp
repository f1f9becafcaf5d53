#include "operators.h"

#include "api/values.h"
#include "calc_error.h"
#include "case_folding.h"

#include <cmath>

namespace vdhost::calc {

int compareValues(const FMX_Data& left, const FMX_Data& right) {
    if (isNumeric(left) || isNumeric(right)) {
        double a = numberOf(left), b = numberOf(right);
        return a < b ? -1 : a > b ? 1 : 0;
    }
    return compareIgnoringCase(textOf(left).units, textOf(right).units);
}

FMX_Data checkedNumber(double value, SourcePosition where) {
    if (!std::isfinite(value)) throw CalcError(CalcError::Kind::Evaluation, where, "Number out of range");
    return makeNumber(value);
}

FMX_Data applyBinary(BinaryOperator op, const FMX_Data& left, const FMX_Data& right, SourcePosition where) {
    switch (op) {
        case BinaryOperator::Or: return makeBoolean(booleanOf(left) || booleanOf(right));
        case BinaryOperator::Xor: return makeBoolean(booleanOf(left) != booleanOf(right));
        case BinaryOperator::And: return makeBoolean(booleanOf(left) && booleanOf(right));
        case BinaryOperator::Equal: return makeBoolean(compareValues(left, right) == 0);
        case BinaryOperator::NotEqual: return makeBoolean(compareValues(left, right) != 0);
        case BinaryOperator::Less: return makeBoolean(compareValues(left, right) < 0);
        case BinaryOperator::LessEqual: return makeBoolean(compareValues(left, right) <= 0);
        case BinaryOperator::Greater: return makeBoolean(compareValues(left, right) > 0);
        case BinaryOperator::GreaterEqual: return makeBoolean(compareValues(left, right) >= 0);
        case BinaryOperator::Concatenate: return makeText(textOf(left).units + textOf(right).units);
        case BinaryOperator::Add: return checkedNumber(numberOf(left) + numberOf(right), where);
        case BinaryOperator::Subtract: return checkedNumber(numberOf(left) - numberOf(right), where);
        case BinaryOperator::Multiply: return checkedNumber(numberOf(left) * numberOf(right), where);
        case BinaryOperator::Divide: {
            double divisor = numberOf(right);
            if (divisor == 0) throw CalcError(CalcError::Kind::Evaluation, where, "Division by zero");
            return checkedNumber(numberOf(left) / divisor, where);
        }
        case BinaryOperator::Power: return checkedNumber(std::pow(numberOf(left), numberOf(right)), where);
    }
    throw CalcError(CalcError::Kind::Evaluation, where, "Unknown operator");
}

FMX_Data applyUnary(UnaryOperator op, const FMX_Data& operand, SourcePosition where) {
    switch (op) {
        case UnaryOperator::Not: return makeBoolean(!booleanOf(operand));
        case UnaryOperator::Negate: return checkedNumber(-numberOf(operand), where);
        case UnaryOperator::Plus: return checkedNumber(numberOf(operand), where);
    }
    throw CalcError(CalcError::Kind::Evaluation, where, "Unknown operator");
}

}  // namespace vdhost::calc
