// Vandrel_EffectDialog asks for an effect's settings; Vandrel_EffectApply draws an effect on a
// picture.
#include "image/functions/effect_functions.h"

#include "fmapi/args/arguments.h"
#include "image/effect_application.h"
#include "image/effect_dialog.h"

namespace vd::image {

namespace {

// An optional picture argument: absent, or given empty, is none.
const FMX_Data* OptionalPicture(const FMX_DataVect* args, uint32_t i) {
    if (ArgCount(args) <= i) return nullptr;
    const FMX_Data* data = ArgData(args, i);
    return ArgEmpty(data) ? nullptr : data;
}

}  // namespace

fmapi::Outcome EffectDialogFunction(const FunctionCall& call) {
    return RunEffectDialog(ArgCText(ArgText(call.args, 0)), OptionalPicture(call.args, 1),
                           OptionalPicture(call.args, 2));
}

fmapi::Outcome EffectApplyFunction(const FunctionCall& call) {
    return ApplyEffect(ArgData(call.args, 0), ArgCText(ArgText(call.args, 1)), OptionalPicture(call.args, 2));
}

}  // namespace vd::image
