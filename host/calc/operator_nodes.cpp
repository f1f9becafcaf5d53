#include "operator_nodes.h"

#include "api/values.h"

namespace vdhost::calc {

FMX_Data UnaryNode::evaluate(Evaluation& evaluation) const {
    return applyUnary(op_, operand_->evaluate(evaluation), position);
}

namespace {

// And and or leave the right side unevaluated when the left decides, so a guard such as
// "IsEmpty ( x ) or f ( x )" keeps f away from empty values. Answers whether the left side decided.
[[gnu::noinline]] bool decidedByLeft(BinaryOperator op, FMX_Data& result) {
    if (op == BinaryOperator::Or && booleanOf(result)) {
        result = makeBoolean(true);
        return true;
    }
    if (op == BinaryOperator::And && !booleanOf(result)) {
        result = makeBoolean(false);
        return true;
    }
    return false;
}

// Kept out of line: its temporaries then stay off the stack frames that nested operators recurse through.
[[gnu::noinline]] void combine(FMX_Data& result, BinaryOperator op, const FMX_Data& right, SourcePosition where) {
    if (op == BinaryOperator::Concatenate) {
        // Append in place: a long run of & stays linear.
        if (result.type != FMX_TYPE_TEXT) result = makeText(textOf(result).units);
        result.text.units += textOf(right).units;
        result.invalidate();
        return;
    }
    result = applyBinary(op, result, right, where);
}

}  // namespace

FMX_Data ChainNode::evaluate(Evaluation& evaluation) const {
    if (links_.front().op == BinaryOperator::Power) return evaluatePower(evaluation);
    FMX_Data result = first_->evaluate(evaluation);
    for (const Link& link : links_) {
        if (decidedByLeft(link.op, result)) continue;
        combine(result, link.op, link.operand->evaluate(evaluation), link.position);
    }
    return result;
}

FMX_Data ChainNode::evaluatePower(Evaluation& evaluation) const {
    // Operands are evaluated left to right like everywhere else, then combined from the right.
    std::vector<FMX_Data> operands;
    operands.reserve(links_.size() + 1);
    operands.push_back(first_->evaluate(evaluation));
    for (const Link& link : links_) operands.push_back(link.operand->evaluate(evaluation));
    FMX_Data result = std::move(operands.back());
    for (size_t i = links_.size(); i-- > 0;)
        result = applyBinary(BinaryOperator::Power, operands[i], result, links_[i].position);
    return result;
}

}  // namespace vdhost::calc
