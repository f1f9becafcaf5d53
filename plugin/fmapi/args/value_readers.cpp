#include "fmapi/args/value_readers.h"

#include "fmapi/args/arguments.h"
#include "fmapi/args/host_number.h"
#include "util/status_codes.h"

namespace vd {

namespace {

bool IsNumberArgument(const FMX_DataVect* args, uint32_t i) {
    int32_t type = ArgType(ArgData(args, i));
    return type == FMX_TYPE_NUMBER || type == FMX_TYPE_BOOLEAN;
}

}  // namespace

int16_t ArgTime(const FMX_DataVect* args, uint32_t i, uint32_t& fixed) {
    if (i >= ArgCount(args)) return util::kBadParameter;
    if (IsNumberArgument(args, i)) return util::TimeFromSeconds(fmapi::FixPtAsFloat(ArgNumber(args, i)), fixed);
    return util::ParseTimeText(ArgCText(ArgText(args, i)), fixed);
}

int16_t ArgSignedTime(const FMX_DataVect* args, uint32_t i, util::SignedFixedTime& time) {
    if (i >= ArgCount(args)) return util::kBadParameter;
    if (IsNumberArgument(args, i))
        return util::SignedTimeFromSeconds(fmapi::FixPtAsFloat(ArgNumber(args, i)), time);
    return util::ParseSignedTimeText(ArgCText(ArgText(args, i)), time);
}

int16_t ArgColor(const FMX_DataVect* args, uint32_t i, util::RgbColor& color) {
    if (i >= ArgCount(args)) return util::kBadParameter;
    return util::ParseHtmlColor(ArgCText(ArgText(args, i)), color);
}

}  // namespace vd
