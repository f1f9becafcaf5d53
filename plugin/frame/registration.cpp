#include "frame/registration.h"

#include "fmapi/args/host_exprenv.h"
#include "fmapi/args/host_text.h"
#include "fmapi/args/results.h"
#include "fmapi/errors/localized_strings.h"
#include "frame/function_table.h"
#include "frame/handler_dispatch.h"
#include "image/transform/transform_state.h"

#include <string>

namespace vd {

int16_t gNextFunctionId = kFirstNumberedId;

namespace {

constexpr uint32_t kPrototypeCapacity = 1024;

fmapi::OwnedQuadChar PluginId() {
    return fmapi::OwnedQuadChar(fmapi::NewQuadChar(kPluginId[0], kPluginId[1], kPluginId[2], kPluginId[3]));
}

// A sound function's name is its localized prototype up to the "(" (blanks before it dropped), so a
// translated prototype and the name the host matches can never disagree.
std::u16string NameOfPrototype(std::u16string_view prototype) {
    std::u16string name(prototype.substr(0, prototype.find(u'(')));
    while (!name.empty() && name.back() == u' ') name.pop_back();
    return name;
}

FMX_ErrCode Register(const FMX_QuadChar* pluginId, const FunctionEntry& entry, const FMX_Text* name,
                     const FMX_Text* prototype) {
    return fmapi::RegisterExternalFunction(pluginId, entry.id, name, prototype, entry.minArgs, entry.maxArgs,
                                          entry.flags, DispatchCall);
}

FMX_ErrCode RegisterSound(const FMX_QuadChar* pluginId, const FunctionEntry& entry) noexcept {
    try {
        std::u16string prototype = LocalizedString(entry.prototypeKey, kPrototypeCapacity);
        fmapi::OwnedText name, prototypeText;
        TextFromUtf16(name.get(), NameOfPrototype(prototype));
        TextFromUtf16(prototypeText.get(), prototype);
        return Register(pluginId, entry, name.get(), prototypeText.get());
    } catch (const std::bad_alloc&) {
        return FMX_ERR_MEMORY;
    } catch (...) {
        return -1;
    }
}

void Unregister(const FMX_QuadChar* pluginId, int16_t id) noexcept {
    try {
        fmapi::UnRegisterExternalFunction(pluginId, id);
    } catch (...) {
        // Nothing to undo: the host either forgot the id or never had it.
    }
}

}  // namespace

bool RegisterSoundGroup() noexcept {
    try {
        auto pluginId = PluginId();
        for (const auto& entry : FunctionTable()) {
            if (entry.group != FunctionGroup::Sound) continue;
            if (RegisterSound(pluginId.get(), entry) != 0) {
                for (int16_t id = static_cast<int16_t>(entry.id - 1); id >= 1; --id) Unregister(pluginId.get(), id);
                return false;
            }
        }
        return true;
    } catch (...) {
        return false;  // the plug-in id itself could not be made: nothing was registered
    }
}

void RegisterImageGroup() noexcept {
    gNextFunctionId = kFirstNumberedId;
    try {
        auto pluginId = PluginId();
        for (const auto& entry : FunctionTable()) {
            if (entry.group == FunctionGroup::Sound) continue;
            if (entry.group != FunctionGroup::Unregistered) {
                try {
                    fmapi::OwnedText name, prototype;
                    TextFromC(name.get(), entry.name, FMX_ENCODING_NATIVE);
                    TextFromC(prototype.get(), entry.prototype, FMX_ENCODING_NATIVE);
                    Register(pluginId.get(), entry, name.get(), prototype.get());
                } catch (...) {
                    // A function the host would not take is missing; the others still work.
                }
            }
            ++gNextFunctionId;
        }
    } catch (...) {
        // The plug-in id could not be made; ids are still used up so that shut-down covers them.
        gNextFunctionId = kNextIdAfterRegistration;
    }
    // Each start of the plug-in begins with no transformation.
    image::ClearTransform(image::SharedTransformState());
}

void UnregisterAllFunctions() noexcept {
    try {
        auto pluginId = PluginId();
        for (; gNextFunctionId != 0; --gNextFunctionId) Unregister(pluginId.get(), gNextFunctionId);
    } catch (...) {
        gNextFunctionId = 0;  // without a plug-in id the host cannot be asked; it drops ours at unload
    }
}

}  // namespace vd
