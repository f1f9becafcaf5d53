#include "frame/functions/frame_functions.h"

#include "util/status_codes.h"

namespace vd {

fmapi::Outcome NotImplemented(const FunctionCall&) { return fmapi::Outcome::Failure(util::kUnimplemented); }

}  // namespace vd
