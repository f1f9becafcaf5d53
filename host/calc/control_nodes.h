// Let, If and Case: the nodes that decide what else gets evaluated.
#pragma once

#include "syntax_tree.h"

#include <string>

namespace vdhost::calc {

class LetNode final : public Node {
public:
    struct Binding {
        enum class Target { LetName, Local, Global };
        Target target;
        size_t slot = 0;     // LetName
        std::u16string name;  // Local and Global, with their $ or $$
        NodePtr value;
    };

    LetNode(SourcePosition where, std::vector<Binding> bindings, NodePtr body)
        : Node(where), bindings_(std::move(bindings)), body_(std::move(body)) {}
    FMX_Data evaluate(Evaluation& evaluation) const override;

private:
    std::vector<Binding> bindings_;  // in order: each sees the ones before it
    NodePtr body_;
};

// Case ( test1 ; result1 ; ... ; default ), and If as a Case with one test. Only the first test
// that holds has its result evaluated; later tests are not evaluated at all.
class CaseNode final : public Node {
public:
    struct Branch {
        NodePtr test;
        NodePtr result;
    };

    CaseNode(SourcePosition where, std::vector<Branch> branches, NodePtr fallback)
        : Node(where), branches_(std::move(branches)), fallback_(std::move(fallback)) {}
    FMX_Data evaluate(Evaluation& evaluation) const override;

private:
    std::vector<Branch> branches_;
    NodePtr fallback_;  // may be null: empty text
};

}  // namespace vdhost::calc
