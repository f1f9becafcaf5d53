// The parsed form of a calculation: a tree of nodes that evaluate themselves. Trees are immutable
// after parsing, so one tree may be evaluated any number of times.
#pragma once

#include "api/objects.h"
#include "context.h"
#include "source_position.h"

#include <memory>
#include <vector>

namespace vdhost::calc {

// The state of one evaluation of a tree.
struct Evaluation {
    Context& context;
    Variables& locals;  // the $ variables
    // The values of the plain names bound by Let, by the slot the parser gave each binding.
    std::vector<FMX_Data> letValues;
};

class Node {
public:
    explicit Node(SourcePosition where) : position(where) {}
    virtual ~Node() = default;
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    virtual FMX_Data evaluate(Evaluation& evaluation) const = 0;

    // Where errors found while evaluating the node are reported.
    const SourcePosition position;
};

using NodePtr = std::unique_ptr<Node>;
using NodeList = std::vector<NodePtr>;

}  // namespace vdhost::calc
