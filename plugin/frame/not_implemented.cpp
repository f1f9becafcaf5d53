#include "frame/not_implemented.h"

#include "util/status_codes.h"

namespace vd {

fmapi::Outcome NotImplemented(const FunctionCall&) { return fmapi::Outcome::Failure(util::kUnimplemented); }

}  // namespace vd
