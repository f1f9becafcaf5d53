// The computer's default sound output through PortAudio, loaded when the first sound is made (not
// with the plug-in: a machine without libportaudio still runs every other function).
#include "platform/audio/input_device.h"
#include "platform/audio/output_device.h"

#include "platform/common/lazy_library.h"
#include "platform/common/library_sonames.h"
#include "platform/common/unique_fd.h"

#include <portaudio.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace vd::audio {

namespace {

constexpr const char* kSonames[] = {platform::kPortAudioLibrary};

#define VD_PORTAUDIO_FUNCTIONS(X)                                                                              \
    X(0, Pa_Initialize, (void), ())                                                                           \
    X(0, Pa_Terminate, (void), ())                                                                            \
    X(0, Pa_GetErrorText, (PaError errorCode), (errorCode))                                                   \
    X(0, Pa_OpenDefaultStream, (PaStream** stream, int numInputChannels, int numOutputChannels,               \
                                PaSampleFormat sampleFormat, double sampleRate, unsigned long framesPerBuffer, \
                                PaStreamCallback* streamCallback, void* userData),                            \
      (stream, numInputChannels, numOutputChannels, sampleFormat, sampleRate, framesPerBuffer, streamCallback, \
       userData))                                                                                             \
    X(0, Pa_OpenStream, (PaStream** stream, const PaStreamParameters* inputParameters,                         \
                         const PaStreamParameters* outputParameters, double sampleRate,                        \
                         unsigned long framesPerBuffer, PaStreamFlags streamFlags,                             \
                         PaStreamCallback* streamCallback, void* userData),                                    \
      (stream, inputParameters, outputParameters, sampleRate, framesPerBuffer, streamFlags, streamCallback,    \
       userData))                                                                                             \
    X(0, Pa_GetDeviceCount, (void), ())                                                                       \
    X(0, Pa_GetDeviceInfo, (PaDeviceIndex device), (device))                                                  \
    X(0, Pa_StartStream, (PaStream* stream), (stream))                                                        \
    X(0, Pa_StopStream, (PaStream* stream), (stream))                                                         \
    X(0, Pa_CloseStream, (PaStream* stream), (stream))

enum Function : size_t { VD_PORTAUDIO_FUNCTIONS(VD_LAZY_INDEX) kFunctionCount };
constexpr platform::LazySymbol kSymbols[] = {VD_PORTAUDIO_FUNCTIONS(VD_LAZY_SYMBOL)};
static_assert(std::size(kSymbols) == kFunctionCount);

}  // namespace

void* gPortAudioAddresses[kFunctionCount];
constinit platform::LazyLibraries gPortAudio(kSonames, kSymbols, gPortAudioAddresses, "VANDREL_AUDIO_LIBRARY");

namespace {

// ALSA and JACK print their probing (missing cards, no JACK server) on the standard error while
// PortAudio starts and opens a stream; that is the host's terminal, so it goes to /dev/null for
// the duration and comes back after.
class QuietStandardError {
public:
    QuietStandardError() : saved_(::fcntl(2, F_DUPFD_CLOEXEC, 0)) {
        platform::UniqueFd null(::open("/dev/null", O_WRONLY | O_CLOEXEC));
        if (saved_.Valid() && null.Valid()) ::dup2(null.Get(), 2);
    }
    ~QuietStandardError() {
        if (saved_.Valid()) ::dup2(saved_.Get(), 2);
    }
    QuietStandardError(const QuietStandardError&) = delete;
    QuietStandardError& operator=(const QuietStandardError&) = delete;

private:
    platform::UniqueFd saved_;
};

Status PortAudioFailure(const char* step, PaError error) {
    return media::MediaFailure(util::kNoSoundOutput, std::string("PortAudio: ") + step + ": " + Pa_GetErrorText(error));
}

// PortAudio started for one stream: initialised, the stream opened and started, and all of it
// undone in the reverse order when it goes.
class PortAudioStream {
public:
    PortAudioStream() = default;
    ~PortAudioStream() {
        QuietStandardError quiet;
        if (stream_) {
            Pa_StopStream(stream_);
            Pa_CloseStream(stream_);
        }
        if (initialized_) Pa_Terminate();
    }
    PortAudioStream(const PortAudioStream&) = delete;
    PortAudioStream& operator=(const PortAudioStream&) = delete;

    // Opens with open(&stream) once PortAudio is up; what names the stream in the messages.
    template <typename Open>
    Status Start(const char* what, Open open) {
        QuietStandardError quiet;
        if (const PaError error = Pa_Initialize(); error != paNoError) return PortAudioFailure("starting", error);
        initialized_ = true;
        if (const PaError error = open(&stream_); error != paNoError) {
            stream_ = nullptr;
            return PortAudioFailure((std::string("opening ") + what).c_str(), error);
        }
        if (const PaError error = Pa_StartStream(stream_); error != paNoError)
            return PortAudioFailure((std::string("starting ") + what).c_str(), error);
        return util::kNoError;
    }

private:
    PaStream* stream_ = nullptr;
    bool initialized_ = false;
};

// The input devices PortAudio offers, by index; Pa_Initialize must be in force.
std::vector<std::pair<PaDeviceIndex, std::string>> InputDevicesNow() {
    std::vector<std::pair<PaDeviceIndex, std::string>> devices;
    const PaDeviceIndex count = Pa_GetDeviceCount();
    for (PaDeviceIndex i = 0; i < count; ++i)
        if (const PaDeviceInfo* info = Pa_GetDeviceInfo(i); info && info->maxInputChannels > 0 && info->name)
            devices.emplace_back(i, info->name);
    return devices;
}

class PortAudioDevice final : public OutputDevice {
public:
    explicit PortAudioDevice(BlockRenderer& renderer) : renderer_(renderer) {}

