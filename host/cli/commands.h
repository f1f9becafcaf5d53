// vdhost's commands. Each answers an exit status.
#pragma once

#include "options.h"

namespace vdhost::cli {

int runCommand(const Options& options);

int replCommand(Session& session, const Options& options);

}  // namespace vdhost::cli
