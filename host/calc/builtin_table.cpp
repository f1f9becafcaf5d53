#include "builtin_function.h"

#include "case_folding.h"

namespace vdhost::calc {

const BuiltinFunction* findBuiltin(std::u16string_view name) {
    // Only the parser looks names up, once per call in the text, so a plain scan is enough.
    for (auto family : {textFunctions(), searchFunctions(), valueListFunctions(), numberFunctions(),
                        logicalFunctions(), base64Functions(), recordFunctions()})
        for (const BuiltinFunction& f : family)
            if (equalIgnoringCase(f.name, name)) return &f;
    return nullptr;
}

}  // namespace vdhost::calc
