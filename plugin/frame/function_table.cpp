#include "frame/function_table.h"

#include "container/functions/insert_quicktime_function.h"
#include "files/functions/file_functions.h"
#include "frame/functions/frame_functions.h"
#include "image/functions/effect_functions.h"
#include "image/functions/image_functions.h"
#include "image/functions/insert_export_functions.h"
#include "metadata/functions/metadata_functions.h"
#include "image/functions/transform_functions.h"
#include "playback/functions/playback_functions.h"
#include "recording/functions/recording_functions.h"
#include "sound/functions/sound_functions.h"
#include "util/status_codes.h"

#include <array>

namespace vd {

namespace {

constexpr FunctionEntry Sound(int16_t id, const char* name, int16_t minArgs, int16_t maxArgs, uint32_t flags,
                              Handler handler = NotImplemented, CountRule ownCount = {}) {
    return {id, name, 200 + id, nullptr, minArgs, maxArgs, flags, handler, FunctionGroup::Sound, ownCount};
}

constexpr FunctionEntry Numbered(FunctionGroup group, int16_t id, const char* name, const char* prototype,
                                 int16_t minArgs, int16_t maxArgs, Handler handler = NotImplemented,
                                 CountRule ownCount = {}) {
    return {id, name, 0, prototype, minArgs, maxArgs, kShownEverywhere, handler, group, ownCount};
}

constexpr FunctionEntry Image(int16_t id, const char* name, const char* prototype, int16_t minArgs,
                              int16_t maxArgs, Handler handler = NotImplemented, CountRule ownCount = {}) {
    return Numbered(FunctionGroup::Image, id, name, prototype, minArgs, maxArgs, handler, ownCount);
}

// The sound functions refuse a count of their own with -50 and a sentence that says what they need.
constexpr CountRule Requires(int16_t min, int16_t max, const char* message) {
    return {min, max, util::kBadParameter, message};
}

// The file functions' rule: exactly the registered count, or 20100 with a sentence that says it.
constexpr CountRule RequiresExactly(int16_t count) {
    constexpr const char* kMessages[] = {"Requires no parameters", "Requires exactly one parameter",
                                         "Requires exactly 2 parameters", "Requires exactly 3 parameters"};
    return {count, count, util::kWrongArgumentCount, count >= 0 && count < 4 ? kMessages[count] : nullptr};
}

constexpr FunctionEntry File(int16_t id, const char* name, const char* prototype, int16_t minArgs,
                             int16_t maxArgs, Handler handler) {
    return Numbered(FunctionGroup::File, id, name, prototype, minArgs, maxArgs, handler,
                    RequiresExactly(minArgs));
}

constexpr FunctionEntry Reported(FunctionEntry entry, Reporting reporting) {
    entry.reporting = reporting;
    return entry;
}

constexpr FunctionEntry AnsweringAs(FunctionEntry entry, int16_t id) {
    entry.answersAs = id;
    return entry;
}

// Old releases listed a scrap-type function here; its ids stay used up so later ids never move.
constexpr FunctionEntry Placeholder(int16_t id) {
    return {id, "Dummy", 0, "Vandrel_ListScrapTypes(container)", 0, 0, 0, nullptr, FunctionGroup::Unregistered, {}};
}

constexpr FunctionEntry Unused(int16_t id) {
    return {id, nullptr, 0, nullptr, 0, 0, 0, nullptr, FunctionGroup::Unregistered, {}};
}

constexpr auto kNoUI = kShownEverywhereNoUI;
constexpr auto kUI = kShownEverywhere;

// Ids never change: databases store calls by id.
constexpr std::array kTable{
    Sound(1, "Vandrel_Version", 1, 1, kNoUI, VersionFunction, {1, 1, util::kBadParameter}),
    Sound(2, "Vandrel_PlaySound", 1, 4, kUI, playback::PlaySoundFunction),
    Sound(3, "Vandrel_CreateSound", 1, -1, kNoUI, sound::CreateSoundFunction),
    Sound(4, "Vandrel_AppendSound", 2, 2, kNoUI, sound::AppendSoundFunction,
          Requires(2, 2, "This function requires exactly 2 parameters.")),
    Sound(5, "Vandrel_ExtractSound", 3, 3, kNoUI, sound::ExtractSoundFunction,
          Requires(3, 3, "This function expects 3 parameters.")),
    Sound(6, "Vandrel_GetSoundInfo", 1, 1, kNoUI, sound::SoundInfoFunction,
          Requires(1, 1, "This function requires exactly 1 parameter.")),
    Sound(7, "Vandrel_MixSounds", 2, 2, kNoUI, sound::MixSoundsFunction,
          Requires(2, 2, "This function requires exactly 2 parameters.")),
    Sound(8, "Vandrel_SoundFormatDialog", 1, 1, kUI, sound::SoundFormatDialogFunction,
          Requires(1, 1, "This function requires exactly 1 parameter.")),
    Sound(9, "Vandrel_ConvertSound", 3, -1, kNoUI, sound::ConvertSoundFunction,
          Requires(3, -1, "This function requires 3 or more parameters.")),
    Sound(10, "Vandrel_ListSoundOutputFormats", 0, 0, kNoUI, sound::ListSoundOutputFormatsFunction),
    // More than three arguments are not refused: the rest are not read.
    Sound(11, "Vandrel_Amplify", 2, 3, kNoUI, sound::AmplifyFunction,
          Requires(2, -1, "This function requires 2 or 3 parameters.")),
    Sound(12, "Vandrel_FadeSound", 5, 5, kNoUI, sound::FadeSoundFunction,
          Requires(5, 5, "This function expects 5 parameters.")),
    Reported(Sound(13, "Vandrel_GetLastError", 0, 0, kNoUI, LastErrorFunction, RequiresExactly(0)),
             Reporting::kKeepsLastError),
    Sound(14, "Vandrel_StopSound", 0, 0, kUI, playback::StopSoundFunction),
    Sound(15, "Vandrel_ExtractInfo", 1, 2, kNoUI, sound::ExtractInfoFunction,
          Requires(1, 2, "This function requires 1 or 2 arguments.")),
    Reported(Sound(16, "Vandrel_InsertQuickTime", 0, 1, kUI, container::InsertQuickTimeFunction,
                   Requires(0, 1, "This function requires zero or 1 parameter.")),
             Reporting::kEmptyContainer),
    Reported(Sound(17, "Vandrel_RecordSoundStart", 0, 3, kUI, recording::RecordSoundStartFunction),
             Reporting::kEmptyResult),
    Reported(Sound(18, "Vandrel_RecordSoundStop", 0, 0, kUI, recording::RecordSoundStopFunction),
             Reporting::kEmptyResult),
    Sound(19, "Vandrel_RecordSoundPause", 0, 0, kUI, recording::RecordSoundPauseFunction),
    Sound(20, "Vandrel_RecordSoundFormatDialog", 0, 0, kUI, recording::RecordSoundFormatDialogFunction),
    Reported(Sound(21, "Vandrel_Get", 1, 1, kNoUI, playback::GetFunction), Reporting::kErrorCode),
    Sound(22, "Vandrel_SetMetadata", 2, -1, kNoUI, metadata::SetMetadataFunction),
    Reported(Sound(23, "Vandrel_Set", 1, 2, kNoUI, playback::SetFunction), Reporting::kErrorCode),
    Sound(24, "Vandrel_GetMetadata", 1, 3, kNoUI, metadata::GetMetadataFunction),
    Sound(25, "Vandrel_PlayPause", 0, 1, kUI, playback::PlayPauseFunction),
    // Normalize is Amplify with its mode chosen: the result answers what Amplify would, while
    // Vandrel_GetLastError tells the outcome as Normalize's own.
    AnsweringAs(Sound(26, "Vandrel_Normalize", 1, 1, kNoUI, sound::NormalizeFunction,
                      Requires(1, 1, "This function requires 1 parameter.")),
                11),
    // Only four arguments are needed; the optional ones count as left out when empty.
    Reported(Sound(27, "Vandrel_DrawWaveform", 6, 8, kUI, sound::DrawWaveformFunction,
                   Requires(4, -1, "This function requires at least 4 parameters.")),
             Reporting::kEmptyResult),

    Image(51, "Vandrel_ExportField", "Vandrel_ExportField ( container ; path ; replace )", 3, 3,
          image::ExportFieldFunction),
    Image(52, "Vandrel_TScale", "Vandrel_TScale ( xScale ; yScale )", 2, 2, image::TScaleFunction),
    Image(53, "Vandrel_TSkew", "Vandrel_TSkew ( xSkew ; ySkew )", 2, 2, image::TSkewFunction),
    Image(54, "Vandrel_GetImageInfo", "Vandrel_GetImageInfo ( container )", 1, 1, image::GetImageInfoFunction),
    // "topRigthY" is how the parameter has always been shown; scripts copied from the dialog use it.
    Image(55, "Vandrel_TQuad",
          "Vandrel_TQuad ( sourceScale ; topLeftX ; topLeftY ; topRightX ; topRigthY ; bottomRightX ; "
          "bottomRightY ; bottomLeftX ; bottomLeftY )",
          9, 9, image::TQuadFunction),
    Numbered(FunctionGroup::Image, 56, "Vandrel_GetMouseUp", "Vandrel_GetMouseUp", 0, 0, MouseUpFunction),
    Image(57, "Vandrel_TApply", "Vandrel_TApply ( container ) ", 1, 1, image::TApplyFunction),  // the trailing blank is shipped
    Image(58, "Vandrel_TCrop", "Vandrel_TCrop ( left ; top ; right ; bottom )", 4, 4, image::TCropFunction),
    Image(59, "Vandrel_TRotate", "Vandrel_TRotate ( degrees )", 1, 1, image::TRotateFunction),
    Image(60, "Vandrel_TClear", "Vandrel_TClear", 0, 0, image::TClearFunction),
    Image(61, "Vandrel_EffectDialog", "Vandrel_EffectDialog ( effectType [; previewImage [; previewImage2 ]] )", 1, 3,
          image::EffectDialogFunction),
    Image(62, "Vandrel_EffectApply", "Vandrel_EffectApply ( container ; effectDescription [; container2 ] )", 2, 3,
          image::EffectApplyFunction),
    Image(63, "Vandrel_InsertImage", "Vandrel_InsertImage ( filepath ; byReference )", 2, 2,
          image::InsertImageFunction),
    // The file group is registered from inside the image group, after its thirteenth entry.
    File(64, "Vandrel_SetDefaultFolder", "Vandrel_SetDefaultFolder ( path )", 1, 1, files::SetDefaultFolderFunction),
    File(65, "Vandrel_GetDefaultFolder", "Vandrel_GetDefaultFolder", 0, 0, files::GetDefaultFolderFunction),
    File(66, "Vandrel_CopyItem", "Vandrel_CopyItem ( source ; dest ; replace )", 3, 3, files::CopyItemFunction),
    File(67, "Vandrel_MoveItem", "Vandrel_MoveItem ( source ; dest )", 2, 2, files::MoveItemFunction),
    File(68, "Vandrel_DeleteItem", "Vandrel_DeleteItem ( item ; folderFlag )", 2, 2, files::DeleteItemFunction),
    File(69, "Vandrel_RenameItem", "Vandrel_RenameItem ( item ; newName )", 2, 2, files::RenameItemFunction),
    File(70, "Vandrel_CreateFolder", "Vandrel_CreateFolder ( enclosingFolder ; newFolderName )", 2, 2, files::CreateFolderFunction),
    File(71, "Vandrel_ListFolder", "Vandrel_ListFolder ( enclosingFolder ; listAll )", 2, 2, files::ListFolderFunction),
    File(72, "Vandrel_GetItemInfo", "Vandrel_GetItemInfo ( item )", 1, 1, files::GetItemInfoFunction),
    File(73, "Vandrel_CreateAlias", "Vandrel_CreateAlias ( targetItem ; alias )", 2, 2, files::CreateAliasFunction),
    File(74, "Vandrel_OpenItem", "Vandrel_OpenItem ( item )", 1, 1, files::OpenItemFunction),
    File(75, "Vandrel_ListDisks", "Vandrel_ListDisks", 0, 0, files::ListDisksFunction),
    // The message has never matched the registered counts; scripts compare it as it is.
    Numbered(FunctionGroup::File, 76, "Vandrel_GetPath", "Vandrel_GetPath ( container )", 1, 2,
             files::GetPathFunction, {1, -1, util::kWrongArgumentCount, "Requires either 0 or 1 parameters"}),
    File(77, "Vandrel_GetName", "Vandrel_GetName ( container )", 1, 1, files::GetNameFunction),
    Placeholder(78), Placeholder(79), Placeholder(80), Placeholder(81), Placeholder(82),
    Placeholder(83), Placeholder(84), Placeholder(85), Placeholder(86),
    Image(87, "Vandrel_TResize", "Vandrel_TResize ( xDim ; yDim )", 2, 2, image::TResizeFunction),
    Unused(88),
    Image(89, "Vandrel_SetImageDefaults", "Vandrel_SetImageDefaults ( previewQuality ; previewMark )", 2, 2,
          image::SetImageDefaultsFunction),
    Image(90, "Vandrel_ConversionDialog", "Vandrel_ConversionDialog ( imageType )", 1, 1,
          image::ConversionDialogFunction),
    // Only 2 or 11 arguments are taken; the message has always asked for 10.
    Image(91, "Vandrel_ConvertImage",
          "Vandrel_ConvertImage ( container ; imageType ; depth ; hres ; vres ; targetBytes ; quality ; "
          "imageIndex ; transcode ; packBits ; interlace )",
          2, 11, image::ConvertImageFunction,
          {2, 11, util::kWrongArgumentCount, "Requires either 2 or 10 parameters"}),
    Image(92, "Vandrel_ListImageOutputTypes", "Vandrel_ListImageOutputTypes", 0, 0,
          image::ListImageOutputTypesFunction),
    // Registered a second time, with the same handler, for the one- and two-argument form.
    Image(93, "Vandrel_GetMetadata", "Vandrel_GetMetadata ( containerOrFile {; tag} )", 1, 2,
          metadata::GetMetadataFunction),
    Image(94, "Vandrel_InsertFile", "Vandrel_InsertFile ( filepath ; byReference ; asText )", 3, 3,
          image::InsertFileFunction),
    Unused(95),
};

// Registration hands out ids by counting; the table's ids must be exactly what the count gives.
constexpr bool IdsFollowRegistrationOrder() {
    int16_t next = 1;
    bool numbering = false;
    for (const auto& e : kTable) {
        if (e.group != FunctionGroup::Sound && !numbering) numbering = true, next = kFirstNumberedId;
        if (e.group == FunctionGroup::Sound && (numbering || e.prototypeKey != 200 + e.id)) return false;
        if (e.id != next++) return false;
        if (e.group != FunctionGroup::Unregistered && !e.name) return false;
        // Positive codes have no table text to stand in for a missing message.
        if (e.ownCount.status > 0 && !e.ownCount.message) return false;
    }
    return next == kNextIdAfterRegistration;
}

constexpr bool AnswersAsARegisteredFunction() {
    for (const auto& e : kTable) {
        if (!e.answersAs) continue;
        bool found = false;
        for (const auto& other : kTable) found |= other.id == e.answersAs && other.group != FunctionGroup::Unregistered;
        if (!found) return false;
    }
    return true;
}
static_assert(AnswersAsARegisteredFunction(), "a function can only answer as another registered function");
static_assert(IdsFollowRegistrationOrder(), "function ids must follow registration order");

constexpr auto kById = [] {
    std::array<const FunctionEntry*, kNextIdAfterRegistration> index{};
    for (const auto& e : kTable)
        if (e.group != FunctionGroup::Unregistered) index[static_cast<size_t>(e.id)] = &e;
    return index;
}();

}  // namespace

std::span<const FunctionEntry> FunctionTable() { return kTable; }

const FunctionEntry* FindFunction(int16_t id) {
    if (id < 0 || id >= kNextIdAfterRegistration) return nullptr;
    return kById[static_cast<size_t>(id)];
}

}  // namespace vd
