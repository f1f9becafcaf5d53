// The argument-count check of functions that take an exact number of arguments.
#pragma once

#include <fmx/fmx.h>

#include <string>

namespace vd {

// expected -1 accepts any count. A different count stores "Requires no parameters", "Requires
// exactly one parameter" or "Requires exactly N parameters" as the legacy result (20100) and
// answers 1; a matching count answers 0.
int CheckArgCount(const FMX_DataVect* args, int expected);

// The message of a failed check for that expected count, and its status text "$20100:...".
std::string ArgCountMessage(int expected);
std::string ArgCountStatusText(int expected);

}  // namespace vd
