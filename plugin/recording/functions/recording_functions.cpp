#include "recording/functions/recording_functions.h"

#include "container/reference_result.h"
#include "fmapi/args/arguments.h"
#include "fmapi/errors/message_table.h"
#include "platform/media/movie_from_file.h"
#include "recording/recorder.h"
#include "recording/recording_session.h"
#include "recording/recording_settings.h"
#include "recording/recording_target.h"
#include "sound/functions/sound_result.h"
#include "sound/sound_function_steps.h"
#include "util/settings_text.h"

#include <unistd.h>

namespace vd::recording {

namespace {

using sound::StepFailure;

// The result that names a recorded file: a movie reference, once the file is known to open as one.
fmapi::Outcome RecordedFileReference(const std::string& path, const char* openFailed, const char* resultFailed) {
    media::Movie movie;
    if (const int32_t e = media::MovieFromFile(path, movie)) return StepFailure(e, openFailed);
    std::string text;
    if (const int32_t e = container::ReferenceText(path, "movie", 0, 0, text)) return StepFailure(e, resultFailed);
    return fmapi::Outcome::Text(std::move(text));
}

// A recording that holds the call; a temporary file's sound comes back in the container and the
// file goes, a named file comes back as a reference.
fmapi::Outcome RecordHere(RecordingTarget& target) {
    if (const util::Status s = RecordUntilEnded(target.path)) return StepFailure(s, "Synchronous recording failed.");
    if (target.kind == RecordingTarget::Kind::kFile)
        return RecordedFileReference(target.path, "Could not open recorded sound.", "Could not set result.");
    media::Movie movie;
    if (const int32_t e = media::MovieFromFile(target.path, movie))
        return StepFailure(e, "Could not open recorded sound.");
    return sound::SoundResult(movie, "Could not set result.");
}

// A file the call made for its target goes again when the call fails.
struct MadeFile {
    const std::string& path;
    bool made;
    bool keep = false;
    ~MadeFile() {
        if (made && !keep) ::unlink(path.c_str());
    }
};

}  // namespace

fmapi::Outcome RecordSoundStartFunction(const FunctionCall& call) {
    const uint16_t count = ArgCount(call.args);
    Recorder* recorder = Recorder::Instance();
    if (!recorder) return fmapi::Outcome::Failure(util::kMemoryFull);
    if (recorder->AnyRecording())
        return fmapi::Outcome::Failure(util::kDeviceBusy, "Only one recording is allowed. Call "
                                                          "Vandrel_RecordSoundStop before calling this function again.");
    if (count > 2 && !ArgCText(ArgText(call.args, 2)).empty())
        return fmapi::Outcome::Failure(util::kUnimplemented, "Hex settings are currently unimplemented.");
    bool asynchronous = false;
    if (count > 1)
        if (const int16_t e = ArgBoolean(call.args, 1, asynchronous))
            return fmapi::Outcome::Failure(e, "Error getting parameter #2 as boolean.");

    RecordingTarget target;
    bool made = false;
    std::string message;
    if (const int32_t e = ChooseRecordingTarget(call.args, target, made, message))
        return fmapi::Outcome::Failure(e, message);
    if (target.kind == RecordingTarget::Kind::kNowhere) return fmapi::Outcome::Nothing();
    MadeFile madeFile{target.path, made};

    if (!asynchronous) {
        fmapi::Outcome outcome = RecordHere(target);
        madeFile.keep = !outcome.Failed();
        return outcome;
    }
    std::shared_ptr<RecordingEntry> entry;
    if (const util::Status s = BeginRecording(target.path, entry))
        return StepFailure(s, "Could not start asynchronous recording.");
    // The temporary file stays for Vandrel_RecordSoundStop, which names it in its result.
    if (target.kind == RecordingTarget::Kind::kTemporary) entry->KeepTemporaryFile(std::move(target.temporary));
    madeFile.keep = true;
    return fmapi::Outcome::Nothing();
}

fmapi::Outcome RecordSoundPauseFunction(const FunctionCall&) {
    std::lock_guard lock(Recorder::Lock());
    Recorder* recorder = Recorder::Instance();
    const auto entries = recorder ? recorder->Entries() : std::vector<std::shared_ptr<RecordingEntry>>{};
    if (entries.empty())
        return fmapi::Outcome::Failure(util::kWrongState, "You are currently not recording. Use "
                                                          "Vandrel_RecordSoundStart before using this function.");
    for (const auto& entry : entries) (void)entry->TogglePause();
    return fmapi::Outcome::Failure(util::kNoError);
}

fmapi::Outcome RecordSoundStopFunction(const FunctionCall&) {
    Recorder* recorder = Recorder::Instance();
    auto entries = recorder ? recorder->UnregisterAll() : std::vector<std::shared_ptr<RecordingEntry>>{};
    if (entries.empty())
        return fmapi::Outcome::Failure(util::kWrongState, "There is no recording to stop. Call "
                                                          "Vandrel_RecordSoundStart before calling this function.");
    const std::shared_ptr<RecordingEntry> last = entries.back();
    entries.clear();  // the others are closed as they stand
    if (const util::Status s = last->Stop()) return fmapi::Outcome::Failure(s, "Recording error.");
    if (last->TargetType() != kAliasReference) return fmapi::Outcome::Failure(util::kUnknownError, "Unknown data reference type.");
    fmapi::Outcome outcome =
        RecordedFileReference(last->Target(), "Failed to open recorded sound.", "Failed to set result.");
    // The reference names the temporary file: it is the caller's now.
    if (!outcome.Failed()) last->HandOnTemporaryFile();
    return outcome;
}

fmapi::Outcome RecordSoundFormatDialogFunction(const FunctionCall&) {
    Recorder* recorder = Recorder::Instance();
    if (!recorder) return fmapi::Outcome::Failure(util::kMemoryFull);
    struct Taken {
        Recorder& recorder;
        SoundGrabber* grabber = nullptr;
        SoundChannel* channel = nullptr;
        ~Taken() {
            if (channel) recorder.GiveBackChannel(channel);
            if (grabber) recorder.GiveBackGrabber(grabber);
        }
    } taken{*recorder};
    taken.grabber = recorder->TakeGrabber();
    if (!taken.grabber)
        return fmapi::Outcome::Failure(util::kUnknownError,
                                       "Recording not available at this time. Try to stop current recording.");
    taken.channel = recorder->TakeChannel();
    if (!taken.channel)
        return fmapi::Outcome::Failure(util::kUnknownError2, "Recording channel not available at this time. Try to "
                                                             "change input device or restart Vandrel.");
    // A tenth of full volume, as the dialog has always left the channel.
    taken.channel->recording = false;
    taken.channel->volume = 25;

    audio::RecordingFormat format = taken.grabber->format;
    std::string detail;
    if (const util::Status s = RunRecordingSettingsDialog(format, detail)) {
        if (detail.empty()) return fmapi::Outcome::Failure(s);
        return fmapi::Outcome::Failure(s, std::string(MessageForCode(s)) + " " + detail);
    }
    taken.grabber->format = format;
    std::string text;
    if (const util::Status s = util::SettingsToHexText(RecordingFormatBytes(format), text))
        return fmapi::Outcome::Failure(s, s == util::kMemoryFull ? "Error compressing data." : "Error creating hex.");
    return fmapi::Outcome::Text(std::move(text));
}

}  // namespace vd::recording
