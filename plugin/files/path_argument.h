// A file function's path argument as the resolver needs it.
#pragma once

#include <fmx/fmx.h>

#include <cstdint>
#include <string>

namespace vd::files {

struct PathArgument {
    std::string text;                 // the value as text, UTF-8
    bool isText = true;               // the value's own type is text
    bool holdsContainerData = false;  // a container with at least one stream: not a path at all
};

PathArgument ReadPathArgument(const FMX_DataVect* args, uint32_t index);

}  // namespace vd::files
