// Calls of built-in and external (plug-in) functions.
#pragma once

#include "builtin_function.h"
#include "syntax_tree.h"

#include <string>

namespace vdhost::calc {

class BuiltinCallNode final : public Node {
public:
    BuiltinCallNode(SourcePosition where, const BuiltinFunction& function, NodeList arguments)
        : Node(where), function_(function), arguments_(std::move(arguments)) {}
    FMX_Data evaluate(Evaluation& evaluation) const override;

private:
    const BuiltinFunction& function_;
    NodeList arguments_;
};

// A function a plug-in registered. It is found again by name at every call rather than kept from
// parse time: a plug-in may unregister its functions (or be unloaded) while a parsed calculation
// lives on, and a call must then fail cleanly instead of jumping into unloaded code.
class ExternalCallNode final : public Node {
public:
    ExternalCallNode(SourcePosition where, std::u16string name, NodeList arguments)
        : Node(where), name_(std::move(name)), arguments_(std::move(arguments)) {}
    FMX_Data evaluate(Evaluation& evaluation) const override;

private:
    std::u16string name_;
    NodeList arguments_;
};

}  // namespace vdhost::calc
