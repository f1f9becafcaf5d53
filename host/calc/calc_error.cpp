#include "calc_error.h"

namespace vdhost::calc {

CalcError::CalcError(Kind errorKind, SourcePosition where, const std::string& text)
    : std::runtime_error(describe(where) + ": " + text),
      kind(errorKind),
      line(where.line),
      column(where.column),
      message(text) {}

CalcError CalcError::handlerFailure(SourcePosition where, const std::string& nameUtf8, int code,
                                    const std::string& text) {
    CalcError error(Kind::Handler, where, text);
    error.handlerCode = code;
    error.functionName = nameUtf8;
    return error;
}

}  // namespace vdhost::calc
