// Leaves of the tree: constants, names bound by Let, variables, fields and the file path.
#pragma once

#include "syntax_tree.h"

#include <string>

namespace vdhost::calc {

class LiteralNode final : public Node {
public:
    LiteralNode(SourcePosition where, FMX_Data value) : Node(where), value_(std::move(value)) {}
    FMX_Data evaluate(Evaluation& evaluation) const override;

private:
    FMX_Data value_;
};

// A plain name bound by an enclosing Let; the parser resolved it to the binding's slot.
class LetValueNode final : public Node {
public:
    LetValueNode(SourcePosition where, size_t slot) : Node(where), slot_(slot) {}
    FMX_Data evaluate(Evaluation& evaluation) const override;

private:
    size_t slot_;
};

// $name (the evaluation's locals) or $$name (the session's globals), named as written.
class VariableNode final : public Node {
public:
    VariableNode(SourcePosition where, std::u16string name, bool global)
        : Node(where), name_(std::move(name)), global_(global) {}
    FMX_Data evaluate(Evaluation& evaluation) const override;

private:
    std::u16string name_;
    bool global_;
};

class FieldNode final : public Node {
public:
    FieldNode(SourcePosition where, std::string table, std::string field)
        : Node(where), table_(std::move(table)), field_(std::move(field)) {}
    FMX_Data evaluate(Evaluation& evaluation) const override;

private:
    std::string table_;  // UTF-8, as Context::field takes them
    std::string field_;
};

// Get ( FilePath )
class FilePathNode final : public Node {
public:
    explicit FilePathNode(SourcePosition where) : Node(where) {}
    FMX_Data evaluate(Evaluation& evaluation) const override;
};

}  // namespace vdhost::calc
