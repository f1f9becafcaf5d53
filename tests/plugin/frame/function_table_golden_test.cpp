// The functions as the host's registry holds them after start-up. Ids, names, counts, flags and
// prototypes are what databases and scripts are written against. Representative rows are pinned:
// the ends of both id ranges, an open argument count, and the prototypes kept as they always read.
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
    {27, "Vandrel_DrawWaveform", 6, 8, UI,
     "Vandrel_DrawWaveform ( sound ; trackChannel ; width ; height ; startTime ; endTime { ; waveColor ; "
     "backgroundColor } )"},
    {51, "Vandrel_ExportField", 3, 3, UI, "Vandrel_ExportField ( container ; path ; replace )"},
    {55, "Vandrel_TQuad", 9, 9, UI,
     "Vandrel_TQuad ( sourceScale ; topLeftX ; topLeftY ; topRightX ; topRigthY ; bottomRightX ; bottomRightY ; "
     "bottomLeftX ; bottomLeftY )"},
    {57, "Vandrel_TApply", 1, 1, UI, "Vandrel_TApply ( container ) "},
    {93, "Vandrel_GetMetadata", 1, 2, UI, "Vandrel_GetMetadata ( containerOrFile {; tag} )"},
    {94, "Vandrel_InsertFile", 3, 3, UI, "Vandrel_InsertFile ( filepath ; byReference ; asText )"},

};

TEST(FunctionTable, RegistrationsAsTheHostSeesThem) {
    RegistryLog log;
    vdhost::Plugin plugin(VandrelBundle());
    ASSERT_EQ(plugin.start({}), 52);

    std::vector<int16_t> ids;
    for (const auto* f : vdhost::FunctionRegistry::instance().all())
        if (f->pluginId == kVandrelId) ids.push_back(f->id);
    // The registered ids: 1-27, 51-77, 87 and 89-94.
    std::vector<int16_t> expected;
    for (const auto& [first, last] : {std::pair{1, 27}, std::pair{51, 77}, std::pair{87, 87}, std::pair{89, 94}})
        for (int id = first; id <= last; ++id) expected.push_back(int16_t(id));
    EXPECT_EQ(ids, expected);
    for (const auto& want : kGolden) {
        SCOPED_TRACE(want.name);
        const vdhost::ExternalFunction* got = nullptr;
        for (const auto* f : vdhost::FunctionRegistry::instance().all())
            if (f->pluginId == kVandrelId && f->id == want.id) got = f;
        ASSERT_NE(got, nullptr);
        EXPECT_EQ(vdhost::utf16ToUtf8(got->name), want.name);
        EXPECT_EQ(got->minArgs, want.minArgs);
        EXPECT_EQ(got->maxArgs, want.maxArgs);
        EXPECT_EQ(got->flags, want.flags);
        EXPECT_EQ(vdhost::utf16ToUtf8(got->prototype), want.prototype);
    }

    // Only the registered ids were asked for, each once, in order; the unused ids and the nine
    // placeholders were skipped without a request.
    EXPECT_EQ(log.Ids(vdhost::FunctionRegistry::Request::Register), ids);
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
