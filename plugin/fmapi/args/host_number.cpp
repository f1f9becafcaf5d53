#include "fmapi/args/host_number.h"

#include "fmapi/args/host_call.h"

namespace vd::fmapi {

FMX_FixPt* NewFixPt(int32_t value) {
    return Checked([&](FMX_CallRecord* r) { return FM_FixPt_Constructor1(value, r); });
}

void DeleteFixPt(FMX_FixPt* number) noexcept {
    if (number) Unchecked([&](FMX_CallRecord* r) { FM_FixPt_Delete(number, r); });
}

void FixPtAssignInt(FMX_FixPt* number, int32_t value) {
    Checked([&](FMX_CallRecord* r) { FM_FixPt_AssignInt(number, value, r); });
}

void FixPtAssignDouble(FMX_FixPt* number, double value) {
    Checked([&](FMX_CallRecord* r) { FM_FixPt_AssignDouble(number, value, r); });
}

int32_t FixPtAsLong(const FMX_FixPt* number) {
    return Checked([&](FMX_CallRecord* r) { return FM_FixPt_AsLong(number, r); });
}

double FixPtAsFloat(const FMX_FixPt* number) {
    return Checked([&](FMX_CallRecord* r) { return FM_FixPt_AsFloat(number, r); });
}

bool FixPtAsBool(const FMX_FixPt* number) {
    return Checked([&](FMX_CallRecord* r) { return FM_FixPt_AsBool(number, r); });
}

FMX_Locale* NewLocale(int32_t kind) {
    return Checked([&](FMX_CallRecord* r) { return FM_Locale_Constructor1(kind, r); });
}

void DeleteLocale(FMX_Locale* locale) noexcept {
    if (locale) Unchecked([&](FMX_CallRecord* r) { FM_Locale_Delete(locale, r); });
}

}  // namespace vd::fmapi
