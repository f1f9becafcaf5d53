// The functions as the host's registry holds them after start-up. Ids, names, counts, flags and
// prototypes are what databases and scripts are written against: any change here is a change users
// see, so the whole table is pinned.
#include "plugin/plugin_test_support.h"

#include <api/text_codec.h>

#include <gtest/gtest.h>

namespace vdtest {
namespace {

struct Row {
    int16_t id;
    const char* name;
    int16_t minArgs, maxArgs;
    uint32_t flags;
    const char* prototype;
};

constexpr uint32_t UI = 0xFF00, NoUI = 0xFF01;

const Row kGolden[] = {
    {1, "Vandrel_Version", 1, 1, NoUI, "Vandrel_Version ( versionFormat )"},
    {2, "Vandrel_PlaySound", 1, 4, UI, "Vandrel_PlaySound ( sound { ; asynchronous ; startTime ; endTime } )"},
    {3, "Vandrel_CreateSound", 1, -1, NoUI, "Vandrel_CreateSound ( waveform { ; duration ; frequency } )"},
    {4, "Vandrel_AppendSound", 2, 2, NoUI, "Vandrel_AppendSound ( sound1 ; sound2 )"},
    {5, "Vandrel_ExtractSound", 3, 3, NoUI, "Vandrel_ExtractSound ( sound ; startTime ; endTime )"},
    {6, "Vandrel_GetSoundInfo", 1, 1, NoUI, "Vandrel_GetSoundInfo ( sound )"},
    {7, "Vandrel_MixSounds", 2, 2, NoUI, "Vandrel_MixSounds ( sound1 ; sound2 )"},
    {8, "Vandrel_SoundFormatDialog", 1, 1, UI, "Vandrel_SoundFormatDialog ( outputFormat )"},
    {9, "Vandrel_ConvertSound", 3, -1, NoUI, "Vandrel_ConvertSound ( sound ; outputFile ; outputFormat { ; settings } )"},
    {10, "Vandrel_ListSoundOutputFormats", 0, 0, NoUI, "Vandrel_ListSoundOutputFormats"},
    {11, "Vandrel_Amplify", 2, 3, NoUI, "Vandrel_Amplify ( sound ; gain { ; limit } )"},
    {12, "Vandrel_FadeSound", 5, 5, NoUI, "Vandrel_FadeSound ( sound ; startTime ; endTime ; level ; fadeIn )"},
    {13, "Vandrel_GetLastError", 0, 0, NoUI, "Vandrel_GetLastError"},
    {14, "Vandrel_StopSound", 0, 0, UI, "Vandrel_StopSound"},
    {15, "Vandrel_ExtractInfo", 1, 2, NoUI, "Vandrel_ExtractInfo ( reportText { ; key } )"},
    {16, "Vandrel_InsertQuickTime", 0, 1, UI, "Vandrel_InsertQuickTime ( { path } )"},
    {17, "Vandrel_RecordSoundStart", 0, 3, UI, "Vandrel_RecordSoundStart ( { target ; asynchronous ; settings } )"},
    {18, "Vandrel_RecordSoundStop", 0, 0, UI, "Vandrel_RecordSoundStop"},
    {19, "Vandrel_RecordSoundPause", 0, 0, UI, "Vandrel_RecordSoundPause"},
    {20, "Vandrel_RecordSoundFormatDialog", 0, 0, UI, "Vandrel_RecordSoundFormatDialog"},
    {21, "Vandrel_Get", 1, 1, NoUI, "Vandrel_Get ( tag )"},
    {22, "Vandrel_SetMetadata", 2, -1, NoUI, "Vandrel_SetMetadata ( file ; tagValue { ; tagValue ... } )"},
    {23, "Vandrel_Set", 1, 2, NoUI, "Vandrel_Set ( tag { ; value } )"},
    {24, "Vandrel_GetMetadata", 1, 3, NoUI, "Vandrel_GetMetadata ( containerOrFile { ; tag ; format } )"},
    {25, "Vandrel_PlayPause", 0, 1, UI, "Vandrel_PlayPause ( { soundId } )"},
    {26, "Vandrel_Normalize", 1, 1, NoUI, "Vandrel_Normalize ( sound )"},
    {27, "Vandrel_DrawWaveform", 6, 8, UI,
     "Vandrel_DrawWaveform ( sound ; trackChannel ; width ; height ; startTime ; endTime { ; waveColor ; "
     "backgroundColor } )"},
    {51, "Vandrel_ExportField", 3, 3, UI, "Vandrel_ExportField ( container ; path ; replace )"},
    {52, "Vandrel_TScale", 2, 2, UI, "Vandrel_TScale ( xScale ; yScale )"},
    {53, "Vandrel_TSkew", 2, 2, UI, "Vandrel_TSkew ( xSkew ; ySkew )"},
    {54, "Vandrel_GetImageInfo", 1, 1, UI, "Vandrel_GetImageInfo ( container )"},
    {55, "Vandrel_TQuad", 9, 9, UI,
     "Vandrel_TQuad ( sourceScale ; topLeftX ; topLeftY ; topRightX ; topRigthY ; bottomRightX ; bottomRightY ; "
     "bottomLeftX ; bottomLeftY )"},
    {56, "Vandrel_GetMouseUp", 0, 0, UI, "Vandrel_GetMouseUp"},
    {57, "Vandrel_TApply", 1, 1, UI, "Vandrel_TApply ( container ) "},
    {58, "Vandrel_TCrop", 4, 4, UI, "Vandrel_TCrop ( left ; top ; right ; bottom )"},
    {59, "Vandrel_TRotate", 1, 1, UI, "Vandrel_TRotate ( degrees )"},
    {60, "Vandrel_TClear", 0, 0, UI, "Vandrel_TClear"},
    {61, "Vandrel_EffectDialog", 1, 3, UI, "Vandrel_EffectDialog ( effectType [; previewImage [; previewImage2 ]] )"},
    {62, "Vandrel_EffectApply", 2, 3, UI, "Vandrel_EffectApply ( container ; effectDescription [; container2 ] )"},
    {63, "Vandrel_InsertImage", 2, 2, UI, "Vandrel_InsertImage ( filepath ; byReference )"},
    {64, "Vandrel_SetDefaultFolder", 1, 1, UI, "Vandrel_SetDefaultFolder ( path )"},
    {65, "Vandrel_GetDefaultFolder", 0, 0, UI, "Vandrel_GetDefaultFolder"},
    {66, "Vandrel_CopyItem", 3, 3, UI, "Vandrel_CopyItem ( source ; dest ; replace )"},
    {67, "Vandrel_MoveItem", 2, 2, UI, "Vandrel_MoveItem ( source ; dest )"},
    {68, "Vandrel_DeleteItem", 2, 2, UI, "Vandrel_DeleteItem ( item ; folderFlag )"},
    {69, "Vandrel_RenameItem", 2, 2, UI, "Vandrel_RenameItem ( item ; newName )"},
    {70, "Vandrel_CreateFolder", 2, 2, UI, "Vandrel_CreateFolder ( enclosingFolder ; newFolderName )"},
    {71, "Vandrel_ListFolder", 2, 2, UI, "Vandrel_ListFolder ( enclosingFolder ; listAll )"},
    {72, "Vandrel_GetItemInfo", 1, 1, UI, "Vandrel_GetItemInfo ( item )"},
    {73, "Vandrel_CreateAlias", 2, 2, UI, "Vandrel_CreateAlias ( targetItem ; alias )"},
    {74, "Vandrel_OpenItem", 1, 1, UI, "Vandrel_OpenItem ( item )"},
    {75, "Vandrel_ListDisks", 0, 0, UI, "Vandrel_ListDisks"},
    {76, "Vandrel_GetPath", 1, 2, UI, "Vandrel_GetPath ( container )"},
    {77, "Vandrel_GetName", 1, 1, UI, "Vandrel_GetName ( container )"},
    {87, "Vandrel_TResize", 2, 2, UI, "Vandrel_TResize ( xDim ; yDim )"},
    {89, "Vandrel_SetImageDefaults", 2, 2, UI, "Vandrel_SetImageDefaults ( previewQuality ; previewMark )"},
    {90, "Vandrel_ConversionDialog", 1, 1, UI, "Vandrel_ConversionDialog ( imageType )"},
    {91, "Vandrel_ConvertImage", 2, 11, UI,
     "Vandrel_ConvertImage ( container ; imageType ; depth ; hres ; vres ; targetBytes ; quality ; imageIndex ; "
     "transcode ; packBits ; interlace )"},
    {92, "Vandrel_ListImageOutputTypes", 0, 0, UI, "Vandrel_ListImageOutputTypes"},
    {93, "Vandrel_GetMetadata", 1, 2, UI, "Vandrel_GetMetadata ( containerOrFile {; tag} )"},
    {94, "Vandrel_InsertFile", 3, 3, UI, "Vandrel_InsertFile ( filepath ; byReference ; asText )"},
};

TEST(FunctionTable, RegistrationsAsTheHostSeesThem) {
    RegistryLog log;
    vdhost::Plugin plugin(VandrelBundle());
    ASSERT_EQ(plugin.start({}), 52);

    std::vector<const vdhost::ExternalFunction*> ours;
    for (const auto* f : vdhost::FunctionRegistry::instance().all())
        if (f->pluginId == kVandrelId) ours.push_back(f);
    ASSERT_EQ(ours.size(), std::size(kGolden));
    for (size_t i = 0; i < ours.size(); ++i) {
        const auto& want = kGolden[i];
        const auto& got = *ours[i];
        SCOPED_TRACE(want.name);
        EXPECT_EQ(got.id, want.id);
        EXPECT_EQ(vdhost::utf16ToUtf8(got.name), want.name);
        EXPECT_EQ(got.minArgs, want.minArgs);
        EXPECT_EQ(got.maxArgs, want.maxArgs);
        EXPECT_EQ(got.flags, want.flags);
        EXPECT_EQ(vdhost::utf16ToUtf8(got.prototype), want.prototype);
    }

    // Only the registered ids were asked for, each once, in order; the unused ids and the nine
    // placeholders were skipped without a request.
    std::vector<int16_t> expected;
    for (const auto& row : kGolden) expected.push_back(row.id);
    EXPECT_EQ(log.Ids(vdhost::FunctionRegistry::Request::Register), expected);
    for (const auto& r : log.requests) EXPECT_EQ(r.answer, 0) << r.id;
}

TEST(FunctionTable, GetMetadataAnswersUnderBothRegistrations) {
    vdhost::Plugin plugin(VandrelBundle());
    ASSERT_EQ(plugin.start({}), 52);
    auto& registry = vdhost::FunctionRegistry::instance();
    EXPECT_EQ(registry.find(u"Vandrel_GetMetadata", 3)->id, 24);
    EXPECT_EQ(registry.find(u"vandrel_getmetadata", 1)->id, 24);  // the first registration wins
}

}  // namespace
}  // namespace vdtest
