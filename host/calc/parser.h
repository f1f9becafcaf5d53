// Turns a calculation's text into a tree. All names are resolved here: built-in and plug-in
// functions, Get attributes and the plain names of Let, so that a calculation that parses refers
// only to things that exist and evaluating it never looks a name up by text.
#pragma once

#include "syntax_tree.h"

#include <string_view>

namespace vdhost::calc {

struct ParsedCalculation {
    NodePtr root;
    size_t letSlots = 0;  // values an evaluation must hold for the plain names bound by Let
};

// Throws CalcError (Syntax or UnknownName) at the first problem.
ParsedCalculation parseCalculation(std::u16string_view text, SourcePosition start);

// Calculations nested deeper than this are refused: parsing and evaluating recurse once per level,
// and the limit keeps both far from the end of the stack.
constexpr int kMaxNesting = 200;

}  // namespace vdhost::calc
