#include "container/container_subsystem.h"

#include "container/workaround_switches.h"
#include "platform/media/media_layer.h"

namespace vd::container {

namespace {

// JPEG export needs a media layer of at least this version word.
constexpr uint32_t kJpegExportMediaVersion = 0x04000000;

bool gJpegExportAvailable = false;

bool StartUp() noexcept {
    InitWorkaroundSwitches();
    gJpegExportAvailable =
        platform::MediaLayerVersion() >= kJpegExportMediaVersion && platform::JpegExporterPresent();
    return true;
}

void ShutDown() noexcept { gJpegExportAvailable = false; }

}  // namespace

const SubsystemHooks kContainerSubsystem{"container", StartUp, nullptr, ShutDown};

bool JpegExportAvailable() noexcept { return gJpegExportAvailable; }

}  // namespace vd::container
