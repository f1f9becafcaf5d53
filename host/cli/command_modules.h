// vdhost's commands that need a heavy library live in modules of their own (libvdhost_serve.so,
// libvdhost_repl.so), loaded when one of them runs; see host/CMakeLists.txt.
#pragma once

#include "options.h"

#include <ostream>

namespace vdhost::cli {

// Each loads its module (throwing std::runtime_error with the loader's reason when it cannot) and
// runs the command.
void runServeModule(Session& session, const Options& options, std::ostream& out);
int runReplModule(Session& session, const Options& options);

}  // namespace vdhost::cli
