#include "recording/recording_settings.h"

#include "platform/audio/input_device.h"
#include "platform/ui/dialog_service.h"

#include <algorithm>
#include <array>

namespace vd::recording {

namespace {

constexpr std::array kRates{8000, 11025, 16000, 22050, 32000, 44100, 48000, 88200, 96000};
constexpr std::array kSampleSizes{8, 16, 24};

void Put(std::vector<uint8_t>& bytes, uint32_t value, int size) {
    for (int shift = (size - 1) * 8; shift >= 0; shift -= 8) bytes.push_back(uint8_t(value >> shift));
}

template <typename Values>
size_t IndexOf(const Values& values, int value) {
    const auto at = std::find(values.begin(), values.end(), value);
    return at == values.end() ? 0 : size_t(at - values.begin());
}

}  // namespace

std::vector<uint8_t> RecordingFormatBytes(const audio::RecordingFormat& format) {
    std::vector<uint8_t> bytes{'v', 'd', 'r', 'c'};
    Put(bytes, 1, 2);
    Put(bytes, uint16_t(format.channels), 2);
    Put(bytes, uint32_t(format.sampleRate), 4);
    Put(bytes, uint16_t(format.sampleSize), 2);
    const std::string name = format.device.substr(0, 0xFFFF);
    Put(bytes, uint16_t(name.size()), 2);
    bytes.insert(bytes.end(), name.begin(), name.end());
    return bytes;
}

util::Status RunRecordingSettingsDialog(audio::RecordingFormat& format, std::string& detail) {
    platform::ui::FormRequest form;
    form.title = "Sound Recording Settings";
    // A script names an input by its name with blanks as "_"; a person sees the name.
    const std::vector<std::string> names = audio::InputDeviceNames();
    platform::ui::FormControl input{"input", "Input", {{"default", "Default input"}}, 0};
    for (size_t i = 0; i < names.size(); ++i) {
        std::string word = names[i];
        std::replace(word.begin(), word.end(), ' ', '_');
        input.choices.push_back({word, names[i]});
        if (names[i] == format.device) input.selected = i + 1;
    }
    platform::ui::FormControl rate{"rate", "Sample rate", {}, IndexOf(kRates, format.sampleRate)};
    for (const int r : kRates) rate.choices.push_back({std::to_string(r), std::to_string(r) + " Hz"});
    platform::ui::FormControl channels{"channels", "Channels", {{"mono", "Mono"}, {"stereo", "Stereo"}},
                                       format.channels == 1 ? 0u : 1u};
    platform::ui::FormControl size{"size", "Sample size", {}, IndexOf(kSampleSizes, format.sampleSize)};
    for (const int s : kSampleSizes) size.choices.push_back({std::to_string(s), std::to_string(s) + " bits"});
    form.controls = {input, rate, channels, size};

    const platform::ui::FormAnswer answer = platform::ui::ShowForm(form);
    detail = answer.detail;
    if (answer.status != util::kNoError) return answer.status;
    if (answer.selected.size() != 4) return util::kUserCancelled;
    format.device = answer.selected[0] == 0 || answer.selected[0] > names.size() ? "" : names[answer.selected[0] - 1];
    format.sampleRate = kRates[std::min(answer.selected[1], kRates.size() - 1)];
    format.channels = answer.selected[2] == 0 ? 1 : 2;
    format.sampleSize = int16_t(kSampleSizes[std::min(answer.selected[3], kSampleSizes.size() - 1)]);
    return util::kNoError;
}

}  // namespace vd::recording
