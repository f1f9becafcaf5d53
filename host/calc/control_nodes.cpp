#include "control_nodes.h"

#include "api/values.h"

namespace vdhost::calc {

FMX_Data LetNode::evaluate(Evaluation& evaluation) const {
    for (const Binding& binding : bindings_) {
        FMX_Data value = binding.value->evaluate(evaluation);
        switch (binding.target) {
            case Binding::Target::LetName: evaluation.letValues[binding.slot] = std::move(value); break;
            case Binding::Target::Local: evaluation.locals.set(binding.name, std::move(value)); break;
            case Binding::Target::Global: evaluation.context.globals().set(binding.name, std::move(value)); break;
        }
    }
    return body_->evaluate(evaluation);
}

FMX_Data CaseNode::evaluate(Evaluation& evaluation) const {
    for (const Branch& branch : branches_)
        if (booleanOf(branch.test->evaluate(evaluation))) return branch.result->evaluate(evaluation);
    return fallback_ ? fallback_->evaluate(evaluation) : FMX_Data{};
}

}  // namespace vdhost::calc
