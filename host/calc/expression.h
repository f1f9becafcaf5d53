// The calculation engine's entry point: parse a calculation once, evaluate it any number of times.
#pragma once

#include "api/objects.h"
#include "calc_error.h"
#include "context.h"
#include "continuation.h"
#include "variables.h"

#include <memory>
#include <string_view>

namespace vdhost::calc {

class Node;

class Expression {
public:
    // Throws CalcError (Syntax or UnknownName). startLine and startColumn are the position of the
    // text's first character, so that a calculation inside a script reports positions in the script.
    static std::unique_ptr<Expression> parse(std::u16string_view text, int startLine = 1, int startColumn = 1);

    // Throws CalcError (Evaluation or Handler). $ variables are read and set in locals; $$ variables
    // in context.globals(). The expression itself does not change, so evaluations may share it.
    FMX_Data evaluate(Context& context, Variables& locals) const;

    ~Expression();
    Expression(const Expression&) = delete;
    Expression& operator=(const Expression&) = delete;

private:
    Expression(std::unique_ptr<Node> root, size_t letSlots);

    std::unique_ptr<Node> root_;
    size_t letSlots_;
};

// Parses and evaluates once.
FMX_Data evaluate(std::u16string_view text, Context& context, Variables& locals);

}  // namespace vdhost::calc
