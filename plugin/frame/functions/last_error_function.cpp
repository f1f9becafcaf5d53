#include "frame/functions/frame_functions.h"

#include "fmapi/errors/vds_error.h"

namespace vd {

fmapi::Outcome LastErrorFunction(const FunctionCall&) {
    // The host shows results of any length, but this text has always been cut to 511 bytes.
    char status[512];
    FormatLast(status, sizeof status);
    return fmapi::Outcome::Text(status);
}

}  // namespace vd
