#include "platform/ui/gtk_module_loader.h"

#include <memory>

#include <dlfcn.h>

#include "util/status_codes.h"
#include "platform/ui/gtk_module_abi.h"

namespace vd::platform::ui {

namespace {

struct GtkModule {
    VdUiShowDialogFn show = nullptr;
    VdUiFreeFn free = nullptr;
    std::string problem;  // why it could not be loaded; empty when it was
};

struct ModuleText {
    VdUiFreeFn free;
    void operator()(char* text) const noexcept {
        if (text) free(text);
    }
};

void Anchor() {}

GtkModule LoadModule() {
    GtkModule module;
    const std::string path = GtkModulePath();
    // RTLD_NODELETE: GTK registers types and exit handlers that must outlive any unloading of us.
    void* handle = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (!handle) {
        const char* reason = ::dlerror();
        module.problem = "(no dialog can be shown: the GTK module cannot be loaded: " +
                         std::string(reason ? reason : path) + ")";
        return module;
    }
    auto version = reinterpret_cast<VdUiAbiVersionFn>(::dlsym(handle, VD_UI_ABI_VERSION_SYMBOL));
    module.show = reinterpret_cast<VdUiShowDialogFn>(::dlsym(handle, VD_UI_SHOW_DIALOG_SYMBOL));
    module.free = reinterpret_cast<VdUiFreeFn>(::dlsym(handle, VD_UI_FREE_SYMBOL));
    if (!version || !module.show || !module.free || version() != VD_UI_MODULE_ABI_VERSION) {
        module.show = nullptr;
        module.problem = "(no dialog can be shown: " + path + " is not a GTK module of this plug-in)";
    }
    return module;
}

}  // namespace

std::string GtkModulePath() {
    Dl_info info{};
    if (::dladdr(reinterpret_cast<void*>(&Anchor), &info) == 0 || !info.dli_fname) return kGtkModuleName;
    std::string self = info.dli_fname;
    const size_t slash = self.rfind('/');
    const std::string folder = slash == std::string::npos ? std::string(".") : self.substr(0, slash);
    return folder + "/Resources/" + kGtkModuleName;
}

DialogAnswer ShowGtkDialog(const DialogRequest& request) {
    // Loaded once per process; dialogs are shown on the host's main thread only.
    static const GtkModule module = LoadModule();
    DialogAnswer answer;
    if (!module.show) {
        answer.status = util::kUserCancelled;
        answer.detail = module.problem;
        return answer;
    }
    char* chosen = nullptr;
    const int result = module.show(static_cast<int>(request.kind), request.prompt.c_str(),
                                   request.startFolder.c_str(), &chosen);
    const std::unique_ptr<char, ModuleText> owned(chosen, ModuleText{module.free});
    switch (result) {
        case VD_UI_ACCEPTED:
            if (request.kind != DialogKind::Alert) {
                if (!owned) return DialogAnswer{util::kUserCancelled, {}, {}};
                answer.path = owned.get();
            }
            return answer;
        case VD_UI_NO_DISPLAY:
            answer.status = util::kUserCancelled;
            answer.detail = "(no dialog can be shown: GTK cannot open the display)";
            return answer;
        default:
            answer.status = util::kUserCancelled;
            return answer;
    }
}

}  // namespace vd::platform::ui
