// Rounding to decimal places as a person would on the number as shown.
#pragma once

namespace vdhost::calc {

// Half away from zero, on the 15-significant-digit decimal form of the value (the form numbers are
// shown in), so that 1.005 rounds to 1.01 although the nearest double is slightly below 1.005.
// Negative places round to tens, hundreds, ...
double roundToPlaces(double value, int places);

}  // namespace vdhost::calc
