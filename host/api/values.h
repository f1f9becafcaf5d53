// Making data values and converting them between text, number and boolean the way the host's
// calculations do.
#pragma once

#include "objects.h"

#include <string>
#include <string_view>

namespace vdhost {

FMX_Data makeText(std::u16string text);
FMX_Data makeTextUtf8(std::string_view text);
FMX_Data makeNumber(double value);
FMX_Data makeBoolean(bool value);
FMX_Data makeContainer(FMX_BinaryData binary, std::u16string ownText = {});

bool isContainer(const FMX_Data& d);
bool isNumeric(const FMX_Data& d);  // number or boolean

// Numbers as text: integers without a decimal point; other values with up to 15 significant digits
// and no trailing zeros; an exponent only outside 1e-5 .. 1e15.
std::u16string formatNumber(double value);

// Text as number: the digits of the text, its first decimal point and a minus sign before the first
// digit, everything else ignored ("3 apples" is 3, "1-2" is 12). No digit at all: nullopt.
std::optional<double> parseNumber(std::u16string_view text);

const FMX_Text& textOf(const FMX_Data& d);
double numberOf(const FMX_Data& d);  // 0 when the text holds no number
bool booleanOf(const FMX_Data& d);   // number not 0
bool emptyOf(const FMX_Data& d);

std::string utf8Of(const FMX_Data& d);

// Four-character codes as text and back.
std::string fourCharText(uint32_t code);
uint32_t fourCharCode(std::string_view text);  // text of exactly 4 bytes

}  // namespace vdhost
