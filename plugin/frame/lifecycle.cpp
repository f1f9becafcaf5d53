#include "frame/lifecycle.h"

#include "fmapi/errors/localized_strings.h"
#include "fmapi/host_identity.h"
#include "frame/function_table.h"
#include "frame/host_version.h"
#include "frame/registration.h"
#include "frame/subsystems.h"
#include "platform/common/interrupt_cleanup.h"
#include "platform/common/temporary_file_ledger.h"
#include "platform/media/media_layer.h"

namespace vd {

bool gPluginEnabled = false;
uint16_t gHostVersionCode = 0;
int16_t gHostInterfaceVersion = 0;
std::string gHostVersionText;

namespace {

// The media functions are written against layer 7.0 and later.
constexpr uint32_t kRequiredMediaVersionHigh = 0x0700;

// Nothing is initialised here: the libraries load on first use. What start-up needs to know is
// only that they can be (platform/media/media_layer.h), and that the layer is new enough.
bool StartMediaLayer() {
    const uint32_t version = platform::MediaLayerVersion();
    return version != 0 && (version >> 16) >= kRequiredMediaVersionHigh;
}

}  // namespace

intptr_t StartUp(const ExternCallBlock& block) noexcept {
    try {
        // A plug-in that was started and shut down before starts its numbering afresh.
        gNextFunctionId = kFirstNumberedId;
        if (block.extnVersion < 50 || block.extnVersion > 255) return -1;

        gHostVersionText = HostVersionText(reinterpret_cast<const char16_t*>(block.parm2));
        gHostVersionCode = HostVersionCode(block.extnVersion, gHostVersionText);
        if (!IsAcceptedHostVersion(gHostVersionCode)) return -2;
        gHostInterfaceVersion = block.extnVersion;
        fmapi::SetHostInterfaceVersion(block.extnVersion);

        if (!StartMediaLayer()) return -2;
        if (!StartUpSubsystems()) return -2;

        if (!RegisterSoundGroup()) {
            ShutDownSubsystems();
            return -2;
        }
        RegisterImageGroup();

        // Files that a killed process of ours could not remove go now; ours are removed even when
        // the process is told to stop in the middle of a call.
        platform::SweepAbandonedTemporaryFiles();
        platform::InstallInterruptCleanup();
        gPluginEnabled = true;
        return kPluginInterfaceVersion;
    } catch (...) {
        return -2;  // out of memory while reading the host's version text
    }
}

void ShutDown() noexcept {
    gPluginEnabled = false;
    platform::RemoveInterruptCleanup();
    UnregisterAllFunctions();
    ShutDownSubsystems();
    ForgetLocalizedStrings();
}

}  // namespace vd
