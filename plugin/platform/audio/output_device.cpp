#include "platform/audio/output_device.h"

#include <cstdlib>

namespace vd::audio {

Status OpenOutputDevice(BlockRenderer& renderer, std::unique_ptr<OutputDevice>& device) {
    const char* variable = std::getenv("VANDREL_AUDIO");
    const std::string choice = variable ? variable : "";
    if (choice.empty()) return OpenPortAudioDevice(renderer, device);
    if (choice == "virtual") return OpenVirtualDevice("", renderer, device);
    if (choice.rfind("virtual:", 0) == 0) return OpenVirtualDevice(choice.substr(8), renderer, device);
    return media::MediaFailure(util::kNoSoundOutput,
                               "VANDREL_AUDIO=\"" + choice + "\" names no sound output (\"\" or \"virtual[:options]\")");
}

}  // namespace vd::audio
