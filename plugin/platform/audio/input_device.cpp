#include "platform/audio/input_device.h"

#include <cstdlib>

namespace vd::audio {

Status OpenInputDevice(int32_t rate, int channels, SampleSink& sink, std::unique_ptr<InputDevice>& device) {
    const char* variable = std::getenv("VANDREL_AUDIO");
    const std::string choice = variable ? variable : "";
    if (choice.empty()) return OpenPortAudioInput(rate, channels, sink, device);
    if (choice == "virtual") return OpenVirtualInput("", rate, channels, sink, device);
    if (choice.rfind("virtual:", 0) == 0) return OpenVirtualInput(choice.substr(8), rate, channels, sink, device);
    return media::MediaFailure(util::kNoSoundOutput,
                               "VANDREL_AUDIO=\"" + choice + "\" names no sound input (\"\" or \"virtual:in=...\")");
}

}  // namespace vd::audio
