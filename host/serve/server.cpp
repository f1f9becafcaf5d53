#include "server.h"

#include "access_guard.h"
#include "calc/interruption.h"
#include "routes.h"

#include <thread>

namespace vdhost::serve {

namespace {

constexpr const char* kLoopback = "127.0.0.1";
constexpr std::chrono::milliseconds kIdleInterval{100};
constexpr size_t kLargestRequestBody = 1 << 20;  // a calculation typed into a box

}  // namespace

void runServer(Session& session, const ServeOptions& options, std::ostream& out) {
    TemporaryFolder folder;
    PluginMedia media(session, folder.path());
    PicturePreviews previews(folder.path());
    media.prepare();  // before the server's threads start: see its comment

    std::optional<CalculationBox> box;
    if (options.allowCalculations) box.emplace(session);
    Pages pages(session, media, box ? &*box : nullptr);
    SessionWorker worker;

    httplib::Server server;
    server.set_payload_max_length(kLargestRequestBody);
    int port = options.port;
    if (port == 0) {
        port = server.bind_to_any_port(kLoopback);
        if (port < 0) throw std::runtime_error("cannot listen on 127.0.0.1");
    } else if (!server.bind_to_port(kLoopback, port)) {
        throw std::runtime_error("cannot listen on 127.0.0.1:" + std::to_string(port) + " (in use?)");
    }
    AccessGuard guard(newAccessToken(), port);
    installGuard(server, guard);
    auto routes = installRoutes(server, ServerParts{session, worker, media, previews, box ? &*box : nullptr, pages});

    out << "vdhost serve: open http://127.0.0.1:" << port << "/?token=" << guard.token() << "\n"
        << "vdhost serve: " << (options.allowCalculations ? "calculations allowed" : "read-only")
        << "; Ctrl-C ends it" << std::endl;

    std::thread listener([&] {
        server.listen_after_bind();
        worker.stop();
    });
    worker.run([&] { session.plugins().idle(0); }, [] { return calc::interruptionSignal() != 0; }, kIdleInterval);
    server.stop();
    listener.join();
    calc::throwIfInterrupted();
}

}  // namespace vdhost::serve

extern "C" void vdhostRunServer(vdhost::Session& session, const vdhost::serve::ServeOptions& options, std::ostream& out) {
    vdhost::serve::runServer(session, options, out);
}
