// Functions built into the calculation language. Each family of functions lives in its own file
// and lists its entries; findBuiltin() looks through all of them. Let, If, Case, Get and the
// bracketed pairs of Substitute have syntax of their own and are handled by the parser.
#pragma once

#include "api/objects.h"
#include "source_position.h"

#include <span>
#include <string_view>

namespace vdhost::calc {

class Context;

struct BuiltinFunction {
    std::u16string_view name;
    int minArgs;
    int maxArgs;  // -1: no upper limit
    // Arguments arrive evaluated, their count within the range. where: the call, for errors.
    FMX_Data (*apply)(std::span<const FMX_Data> args, SourcePosition where);
    // Instead of apply, for the functions that reach the database through the context.
    FMX_Data (*applyInContext)(Context& context, std::span<const FMX_Data> args, SourcePosition where) = nullptr;

    bool acceptsCount(size_t n) const {
        return n >= static_cast<size_t>(minArgs) && (maxArgs < 0 || n <= static_cast<size_t>(maxArgs));
    }
};

// nullptr when no built-in function has that name (matched without regard to case).
const BuiltinFunction* findBuiltin(std::u16string_view name);

std::span<const BuiltinFunction> textFunctions();
std::span<const BuiltinFunction> searchFunctions();
std::span<const BuiltinFunction> valueListFunctions();
std::span<const BuiltinFunction> numberFunctions();
std::span<const BuiltinFunction> logicalFunctions();
std::span<const BuiltinFunction> base64Functions();
std::span<const BuiltinFunction> recordFunctions();

}  // namespace vdhost::calc
