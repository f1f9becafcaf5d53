// vdhost serve: a web view of the database on the loopback address (see access_guard.h for who may
// use it). It runs until SIGINT or SIGTERM, which it reports as calc::Interrupted.
#pragma once

#include "session/session.h"

#include <ostream>

namespace vdhost::serve {

struct ServeOptions {
    int port = 8080;  // 0: any free port
    bool allowCalculations = false;
};

// Prints the address to open, with its token, on out once the server listens. Throws
// std::runtime_error when the port cannot be had.
void runServer(Session& session, const ServeOptions& options, std::ostream& out);

}  // namespace vdhost::serve

// runServer, as vdhost finds it in the module libvdhost_serve.so.
extern "C" void vdhostRunServer(vdhost::Session& session, const vdhost::serve::ServeOptions& options, std::ostream& out);