    Status Start() {
        return stream_.Start("the default output", [this](PaStream** stream) {
            return Pa_OpenDefaultStream(stream, 0, 2, paFloat32, kOutputRate, kVirtualBlockFrames,
                                        &PortAudioDevice::Callback, this);
        });
    }

private:
    static int Callback(const void*, void* output, unsigned long frames, const PaStreamCallbackTimeInfo*,
                        PaStreamCallbackFlags, void* self) {
        auto& device = *static_cast<PortAudioDevice*>(self);
        float* out = static_cast<float*>(output);
        while (frames > 0) {
            const size_t block = std::min<size_t>(frames, Mixer::kMaxBlock);
            device.renderer_.RenderBlock(out, block, false, nullptr);
            out += 2 * block;
            frames -= block;
        }
        return paContinue;
    }

    BlockRenderer& renderer_;
    PortAudioStream stream_;  // last: stopped before the renderer's user goes
};

// A PortAudio input (the default one, or one named), at the recording's rate and channels (ALSA's
// plug layer converts what the card has). Its callback only hands the frames on: the sink neither
// locks nor allocates.
class PortAudioInput final : public InputDevice {
public:
    explicit PortAudioInput(SampleSink& sink) : sink_(sink) {}

    Status Start(int32_t rate, int channels, const std::string& name) {
        if (name.empty()) {
            return stream_.Start("the default input", [&](PaStream** stream) {
                return Pa_OpenDefaultStream(stream, channels, 0, paFloat32, rate, kInputBlockFrames,
                                            &PortAudioInput::Callback, this);
            });
        }
        const std::string what = "the input \"" + name + "\"";
        return stream_.Start(what.c_str(), [&](PaStream** stream) -> PaError {
            for (const auto& [index, deviceName] : InputDevicesNow()) {
                if (deviceName != name) continue;
                const PaStreamParameters input{index, channels, paFloat32,
                                               Pa_GetDeviceInfo(index)->defaultLowInputLatency, nullptr};
                return Pa_OpenStream(stream, &input, nullptr, rate, kInputBlockFrames, paNoFlag,
                                     &PortAudioInput::Callback, this);
            }
            return paInvalidDevice;
        });
    }

private:
    static int Callback(const void* input, void*, unsigned long frames, const PaStreamCallbackTimeInfo*,
                        PaStreamCallbackFlags, void* self) {
        if (input) static_cast<PortAudioInput*>(self)->sink_.Deliver(static_cast<const float*>(input), frames);
        return paContinue;
    }

    SampleSink& sink_;
    PortAudioStream stream_;  // last: stopped before the sink's owner goes
};

}  // namespace

Status OpenPortAudioInput(int32_t rate, int channels, const std::string& name, SampleSink& sink,
                          std::unique_ptr<InputDevice>& device) {
    if (const std::string_view problem = gPortAudio.Load(); !problem.empty())
        return media::MediaFailure(util::kNoSoundOutput, "PortAudio cannot be loaded: " + std::string(problem));
    auto opened = std::make_unique<PortAudioInput>(sink);
    if (const Status status = opened->Start(rate, channels, name); status != util::kNoError) return status;
    device = std::move(opened);
    return util::kNoError;
}

std::vector<std::string> PortAudioInputNames() {
    std::vector<std::string> names;
    if (!gPortAudio.Load().empty()) return names;
    QuietStandardError quiet;
    if (Pa_Initialize() != paNoError) return names;
    for (auto& [index, name] : InputDevicesNow()) names.push_back(std::move(name));
    Pa_Terminate();
    return names;
}

Status OpenPortAudioDevice(BlockRenderer& renderer, std::unique_ptr<OutputDevice>& device) {
    if (const std::string_view problem = gPortAudio.Load(); !problem.empty())
        return media::MediaFailure(util::kNoSoundOutput, "PortAudio cannot be loaded: " + std::string(problem));
    auto opened = std::make_unique<PortAudioDevice>(renderer);
    if (const Status status = opened->Start(); status != util::kNoError) return status;
    device = std::move(opened);
    return util::kNoError;
}

}  // namespace vd::audio

#define VD_FORWARDER(library, name, parameters, arguments) \
    VD_LAZY_FORWARDER(vd::audio::gPortAudio, vd::audio, name, parameters, arguments)
VD_PORTAUDIO_FUNCTIONS(VD_FORWARDER)
#undef VD_FORWARDER
