// FM_FixPt_* and FM_Locale_*: numbers and locales.
#include "host_call.h"
#include "objects.h"

#include <cmath>
#include <limits>

using namespace vdhost;

FMX_API FMX_FixPt* FM_FixPt_Constructor1(int32_t value, FMX_CallRecord* rec) {
    return hostCall(rec, [&] { return new FMX_FixPt{static_cast<double>(value)}; });
}

FMX_API void FM_FixPt_Delete(FMX_FixPt* number, FMX_CallRecord* rec) {
    hostCall(rec, [&] { delete number; });
}

FMX_API void FM_FixPt_AssignInt(FMX_FixPt* number, int32_t value, FMX_CallRecord* rec) {
    hostCall(rec, [&] { deref(number).value = value; });
}

FMX_API void FM_FixPt_AssignDouble(FMX_FixPt* number, double value, FMX_CallRecord* rec) {
    hostCall(rec, [&] {
        auto& n = deref(number);
        if (!std::isfinite(value)) throw CallFailure();
        n.value = value;
    });
}

FMX_API int32_t FM_FixPt_AsLong(const FMX_FixPt* number, FMX_CallRecord* rec) {
    return hostCall(rec, [&]() -> int32_t {
        double v = std::trunc(deref(number).value);
        if (std::isnan(v)) return 0;
        if (v >= std::numeric_limits<int32_t>::max()) return std::numeric_limits<int32_t>::max();
        if (v <= std::numeric_limits<int32_t>::min()) return std::numeric_limits<int32_t>::min();
        return static_cast<int32_t>(v);
    });
}

FMX_API double FM_FixPt_AsFloat(const FMX_FixPt* number, FMX_CallRecord* rec) {
    return hostCall(rec, [&] { return deref(number).value; });
}

FMX_API bool FM_FixPt_AsBool(const FMX_FixPt* number, FMX_CallRecord* rec) {
    return hostCall(rec, [&] { return deref(number).value != 0; });
}

FMX_API FMX_Locale* FM_Locale_Constructor1(int32_t kind, FMX_CallRecord* rec) {
    return hostCall(rec, [&] { return new FMX_Locale{kind}; });
}

FMX_API void FM_Locale_Delete(FMX_Locale* locale, FMX_CallRecord* rec) {
    hostCall(rec, [&] { delete locale; });
}
