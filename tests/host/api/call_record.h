// A fresh call record for one C API call: Rec() lives until the end of the call's full expression.
#pragma once

#include <fmx/fmx.h>

struct Rec : FMX_CallRecord {
    Rec() : FMX_CallRecord{FMX_RECORD_VERSION, FMX_RECORD_OK} {}
    operator FMX_CallRecord*() { return this; }
};
