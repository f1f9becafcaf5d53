#include "frame/functions/frame_functions.h"

#include "platform/ui/mouse_button.h"

namespace vd {

fmapi::Outcome MouseUpFunction(const FunctionCall&) {
    return fmapi::Outcome::Number(platform::ui::MouseButtonDown() ? 0 : 1);
}

}  // namespace vd
