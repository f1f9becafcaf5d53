// Libraries loaded when a function first needs them rather than with the plug-in: FFmpeg and
// libvips cost tens of milliseconds of loading and constructors, which every start of the host
// would otherwise pay, most often for a calculation that never touches a sound or a picture.
//
// The plug-in calls such a library through forwarders: functions of the library's own names and
// signatures that jump through the addresses resolved here.
#pragma once

#include <atomic>
#include <cstddef>
#include <mutex>
#include <span>
#include <string_view>

namespace vd::platform {

// One function to resolve: the index of the library (in the sonames given with it) that holds it,
// and its name. The library's dependencies are searched too, as the dynamic linker would.
struct LazySymbol {
    size_t library;
    const char* name;
};

// A set of libraries and the functions we call in them. Kept free of destructors: a forwarder may
// still run while the process exits (on a thread finishing its work), after the destructors of
// static objects have run.
class LazyLibraries {
public:
    // The tables are the caller's static ones; `slots` has one entry per symbol. When the
    // environment variable `testSwitch` is "unloadable", loading fails without trying: the tests'
    // way to see a machine whose libraries are present but cannot be loaded.
    constexpr LazyLibraries(std::span<const char* const> sonames, std::span<const LazySymbol> symbols,
                            std::span<void*> slots, const char* testSwitch)
        : sonames_(sonames), symbols_(symbols), slots_(slots), testSwitch_(testSwitch) {}

    LazyLibraries(const LazyLibraries&) = delete;
    LazyLibraries& operator=(const LazyLibraries&) = delete;

    // Opens every library with RTLD_NOW | RTLD_LOCAL and resolves every symbol, once per process;
    // the libraries then stay loaded for good (threads and objects of theirs may outlive any call
    // of ours, and the host never unloads us either). Answers "" when all is there, else why not
    // (the same answer on every call; nothing is resolved then, all or nothing).
    std::string_view Load();

    // The address of symbols[index], for its forwarder. Loads first if nobody has; an entry into
    // the layer that forgot to load and check is a bug, which stops the process here with the
    // function's name rather than jumping through a null pointer.
    void* Address(size_t index) {
        if (!loaded_.load(std::memory_order_acquire)) [[unlikely]]
            return AddressAfterLoad(index);
        return slots_[index];
    }

private:
    void* AddressAfterLoad(size_t index);

    std::span<const char* const> sonames_;
    std::span<const LazySymbol> symbols_;
    std::span<void*> slots_;
    const char* testSwitch_;
    std::once_flag once_;
    std::atomic<bool> loaded_{false};
    char problem_[512] = {};
};

// The result type of a function pointer type: what a forwarder returns.
template <class Function>
struct ReturnOf;
template <class Result, class... Parameters>
struct ReturnOf<Result (*)(Parameters...)> {
    using Type = Result;
};

}  // namespace vd::platform

// A module of forwarders lists the functions it calls once, in an X-macro LIST whose entries are
// X(library index, name, (parameters), (arguments)), and builds everything else from that list:
//   enum Function : size_t { LIST(VD_LAZY_INDEX) kFunctionCount };
//   constexpr LazySymbol kSymbols[] = {LIST(VD_LAZY_SYMBOL)};
//   #define FORWARD(library, name, parameters, arguments)
//       VD_LAZY_FORWARDER(owner::gLibraries, owner, name, parameters, arguments)   (one line)
//   LIST(FORWARD)   (at file scope)
#define VD_LAZY_INDEX(library, name, parameters, arguments) k_##name,
#define VD_LAZY_SYMBOL(library, name, parameters, arguments) {library, #name},
// The function under its own name and with its header's parameters (a C function of that name with
// other parameters does not compile), jumping to the library's function. Hidden, so that a library
// loaded beside us is never bound to it instead of the library's own.
#define VD_LAZY_FORWARDER(libraries, scope, name, parameters, arguments)                        \
    extern "C" __attribute__((visibility("hidden")))                                            \
    vd::platform::ReturnOf<decltype(&::name)>::Type name parameters {                           \
        using Function = decltype(&::name);                                                     \
        return reinterpret_cast<Function>(libraries.Address(scope::k_##name)) arguments;        \
    }
