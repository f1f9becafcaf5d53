#include "sound/conversion/settings_dialog.h"

#include "platform/media/exporters.h"
#include "platform/ui/dialog_service.h"

#include <algorithm>

namespace vd::sound {

namespace {

using media::ExportSettingKind;

struct Words {
    const char* name;
    const char* label;
};

Words WordsFor(ExportSettingKind kind) {
    switch (kind) {
        case ExportSettingKind::kSampleRate: return {"rate", "Sample rate"};
        case ExportSettingKind::kChannels: return {"channels", "Channels"};
        case ExportSettingKind::kSampleSize: return {"size", "Sample size"};
        case ExportSettingKind::kBitRate: return {"bitrate", "Bit rate"};
        case ExportSettingKind::kQuality: return {"quality", "Quality"};
        case ExportSettingKind::kCompressionLevel: return {"level", "Compression level"};
    }
    return {"", ""};
}

platform::ui::FormChoice ChoiceFor(ExportSettingKind kind, int32_t value) {
    const std::string number = std::to_string(value);
    switch (kind) {
        case ExportSettingKind::kSampleRate:
            return value == 0 ? platform::ui::FormChoice{"source", "Same as the sound"}
                              : platform::ui::FormChoice{number, number + " Hz"};
        case ExportSettingKind::kChannels:
            if (value == 0) return {"source", "Same as the sound (mono or stereo)"};
            return value == 1 ? platform::ui::FormChoice{"mono", "Mono"} : platform::ui::FormChoice{"stereo", "Stereo"};
        case ExportSettingKind::kSampleSize: return {number, number + " bits"};
        case ExportSettingKind::kBitRate:
            return value == 0 ? platform::ui::FormChoice{"variable", "Variable (by quality)"}
                              : platform::ui::FormChoice{number, std::to_string(value / 1000) + " kbit/s"};
        case ExportSettingKind::kQuality: return {number, number};
        case ExportSettingKind::kCompressionLevel: return {number, number};
    }
    return {number, number};
}

int32_t Current(const media::ExportSettings& s, ExportSettingKind kind) {
    switch (kind) {
        case ExportSettingKind::kSampleRate: return s.sampleRate;
        case ExportSettingKind::kChannels: return s.channels;
        case ExportSettingKind::kSampleSize: return s.sampleSize;
        case ExportSettingKind::kBitRate: return s.bitRate;
        case ExportSettingKind::kQuality: return s.quality;
        case ExportSettingKind::kCompressionLevel: return s.compressionLevel;
    }
    return 0;
}

void Store(media::ExportSettings& s, ExportSettingKind kind, int32_t value) {
    switch (kind) {
        case ExportSettingKind::kSampleRate: s.sampleRate = value; break;
        case ExportSettingKind::kChannels: s.channels = int16_t(value); break;
        case ExportSettingKind::kSampleSize: s.sampleSize = int16_t(value); break;
        case ExportSettingKind::kBitRate: s.bitRate = value; break;
        case ExportSettingKind::kQuality: s.quality = value; break;
        case ExportSettingKind::kCompressionLevel: s.compressionLevel = value; break;
    }
}

}  // namespace

util::Status RunExportSettingsDialog(const std::string& exporterName, media::ExportSettings& settings,
                                     std::string& detail) {
    const std::vector<media::ExportSettingOptions> options = media::ExportSettingChoices(settings.subtype);
    platform::ui::FormRequest form;
    form.title = exporterName + " Settings";
    for (const media::ExportSettingOptions& option : options) {
        const Words words = WordsFor(option.kind);
        platform::ui::FormControl control{words.name, words.label, {}, 0};
        const int32_t current = Current(settings, option.kind);
        for (size_t i = 0; i < option.values.size(); ++i) {
            control.choices.push_back(ChoiceFor(option.kind, option.values[i]));
            if (option.values[i] == current) control.selected = i;
        }
        form.controls.push_back(std::move(control));
    }
    const platform::ui::FormAnswer answer = platform::ui::ShowForm(form);
    detail = answer.detail;
    if (answer.status != util::kNoError) return answer.status;
    if (answer.selected.size() != options.size()) return util::kUserCancelled;
    for (size_t i = 0; i < options.size(); ++i)
        Store(settings, options[i].kind, options[i].values[std::min(answer.selected[i], options[i].values.size() - 1)]);
    return util::kNoError;
}

}  // namespace vd::sound
