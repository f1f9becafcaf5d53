#include "files/path_argument.h"

#include "fmapi/args/arguments.h"
#include "fmapi/args/host_binary.h"

namespace vd::files {

namespace {

constexpr int32_t kTextType = 1;
constexpr int32_t kContainerType = 6;

}  // namespace

PathArgument ReadPathArgument(const FMX_DataVect* args, uint32_t index) {
    PathArgument argument;
    const FMX_Data* data = ArgData(args, index);
    const int32_t type = ArgType(data);
    argument.isText = type == kTextType;
    if (type == kContainerType) {
        const FMX_BinaryData* binary = fmapi::DataGetBinaryData(data);
        argument.holdsContainerData = binary && fmapi::BinaryGetCount(binary) > 0;
    }
    argument.text = ArgCText(ArgText(args, index));
    return argument;
}

}  // namespace vd::files
