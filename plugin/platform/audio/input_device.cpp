#include "platform/audio/input_device.h"

#include <cstdlib>

namespace vd::audio {

namespace {

std::string Choice() {
    const char* variable = std::getenv("VANDREL_AUDIO");
    return variable ? variable : "";
}

}  // namespace

std::vector<std::string> InputDeviceNames() { return Choice().empty() ? PortAudioInputNames() : std::vector<std::string>{}; }

Status OpenInputDevice(int32_t rate, int channels, const std::string& name, SampleSink& sink,
                       std::unique_ptr<InputDevice>& device) {
    const std::string choice = Choice();
    if (choice.empty()) return OpenPortAudioInput(rate, channels, name, sink, device);
    if (choice == "virtual") return OpenVirtualInput("", rate, channels, sink, device);
    if (choice.rfind("virtual:", 0) == 0) return OpenVirtualInput(choice.substr(8), rate, channels, sink, device);
    return media::MediaFailure(util::kNoSoundOutput,
                               "VANDREL_AUDIO=\"" + choice + "\" names no sound input (\"\" or \"virtual:in=...\")");
}

}  // namespace vd::audio
