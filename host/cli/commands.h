// vdhost's commands. Each answers an exit status.
#pragma once

#include "options.h"

namespace vdhost::cli {

int runCommand(const Options& options);

// vdhost repl, in the module libvdhost_repl.so.
extern "C" int vdhostReplCommand(Session& session, const Options& options);

}  // namespace vdhost::cli
