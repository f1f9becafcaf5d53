// Thin wrappers over the host's number and locale calls (FM_FixPt_*, FM_Locale_*), one per call,
// and owners for the objects they make.
#pragma once

#include <fmx/data.h>

#include <cstdint>
#include <memory>

namespace vd::fmapi {

FMX_FixPt* NewFixPt(int32_t value);
void DeleteFixPt(FMX_FixPt* number) noexcept;
void FixPtAssignInt(FMX_FixPt* number, int32_t value);
void FixPtAssignDouble(FMX_FixPt* number, double value);
int32_t FixPtAsLong(const FMX_FixPt* number);
double FixPtAsFloat(const FMX_FixPt* number);
bool FixPtAsBool(const FMX_FixPt* number);

FMX_Locale* NewLocale(int32_t kind);
void DeleteLocale(FMX_Locale* locale) noexcept;

struct FixPtDeleter {
    void operator()(FMX_FixPt* number) const noexcept { DeleteFixPt(number); }
};
struct LocaleDeleter {
    void operator()(FMX_Locale* locale) const noexcept { DeleteLocale(locale); }
};

class OwnedFixPt {
public:
    explicit OwnedFixPt(int32_t value = 0) : number_(NewFixPt(value)) {}
    FMX_FixPt* get() const { return number_.get(); }

private:
    std::unique_ptr<FMX_FixPt, FixPtDeleter> number_;
};

class OwnedLocale {
public:
    explicit OwnedLocale(int32_t kind) : locale_(NewLocale(kind)) {}
    FMX_Locale* get() const { return locale_.get(); }

private:
    std::unique_ptr<FMX_Locale, LocaleDeleter> locale_;
};

}  // namespace vd::fmapi
