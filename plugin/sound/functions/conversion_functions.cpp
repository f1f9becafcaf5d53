// Vandrel_ListSoundOutputFormats, Vandrel_SoundFormatDialog and Vandrel_ConvertSound.
#include "container/output_file.h"
#include "fmapi/args/arguments.h"
#include "fmapi/errors/message_table.h"
#include "platform/media/exporters.h"
#include "platform/media/sound_export.h"
#include "sound/conversion/output_format.h"
#include "sound/conversion/settings_dialog.h"
#include "sound/functions/sound_functions.h"
#include "sound/functions/sound_result.h"
#include "sound/sound_function_steps.h"
#include "util/settings_text.h"
#include "util/status_codes.h"

#include <sys/stat.h>

namespace vd::sound {

namespace {

constexpr char kConvertFailed[] = "Could not convert sound to the desired format.";

// A dialog that could not be shown, or a script answer it does not take, says why after the
// code's own text; a dialog the user cancelled says no more than the code.
fmapi::Outcome DialogFailure(util::Status status, const std::string& detail) {
    if (detail.empty()) return StepFailure(status, "");
    return StepFailure(status, std::string(MessageForCode(status)) + " " + detail);
}

}  // namespace

fmapi::Outcome ListSoundOutputFormatsFunction(const FunctionCall&) {
    std::string list;
    if (media::Status s = OutputFormatList(list)) return StepFailure(s, "Failed to obtain a list of sound output formats.");
    return fmapi::Outcome::Text(std::move(list));
}

fmapi::Outcome SoundFormatDialogFunction(const FunctionCall& call) {
    const std::optional<media::FourCharCode> format = OutputFormatFromText(ArgCText(ArgText(call.args, 0)));
    if (!format) return StepFailure(util::kBadParameter, "Wrong output format.");
    media::ExporterInfo exporter;
    if (media::Status s = media::FindExporter(*format, exporter)) {
        return StepFailure(s, s == util::kNoComponent ? "Export component not found."
                                                      : "Could not connect to the export component.");
    }
    media::ExportSettings settings = media::DefaultExportSettings(exporter.subtype);
    std::string detail;
    if (util::Status s = RunExportSettingsDialog(exporter.name, settings, detail)) return DialogFailure(s, detail);
    std::string text;
    if (util::Status s = util::SettingsToHexText(media::ExportSettingsBytes(settings), text))
        return StepFailure(s, "Could not get settings as hex.");
    return fmapi::Outcome::Text(std::move(text));
}

fmapi::Outcome ConvertSoundFunction(const FunctionCall& call) {
    SoundMovie sound;
    if (int32_t e = OpenSoundParameter(call.args, 0, sound)) return StepFailure(e, "Could not get parameter #1 as sound.");

    std::string target;
    container::OutputFileStep step;
    if (int32_t e = container::OutputFileFromParameter(call.args, 1, target, step)) {
        return StepFailure(e, step == container::OutputFileStep::kText           ? "Could not get parameter #2 as text."
                              : step == container::OutputFileStep::kDatabasePath ? "Could not get database path."
                                                                                  : "Could not find input file.");
    }
    const std::string formatText = ArgCText(ArgText(call.args, 2));

    std::optional<media::ExportSettings> given;
    if (ArgCount(call.args) > 3) {
        std::vector<uint8_t> bytes;
        media::ExportSettings settings;
        if (util::Status s = util::HexTextToSettings(ArgCText(ArgText(call.args, 3)), bytes))
            return StepFailure(s, "Could not resolve hex.");
        if (media::Status s = media::ExportSettingsFromBytes(bytes, settings)) return StepFailure(s, "Could not resolve hex.");
        given = settings;
    }

    const std::optional<media::FourCharCode> format = OutputFormatFromText(formatText);
    if (!format) return StepFailure(util::kBadParameter, kConvertFailed);
    media::ExporterInfo exporter;
    if (media::Status s = media::FindExporter(*format, exporter)) return StepFailure(s, kConvertFailed);
    // Settings made for another exporter would be read as something they are not.
    if (given && given->subtype != exporter.subtype) return StepFailure(util::kBadParameter, kConvertFailed);
    media::ExportSettings settings = given ? *given : media::DefaultExportSettings(exporter.subtype);
    if (!given) {
        std::string detail;
        if (util::Status s = RunExportSettingsDialog(exporter.name, settings, detail)) return DialogFailure(s, detail);
    }
    struct stat info {};
    if (::stat(target.c_str(), &info) == 0 && S_ISDIR(info.st_mode)) return StepFailure(util::kNotAFile, kConvertFailed);

    // The sound is stored as the file plays it, made while the file is written.
    return SoundResult(
        [&](int32_t rate, uint64_t maxBytes, std::vector<uint8_t>& out) {
            const media::StoredSoundRequest stored{rate, maxBytes, &out};
            return media::ExportSound(sound.movie, settings, target, &stored);
        },
        kConvertFailed);
}

}  // namespace vd::sound
