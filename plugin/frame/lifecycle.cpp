#include "frame/lifecycle.h"

#include "fmapi/errors/localized_strings.h"
#include "frame/function_table.h"
#include "frame/host_version.h"
#include "frame/image_hooks.h"
#include "frame/registration.h"
#include "frame/workaround_switches.h"
#include "platform/common/temporary_file_ledger.h"
#include "platform/media/media_layer.h"
#include "platform/common/interrupt_cleanup.h"
#include "util/status_codes.h"

namespace vd {

bool gPluginEnabled = false;
uint16_t gHostVersionCode = 0;
int16_t gHostInterfaceVersion = 0;
std::string gHostVersionText;
bool gJpegExportAvailable = false;

namespace {

bool gMediaLayerStarted = false;

// JPEG export needs a media layer of at least this version word.
constexpr uint32_t kJpegExportMediaVersion = 0x04000000;
// The media functions are written against layer 7.0 and later.
constexpr uint32_t kRequiredMediaVersionHigh = 0x0700;

// Nothing is initialised here: the libraries load on first use. What start-up needs to know is
// only that they can be (platform/media/media_layer.h).
bool StartMediaLayer() {
    gMediaLayerStarted = platform::MediaLayerVersion() != 0;
    return gMediaLayerStarted;
}

void StopMediaLayer() noexcept { gMediaLayerStarted = false; }

// The offscreen picture, the media layer's version, the workaround switches; 0 or the failure.
int MakeOffscreenAndCheckMediaLayer() {
    auto& offscreen = OffscreenBuffer();
    offscreen = platform::PixelBuffer::Make(1, 1);
    if (!offscreen) return util::kMemoryFull;
    if (uint32_t version = platform::MediaLayerVersion(); version != 0 && (version >> 16) < kRequiredMediaVersionHigh)
        return -9999;
    InitWorkaroundSwitches();
    return 0;
}

// The releases of shut-down that undo start-up's making (the playback pool and the recorder join
// here when they exist).
void ReleaseStartUpResources() noexcept {
    OffscreenBuffer().reset();
    StopMediaLayer();
}

bool ProbeJpegExport() {
    uint32_t version = platform::MediaLayerVersion();
    if (version < kJpegExportMediaVersion) return false;
    if (!platform::JpegExporterPresent()) return false;
    ImageSubsystemStartUp();
    return true;
}

}  // namespace

std::optional<platform::PixelBuffer>& OffscreenBuffer() {
    static std::optional<platform::PixelBuffer> buffer;
    return buffer;
}

intptr_t StartUp(const ExternCallBlock& block) noexcept {
    try {
        // A plug-in that was started and shut down before starts its numbering afresh.
        gNextFunctionId = kFirstNumberedId;
        if (block.extnVersion < 50 || block.extnVersion > 255) return -1;

        gHostVersionText = HostVersionText(reinterpret_cast<const char16_t*>(block.parm2));
        gHostVersionCode = HostVersionCode(block.extnVersion, gHostVersionText);
        if (!IsAcceptedHostVersion(gHostVersionCode)) return -2;
        gHostInterfaceVersion = block.extnVersion;

        // What is made here stays until shut-down even when a later check fails.
        if (!StartMediaLayer()) return -2;
        if (MakeOffscreenAndCheckMediaLayer() != 0) return -2;

        if (!RegisterSoundGroup()) {
            ReleaseStartUpResources();
            return -2;
        }
        RegisterImageGroup();

        gJpegExportAvailable = ProbeJpegExport();
        // Files that a killed process of ours could not remove go now; ours are removed even when
        // the process is told to stop in the middle of a call.
        platform::fs::SweepAbandonedTemporaryFiles();
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
    ReleaseStartUpResources();
    ForgetLocalizedStrings();
}

}  // namespace vd
