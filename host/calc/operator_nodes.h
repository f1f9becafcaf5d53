// Operators in the tree. A run of left-associative operators of one precedence level is one
// ChainNode rather than a deep left-leaning tree, so that a long sum or concatenation costs no
// recursion depth; the right-associative ^ is a chain folded from the right.
#pragma once

#include "operators.h"
#include "syntax_tree.h"

namespace vdhost::calc {

class UnaryNode final : public Node {
public:
    UnaryNode(SourcePosition where, UnaryOperator op, NodePtr operand)
        : Node(where), op_(op), operand_(std::move(operand)) {}
    FMX_Data evaluate(Evaluation& evaluation) const override;

private:
    UnaryOperator op_;
    NodePtr operand_;
};

class ChainNode final : public Node {
public:
    struct Link {
        BinaryOperator op;
        SourcePosition position;  // of the operator
        NodePtr operand;
    };

    ChainNode(NodePtr first, std::vector<Link> links)
        : Node(first->position), first_(std::move(first)), links_(std::move(links)) {}
    FMX_Data evaluate(Evaluation& evaluation) const override;

private:
    FMX_Data evaluatePower(Evaluation& evaluation) const;

    NodePtr first_;
    std::vector<Link> links_;
};

}  // namespace vdhost::calc
