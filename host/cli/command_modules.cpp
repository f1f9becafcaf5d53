#include "command_modules.h"

#include "commands.h"
#include "serve/server.h"

#include <dlfcn.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace vdhost::cli {

namespace {

// Where the module is: in the lib folder beside vdhost's bin folder, as built and as installed,
// else wherever the loader looks. The loader's own search by vdhost's run path is not enough: a
// sanitizer that wraps dlopen makes itself the caller whose run path counts.
std::string modulePath(const char* library) {
    std::error_code error;
    const std::filesystem::path beside =
        std::filesystem::read_symlink("/proc/self/exe", error).parent_path().parent_path() / "lib" / library;
    return !error && std::filesystem::exists(beside, error) ? beside.string() : std::string(library);
}

// The module stays loaded until the process ends: what it made (threads, handlers) may still
// refer to it.
void* moduleEntry(const char* library, const char* entry) {
    void* module = ::dlopen(modulePath(library).c_str(), RTLD_NOW | RTLD_LOCAL);
    const char* why = module ? nullptr : ::dlerror();
    void* function = module ? ::dlsym(module, entry) : nullptr;
    if (!function) {
        if (module) why = ::dlerror();
        throw std::runtime_error(std::string("cannot load ") + library + ": " + (why ? why : "no entry point"));
    }
    return function;
}

}  // namespace

void runServeModule(Session& session, const Options& o, std::ostream& out) {
    auto* run = reinterpret_cast<decltype(&vdhostRunServer)>(moduleEntry("libvdhost_serve.so", "vdhostRunServer"));
    run(session, serve::ServeOptions{o.port, o.allowCalculations}, out);
}

int runReplModule(Session& session, const Options& o) {
    auto* run = reinterpret_cast<decltype(&vdhostReplCommand)>(moduleEntry("libvdhost_repl.so", "vdhostReplCommand"));
    return run(session, o);
}

}  // namespace vdhost::cli
