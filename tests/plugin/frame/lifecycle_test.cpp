// Start-up and shut-down of the real bundle, as the host drives them.
#include "plugin/plugin_test_support.h"

#include <api/objects.h>
#include <api/text_codec.h>
#include <api/values.h>

#include <gtest/gtest.h>

#include <set>

namespace vdtest {
namespace {

using Request = vdhost::FunctionRegistry::Request;

// Which version codes are accepted is pinned in the host version tests; here each answer once,
// and a start without the media layer.
TEST(StartUp, AnswersForHostInterfaceVersionsAndVersionTextsAndTheMediaLayer) {
    ScopedEnv fallback("VDHOST_VERSION_TEXT", std::nullopt);
    const struct {
        vdhost::HostIdentity identity;
        std::optional<std::string> mediaLayer;
        intptr_t answer;
    } cases[] = {
        {{49, u"ProAdvanced 11.0v3"}, std::nullopt, -1},
        {{50, u"ProAdvanced 7.0v3"}, std::nullopt, 52},
        {{51, u"Pro 10.1v2"}, std::nullopt, -2},
        {{}, "absent", -2},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.identity.interfaceVersion << " " << vdhost::utf16ToUtf8(c.identity.versionText)
                                        << " " << c.mediaLayer.value_or("present"));
        ScopedEnv media("VANDREL_MEDIA_LAYER", c.mediaLayer);
        RegistryLog log;
        vdhost::Plugin plugin(VandrelBundle());
        EXPECT_EQ(plugin.start(c.identity), c.answer);
        // A refused start registers nothing.
        if (c.answer < 0) { EXPECT_TRUE(log.Ids(Request::Register).empty()); }
    }
}

TEST(StartUp, WithoutJpegExportTheFunctionsStillRegister) {
    ScopedEnv jpeg("VANDREL_JPEG_EXPORT", "absent");
    vdhost::Plugin plugin(VandrelBundle());
    EXPECT_EQ(plugin.start({}), 52);
    EXPECT_NE(vdhost::FunctionRegistry::instance().find(u"Vandrel_ConvertImage"), nullptr);
}

TEST(ShutDown, UnregistersEveryIdFromTheTopDown) {
    RegistryLog log;
    vdhost::Plugin plugin(VandrelBundle());
    ASSERT_EQ(plugin.start({}), 52);
    std::set<int16_t> registered;
    for (int16_t id : log.Ids(Request::Register)) registered.insert(id);
    log.Clear();

    plugin.shutDown();
    EXPECT_EQ(log.Ids(Request::Unregister), Countdown(96));
    for (const auto& r : log.requests)
        EXPECT_EQ(r.answer, registered.count(r.id) ? 0 : FMX_ERR_PARAMETER) << r.id;
    for (const auto* f : vdhost::FunctionRegistry::instance().all()) EXPECT_NE(f->pluginId, kVandrelId);

    log.Clear();
    plugin.shutDown();  // a second shut-down finds nothing left to do
    EXPECT_TRUE(log.requests.empty());
}

TEST(ShutDown, AfterARefusedStartUpIsHarmless) {
    RegistryLog log;
    vdhost::Plugin plugin(VandrelBundle());
    ASSERT_EQ(plugin.start({52, u"Pro 8.0v0"}), -2);
    plugin.shutDown();
    // The numbering never started, so shut-down counts down from the first numbered id; every
    // answer is "not registered" and nothing else happens.
    EXPECT_EQ(log.Ids(Request::Unregister), Countdown(51));
    for (const auto& r : log.requests) EXPECT_EQ(r.answer, FMX_ERR_PARAMETER);
}

FMX_ErrCode DummyHandler(int16_t, const FMX_ExprEnv*, const FMX_DataVect*, FMX_Data*) { return 0; }

TEST(StartUp, ASoundFunctionTheHostRefusesUndoesTheGroup) {
    auto& registry = vdhost::FunctionRegistry::instance();
    vdhost::ExternalFunction squatter;
    squatter.pluginId = kVandrelId;
    squatter.id = 5;
    squatter.name = u"Squatter";
    squatter.handler = DummyHandler;
    ASSERT_EQ(registry.add(squatter), 0);

    RegistryLog log;
    {
        vdhost::Plugin plugin(VandrelBundle());
        EXPECT_EQ(plugin.start({}), -2);
    }
    EXPECT_EQ(log.Ids(Request::Register), (std::vector<int16_t>{1, 2, 3, 4, 5}));
    EXPECT_EQ(log.requests[4].answer, FMX_ERR_ALREADY_EXISTS);
    EXPECT_EQ(log.Ids(Request::Unregister), (std::vector<int16_t>{4, 3, 2, 1}));
    EXPECT_EQ(registry.find(u"Squatter")->id, 5);  // the other plug-in's function is left alone
    EXPECT_EQ(registry.find(u"Vandrel_Version"), nullptr);
    EXPECT_EQ(registry.remove(kVandrelId, 5), 0);
}

TEST(StartUp, RepeatedCyclesInOneProcessLeaveNothingBehind) {
    for (int cycle = 0; cycle < 4; ++cycle) {
        vdhost::Plugin plugin(VandrelBundle());
        ASSERT_EQ(plugin.start({}), 52) << cycle;
        EXPECT_EQ(plugin.name(), u"Vandrel");

        // Each start registers handlers that reach the bundle's own dispatch and count rules.
        const auto* lastError = vdhost::FunctionRegistry::instance().find(u"Vandrel_GetLastError");
        ASSERT_NE(lastError, nullptr);
        FMX_DataVect oneArgument;
        oneArgument.items.resize(1);
        FMX_Data result;
        EXPECT_EQ(lastError->handler(13, nullptr, &oneArgument, &result), 0);
        EXPECT_EQ(vdhost::utf8Of(result), "$20100:Requires no parameters");

        plugin.idle(0);
        plugin.idle(3);
        plugin.configure();
        plugin.shutDown();
    }
    for (const auto* f : vdhost::FunctionRegistry::instance().all()) EXPECT_NE(f->pluginId, kVandrelId);
}

TEST(EntryPoint, SelectorsWithoutMeaningAreIgnored) {
    vdhost::Plugin plugin(VandrelBundle());
    ASSERT_EQ(plugin.start({}), 52);
    for (uint8_t selector : {2, 255}) {
        ExternCallBlock block = plugin.newBlock(selector);
        block.result = 12345;
        plugin.call(block);
        EXPECT_EQ(block.result, 12345) << int(selector);
    }
    EXPECT_NE(vdhost::FunctionRegistry::instance().find(u"Vandrel_Version"), nullptr);
}

// The buffer after a string request of that number and capacity; the buffer is 16 units larger
// than the capacity, and units the plug-in does not write stay 'x'.
std::u16string StringRequest(vdhost::Plugin& plugin, uint8_t number, uint32_t capacity) {
    std::vector<char16_t> buffer(capacity + 16, u'x');
    ExternCallBlock block = plugin.newBlock(FMX_CALL_GET_STRING);
    block.parm1 = number;
    block.parm3 = capacity;
    block.result = reinterpret_cast<intptr_t>(buffer.data());
    plugin.call(block);
    return std::u16string(buffer.begin(), buffer.end());
}

TEST(StringRequests, NameDescriptionAndOptions) {
    vdhost::Plugin plugin(VandrelBundle());
    ASSERT_EQ(plugin.start({}), 52);
    auto upToNul = [](const std::u16string& s) { return s.substr(0, s.find(u'\0')); };
    auto untouched = [](uint32_t capacity) { return std::u16string(capacity + 16, u'x'); };

    EXPECT_EQ(upToNul(StringRequest(plugin, 128, 9)), u"Vandrel");
    EXPECT_EQ(StringRequest(plugin, 128, 8)[0], u'\0');  // 7 units need a capacity of 9
    EXPECT_EQ(StringRequest(plugin, 128, 0), untouched(0));  // nothing to write into
    EXPECT_FALSE(upToNul(StringRequest(plugin, 129, 256)).empty());

    for (uint32_t capacity : {0u, 11u, 256u}) {
        auto options = StringRequest(plugin, 131, capacity);
        EXPECT_EQ(options.substr(0, 12), std::u16string(u"VD701YnYnnn") + u'\0') << capacity;
        EXPECT_EQ(options[12], u'x') << capacity;
    }
    EXPECT_EQ(plugin.options(), u"VD701YnYnnn");

    for (uint8_t unknown : {127, 130}) EXPECT_EQ(StringRequest(plugin, unknown, 64), untouched(64));
}

}  // namespace
}  // namespace vdtest
