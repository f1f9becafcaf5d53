#include "frame/extern_call.h"

#include "fmapi/errors/localized_strings.h"
#include "frame/lifecycle.h"
#include "frame/subsystems.h"
#include "frame/string_requests.h"

namespace vd {

ExternCallBlock* gExternCallBlock = nullptr;

namespace {

bool gConfigureBusy = false;

// The bundle named in the block is where our texts live; requests before start-up carry it too.
void RememberBundle(const ExternCallBlock& block) noexcept {
    if (!block.pluginBundle) return;
    try {
        SetBundlePath(static_cast<const char*>(block.pluginBundle));
    } catch (...) {
        // Out of memory: the texts stay as they were, or empty.
    }
}

void IdleWhenEnabled(uint8_t kind) noexcept {
    if (!gPluginEnabled) return;
    IdleSubsystems(kind);
}

void Configure() noexcept {
    // A second request can arrive while the first still runs on the same thread; it is dropped.
    if (gConfigureBusy) return;
    gConfigureBusy = true;
    // This build has no configuration dialog.
    gConfigureBusy = false;
}

}  // namespace

void HandleExternCall(ExternCallBlock* block) noexcept {
    if (!block) return;
    gExternCallBlock = block;
    switch (block->whichCall) {
    case FMX_CALL_INIT:
        RememberBundle(*block);
        block->result = StartUp(*block);
        break;
    case FMX_CALL_IDLE: IdleWhenEnabled(block->parm1); break;
    case FMX_CALL_SHUTDOWN: ShutDown(); break;
    case FMX_CALL_DO_APP_PREFERENCES: Configure(); break;
    case FMX_CALL_GET_STRING:
        RememberBundle(*block);
        AnswerStringRequest(*block);
        break;
    default: break;
    }
    gExternCallBlock = nullptr;
}

}  // namespace vd
