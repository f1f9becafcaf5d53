#include "platform/audio/virtual_options.h"

#include <cmath>
#include <cstdlib>

namespace vd::audio {

namespace {

bool ParseSeconds(const std::string& text, double& seconds) {
    char* end = nullptr;
    seconds = std::strtod(text.c_str(), &end);
    return !text.empty() && end == text.c_str() + text.size() && std::isfinite(seconds) && seconds > 0;
}

}  // namespace

Status ParseVirtualOptions(const std::string& text, VirtualOptions& options) {
    options = {};
    size_t at = 0;
    while (at < text.size()) {
        size_t end = text.find(',', at);
        if (end == std::string::npos) end = text.size();
        const std::string option = text.substr(at, end - at);
        at = end + 1;
        if (option.rfind("out=", 0) == 0 && option.size() > 4) options.out = option.substr(4);
        else if (option.rfind("in=", 0) == 0 && option.size() > 3) options.in = option.substr(3);
        else if (option.rfind("length=", 0) == 0 && ParseSeconds(option.substr(7), options.length)) continue;
        else if (option == "speed=fast") options.fast = true;
        else if (option == "speed=realtime") options.fast = false;
        else if (!option.empty())
            return media::MediaFailure(util::kNoSoundOutput,
                                       "VANDREL_AUDIO: unknown option \"" + option +
                                           "\" of the virtual device (out=PATH, in=tone|PATH, length=SECONDS, speed=realtime|fast)");
    }
    return util::kNoError;
}

}  // namespace vd::audio
