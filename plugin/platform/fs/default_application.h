// Opening an item with the application the desktop associates with it, as a double-click would.
#pragma once

#include <string>

#include "util/status_codes.h"

namespace vd::platform::fs {

// Hands the item to xdg-open, started in a session of its own and not waited for: the function
// must not block until the user closes the application, and the application must outlive the host.
// Answers only whether it could be started; what xdg-open then does is the desktop's business.
util::Status OpenWithDefaultApplication(const std::string& path);

}  // namespace vd::platform::fs
