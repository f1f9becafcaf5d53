#include "value_nodes.h"

#include "api/values.h"
#include "calc_error.h"

namespace vdhost::calc {

FMX_Data LiteralNode::evaluate(Evaluation&) const { return value_; }

FMX_Data LetValueNode::evaluate(Evaluation& evaluation) const { return evaluation.letValues[slot_]; }

FMX_Data VariableNode::evaluate(Evaluation& evaluation) const {
    const Variables& scope = global_ ? evaluation.context.globals() : evaluation.locals;
    return scope.get(name_);
}

FMX_Data FieldNode::evaluate(Evaluation& evaluation) const {
    auto value = evaluation.context.field(table_, field_);
    if (!value)
        throw CalcError(CalcError::Kind::Evaluation, position, "Field not found: " + table_ + "::" + field_);
    return std::move(*value);
}

FMX_Data FilePathNode::evaluate(Evaluation& evaluation) const { return makeText(evaluation.context.filePath()); }

}  // namespace vdhost::calc
