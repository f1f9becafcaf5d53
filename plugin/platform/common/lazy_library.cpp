#include "platform/common/lazy_library.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace vd::platform {

namespace {

void Describe(char (&problem)[512], const char* first, const char* second = "") {
    std::snprintf(problem, sizeof problem, "%s%s", first, second);
}

}  // namespace

std::string_view LazyLibraries::Load() {
    std::call_once(once_, [this] {
        if (const char* value = testSwitch_ ? std::getenv(testSwitch_) : nullptr;
            value && std::strcmp(value, "unloadable") == 0) {
            Describe(problem_, testSwitch_, "=unloadable");
            return;
        }
        std::vector<void*> handles;
        for (const char* soname : sonames_) {
            void* handle = ::dlopen(soname, RTLD_NOW | RTLD_LOCAL);
            if (!handle) {
                const char* reason = ::dlerror();
                Describe(problem_, reason ? reason : soname, reason ? "" : ": cannot be loaded");
                return;
            }
            handles.push_back(handle);
        }
        // Into a copy first: the forwarders see either every address or none.
        std::vector<void*> found(symbols_.size());
        for (size_t i = 0; i < symbols_.size(); ++i) {
            const LazySymbol& symbol = symbols_[i];
            found[i] = ::dlsym(handles[symbol.library], symbol.name);
            if (!found[i]) {
                std::snprintf(problem_, sizeof problem_, "%s has no function %s", sonames_[symbol.library],
                              symbol.name);
                return;
            }
        }
        std::copy(found.begin(), found.end(), slots_.begin());
        loaded_.store(true, std::memory_order_release);
    });
    return problem_;
}

void* LazyLibraries::AddressAfterLoad(size_t index) {
    if (!Load().empty()) {
        std::fprintf(stderr, "Vandrel: %s was called although its library could not be loaded (%s)\n",
                     symbols_[index].name, problem_);
        std::abort();
    }
    return slots_[index];
}

}  // namespace vd::platform
