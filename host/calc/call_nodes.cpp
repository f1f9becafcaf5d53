#include "call_nodes.h"

#include "api/function_registry.h"
#include "api/text_codec.h"
#include "calc_error.h"
#include "interruption.h"

namespace vdhost::calc {

FMX_Data BuiltinCallNode::evaluate(Evaluation& evaluation) const {
    std::vector<FMX_Data> values;
    values.reserve(arguments_.size());
    for (const NodePtr& argument : arguments_) values.push_back(argument->evaluate(evaluation));
    throwIfInterrupted();
    if (function_.applyInContext) return function_.applyInContext(evaluation.context, values, position);
    return function_.apply(values, position);
}

FMX_Data ExternalCallNode::evaluate(Evaluation& evaluation) const {
    FMX_DataVect args;
    args.items.reserve(arguments_.size());
    for (const NodePtr& argument : arguments_) args.items.push_back(argument->evaluate(evaluation));

    const ExternalFunction* function = FunctionRegistry::instance().find(name_, static_cast<long>(args.items.size()));
    if (!function || !function->acceptsCount(args.items.size()))
        throw CalcError(CalcError::Kind::UnknownName, position,
                        "Function " + utf16ToUtf8(name_) + " is no longer registered");
    // The handler may unregister functions while it runs; keep what the error report needs.
    FMX_ExtPluginType handler = function->handler;
    int16_t id = function->id;
    std::u16string registeredName = function->name;

    // Checked before and after the call: a plug-in call cannot be stopped, but nothing after it runs.
    throwIfInterrupted();
    FMX_Data result;
    FMX_ErrCode code;
    bool threw = false;
    try {
        code = handler(id, evaluation.context.exprEnv(), &args, &result);
    } catch (...) {
        // Exceptions must not cross the plug-in boundary; one that does is a failure of the call.
        code = -1;
        threw = true;
    }
    if (code != FMX_NO_ERROR) {
        std::string name = utf16ToUtf8(registeredName);
        std::string text = name + " failed with error " + std::to_string(code);
        if (threw) text += " (it threw an exception)";
        throw CalcError::handlerFailure(position, name, code, text);
    }
    throwIfInterrupted();
    return result;
}

}  // namespace vdhost::calc
