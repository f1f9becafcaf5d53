#include "platform/ui/gtk_module_loader.h"

#include <memory>
#include <vector>

#include <dlfcn.h>

#include "util/status_codes.h"
#include "platform/ui/gtk_module_abi.h"

namespace vd::platform::ui {

namespace {

struct GtkModule {
    VdUiShowDialogFn show = nullptr;
    VdUiFreeFn free = nullptr;
    VdUiShowFormFn showForm = nullptr;
    VdUiMouseButtonDownFn mouseButtonDown = nullptr;
    VdUiShowEffectFormFn showEffectForm = nullptr;
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
    module.showForm = reinterpret_cast<VdUiShowFormFn>(::dlsym(handle, VD_UI_SHOW_FORM_SYMBOL));
    module.mouseButtonDown = reinterpret_cast<VdUiMouseButtonDownFn>(::dlsym(handle, VD_UI_MOUSE_BUTTON_DOWN_SYMBOL));
    module.showEffectForm = reinterpret_cast<VdUiShowEffectFormFn>(::dlsym(handle, VD_UI_SHOW_EFFECT_FORM_SYMBOL));
    if (!version || !module.show || !module.free || !module.showForm || !module.mouseButtonDown ||
        !module.showEffectForm || version() != VD_UI_MODULE_ABI_VERSION) {
        module.show = nullptr;
        module.showForm = nullptr;
        module.mouseButtonDown = nullptr;
        module.showEffectForm = nullptr;
        module.problem = "(no dialog can be shown: " + path + " is not a GTK module of this plug-in)";
    }
    return module;
}

// Loaded once per process; dialogs are shown on the host's main thread only.
const GtkModule& Module() {
    static const GtkModule module = LoadModule();
    return module;
}

// The status of a module's answer other than VD_UI_ACCEPTED, and why, when not by the user's hand.
util::Status NotAccepted(int result, std::string& detail) {
    if (result == VD_UI_NO_DISPLAY) detail = "(no dialog can be shown: GTK cannot open the display)";
    return util::kUserCancelled;
}

// What the module's preview callback reaches: the renderer and the frame it last drew, which the
// module copies before it asks again.
struct PreviewContext {
    const PreviewRenderer* render;
    PreviewFrame frame;
};

int RenderPreview(void* context, const double* values, int count, VdUiPreviewFrame* out) {
    auto* preview = static_cast<PreviewContext*>(context);
    try {
        if (!(*preview->render)(std::vector<double>(values, values + count), preview->frame)) return 1;
    } catch (...) {
        return 1;  // nothing may cross back into GTK's C frames
    }
    out->width = preview->frame.width;
    out->height = preview->frame.height;
    out->rgb = preview->frame.rgb.data();
    return 0;
}

}  // namespace

int GtkMouseButtonDown() {
    const GtkModule& module = Module();
    return module.mouseButtonDown ? module.mouseButtonDown() : -1;
}

std::string GtkModulePath() {
    Dl_info info{};
    if (::dladdr(reinterpret_cast<void*>(&Anchor), &info) == 0 || !info.dli_fname) return kGtkModuleName;
    std::string self = info.dli_fname;
    const size_t slash = self.rfind('/');
    const std::string folder = slash == std::string::npos ? std::string(".") : self.substr(0, slash);
    return folder + "/Resources/" + kGtkModuleName;
}

DialogAnswer ShowGtkDialog(const DialogRequest& request) {
    const GtkModule& module = Module();
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
    if (result != VD_UI_ACCEPTED) {
        answer.status = NotAccepted(result, answer.detail);
        return answer;
    }
    if (request.kind != DialogKind::Alert) {
        if (!owned) return DialogAnswer{util::kUserCancelled, {}, {}};
        answer.path = owned.get();
    }
    return answer;
}

FormAnswer ShowGtkForm(const FormRequest& request) {
    const GtkModule& module = Module();
    FormAnswer answer;
    if (!module.showForm) {
        answer.status = util::kUserCancelled;
        answer.detail = module.problem;
        return answer;
    }
    // The C structs point into the request, which outlives the call.
    std::vector<std::vector<const char*>> choiceLabels;
    std::vector<VdUiFormControl> controls;
    for (const FormControl& control : request.controls) {
        std::vector<const char*>& labels = choiceLabels.emplace_back();
        for (const FormChoice& choice : control.choices) labels.push_back(choice.label.c_str());
        controls.push_back(VdUiFormControl{control.label.c_str(), labels.data(), static_cast<int>(labels.size()),
                                           static_cast<int>(control.selected)});
    }
    const int result = module.showForm(request.title.c_str(), controls.data(), static_cast<int>(controls.size()));
    if (result != VD_UI_ACCEPTED) {
        answer.status = NotAccepted(result, answer.detail);
        return answer;
    }
    for (size_t i = 0; i < controls.size(); ++i) {
        const int chosen = controls[i].selected;
        // A module that answers outside the menu is not trusted with the setting: the form stays as it was.
        const bool offered = chosen >= 0 && static_cast<size_t>(chosen) < request.controls[i].choices.size();
        answer.selected.push_back(offered ? static_cast<size_t>(chosen) : request.controls[i].selected);
    }
    return answer;
}

EffectFormAnswer ShowGtkEffectForm(const EffectFormRequest& request) {
    const GtkModule& module = Module();
    if (!module.showEffectForm) return EffectFormAnswer{util::kUserCancelled, {}, module.problem};
    std::vector<VdUiEffectControl> controls;
    for (const EffectControl& c : request.controls)
        controls.push_back(VdUiEffectControl{c.label.c_str(), c.colour ? VD_UI_COLOUR : VD_UI_SLIDER, c.minimum,
                                             c.maximum, c.step, c.value});
    PreviewContext context{&request.preview, {}};
    const int result = module.showEffectForm(request.title.c_str(), controls.data(), static_cast<int>(controls.size()),
                                             request.preview ? RenderPreview : nullptr, &context);
    EffectFormAnswer answer;
    if (result != VD_UI_ACCEPTED) {
        answer.status = NotAccepted(result, answer.detail);
        return answer;
    }
    for (size_t i = 0; i < controls.size(); ++i) {
        const double v = controls[i].value;
        // A module that answers outside the range is not trusted with the setting.
        const bool inside = v >= request.controls[i].minimum && v <= request.controls[i].maximum;
        answer.values.push_back(inside ? v : request.controls[i].value);
    }
    return answer;
}

}  // namespace vd::platform::ui
