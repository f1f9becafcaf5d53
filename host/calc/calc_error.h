// The one exception a calculation throws, whether it failed to parse or to evaluate.
#pragma once

#include "source_position.h"

#include <stdexcept>
#include <string>

namespace vdhost::calc {

class CalcError : public std::runtime_error {
public:
    enum class Kind {
        Syntax,       // the text is not a well-formed calculation
        UnknownName,  // a function, name or Get attribute that does not exist
        Evaluation,   // the calculation parsed but could not be evaluated
        Handler       // an external function answered an error code
    };

    // what() is "line L, column C: message".
    CalcError(Kind errorKind, SourcePosition where, const std::string& text);

    // An external function that answered a non-zero code (or threw, which counts as code -1).
    static CalcError handlerFailure(SourcePosition where, const std::string& nameUtf8, int code,
                                    const std::string& text);

    Kind kind;
    int line;
    int column;
    int handlerCode = 0;       // Handler: the code the function answered
    std::string functionName;  // Handler: the function's registered name, UTF-8
    std::string message;       // what() without the position
};

}  // namespace vdhost::calc
