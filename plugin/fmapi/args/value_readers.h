// Arguments that later functions share: times and colours. A time comes as a host number (seconds) or
// as a text ("90", "1.5", "1:30", "01:02:03.5"); a colour as an HTML colour text.
#pragma once

#include "util/html_color.h"
#include "util/time_text.h"

#include <fmx/fmx.h>

#include <cstdint>

namespace vd {

// Argument i as unsigned 16.16 seconds. -50 for a missing argument, a negative or malformed time.
int16_t ArgTime(const FMX_DataVect* args, uint32_t i, uint32_t& fixed);
// As ArgTime, but a negative time is allowed and reported (fades count back from the end).
int16_t ArgSignedTime(const FMX_DataVect* args, uint32_t i, util::SignedFixedTime& time);
// Argument i as a colour. -50 for a missing argument or a text that is no colour.
int16_t ArgColor(const FMX_DataVect* args, uint32_t i, util::RgbColor& color);

}  // namespace vd
