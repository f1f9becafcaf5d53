// Vandrel_Version, Vandrel_GetLastError and the functions not built yet, called from calculations
// the way database designers call them.
#include "frame/handler_dispatch.h"
#include "fmapi/errors/vds_error.h"
#include "frame/function_table.h"
#include "frame/functions/frame_functions.h"
#include "plugin/plugin_test_support.h"
#include "vandrel_version.h"

#include <api/text_codec.h>
#include <api/values.h>
#include <support/temp_folder.h>

#include <gtest/gtest.h>

namespace vdtest {
namespace {

class FrameFunctions : public ::testing::Test {
protected:
    FrameFunctions() : session_(BundleSession(folder_ / "Test.vddb")) {}

    FMX_Data Eval(const std::u16string& calculation) { return EvaluateWith(session_, calculation, {}); }
    std::string Text(const std::u16string& calculation) { return vdhost::utf8Of(Eval(calculation)); }

    TempFolder folder_;
    vdhost::Session session_;
};

TEST_F(FrameFunctions, VersionForms) {
    struct Case {
        std::u16string key;
        std::string answer;
    };
    const Case cases[] = {
        {u"\"\"", "Vandrel " VANDREL_VERSION_TEXT " for Linux"},  // the localized "String3"
        {u"\"short\"", VANDREL_VERSION_TEXT},
        {u"\"LONG\"", "Vandrel " VANDREL_VERSION_TEXT " for Linux (built " VANDREL_BUILD_DATE ")"},
        {u"\"platform\"", "Linux"},
        {u"\"number\"", std::to_string(VANDREL_VERSION_NUMBER)},
        {u"\"nightly\"", "$-50:Vandrel_Version: Wrong parameter(s)."},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Text(u"Vandrel_Version ( " + c.key + u" )"), c.answer);
        std::string status = c.answer.rfind("$-50", 0) == 0 ? c.answer : "$0:Vandrel_Version: No error.";
        EXPECT_EQ(Text(u"Vandrel_GetLastError"), status);
    }
    EXPECT_EQ(Eval(u"Vandrel_Version ( \"number\" )").type, FMX_TYPE_NUMBER);
}

TEST_F(FrameFunctions, LastErrorReportsTheCallBeforeItAndKeepsIt) {
    EXPECT_EQ(Text(u"Vandrel_Amplify ( 1 ; 2 )"), "$-50:Vandrel_Amplify: Could not get parameter #1 as sound.");
    Text(u"Vandrel_GetLastError");  // asking does not change the answer
    EXPECT_EQ(Text(u"Vandrel_GetLastError"), "$-50:Vandrel_Amplify: Could not get parameter #1 as sound.");
    Text(u"Vandrel_Version ( \"short\" )");
    EXPECT_EQ(Text(u"Vandrel_GetLastError"), "$0:Vandrel_Version: No error.");
}

TEST_F(FrameFunctions, EveryFunctionNotBuiltYetNamesItselfInItsStatus) {
    // The functions whose subsystem has not landed yet, as the table says.
    int checked = 0, expectedCount = 0;
    for (const auto& entry : vd::FunctionTable())
        expectedCount += entry.name && entry.handler == vd::NotImplemented;
    for (const auto* f : vdhost::FunctionRegistry::instance().all()) {
        const vd::FunctionEntry* entry = vd::FindFunction(f->id);
        if (f->pluginId != kVandrelId || !entry || entry->handler != vd::NotImplemented) continue;
        std::string name = vdhost::utf16ToUtf8(f->name);
        std::u16string call = f->name;
        for (int i = 0; i < f->minArgs; ++i) call += i ? u" ; 1" : u" ( 1";
        if (f->minArgs) call += u" )";
        std::string expected = "$-4:" + name + ": Feature is not implemented yet.";
        EXPECT_EQ(Text(call), expected);
        EXPECT_EQ(Text(u"Vandrel_GetLastError"), expected);
        ++checked;
    }
    EXPECT_EQ(checked, expectedCount);
}

// The one boundary between handlers and the host: what escapes a handler becomes the error object.
TEST(HandlerDispatch, HostFailuresInsideAHandlerBecomeAStatus) {
    FMX_Data result;
    // No argument vector at all: the host refuses the first argument call, the handler throws.
    EXPECT_EQ(vd::DispatchCall(1, nullptr, nullptr, &result), 0);
    EXPECT_EQ(vdhost::utf8Of(result), "$-1:Vandrel_Version: Unknown error.");
    EXPECT_EQ(vd::gLastError.StatusText(), "$-1:Vandrel_Version: Unknown error.");

    // Not even a result to write the status into: the code is all the host gets.
    EXPECT_EQ(vd::DispatchCall(11, nullptr, nullptr, nullptr), -1);
    EXPECT_EQ(vd::gLastError.StatusText(), "$-1:Vandrel_Amplify: Unknown error.");

    for (int16_t unknown : {0, 28, 96, -1})
        EXPECT_EQ(vd::DispatchCall(unknown, nullptr, nullptr, &result), FMX_ERR_PARAMETER) << unknown;
}

// Counts the host would refuse reach the dispatch from a host that does not check: each function
// refuses them under its own name, or as its table row says it reports.
TEST(HandlerDispatch, CountsOutsideAFunctionsRuleAreRefusedUnderItsName) {
    const auto dispatch = [](int16_t id, size_t count) {
        FMX_DataVect args;
        args.items.assign(count, vdhost::makeTextUtf8("/nonexistent"));
        FMX_Data result;
        EXPECT_EQ(vd::DispatchCall(id, nullptr, &args, &result), 0) << id;
        return vdhost::utf8Of(result);
    };
    int refusing = 0;
    for (const auto& entry : vd::FunctionTable()) {
        const vd::CountRule& rule = entry.ownCount;
        if (!entry.name || rule.status == 0 || entry.reporting == vd::Reporting::kKeepsLastError) continue;
        const std::string answer = dispatch(entry.id, size_t(rule.min > 0 ? rule.min - 1 : rule.max + 1));
        EXPECT_EQ(vd::gLastError.Name(), entry.name);
        EXPECT_EQ(vd::gLastError.Code(), rule.status) << entry.name;
        if (entry.reporting == vd::Reporting::kStatusText) {
            EXPECT_EQ(answer, vd::gLastError.StatusText());
        }
        ++refusing;
    }
    ASSERT_GT(refusing, 0);

    struct Case {
        int16_t id;
        size_t count;
        std::string answer;
    };
    const Case cases[] = {
        {1, 0, "$-50:Vandrel_Version: Wrong parameter(s)."},
        {15, 3, "$-50:Vandrel_ExtractInfo: This function requires 1 or 2 arguments."},
        {64, 0, "$20100:Vandrel_SetDefaultFolder: Requires exactly one parameter"},
        {65, 1, "$20100:Vandrel_GetDefaultFolder: Requires no parameters"},
        {66, 2, "$20100:Vandrel_CopyItem: Requires exactly 3 parameters"},
        {68, 3, "$20100:Vandrel_DeleteItem: Requires exactly 2 parameters"},
        {76, 0, "$20100:Vandrel_GetPath: Requires either 0 or 1 parameters"},
        {27, 3, ""},  // DrawWaveform's failures leave the result empty
        {13, 1, "$20100:Requires no parameters"},
    };
    for (const Case& c : cases) EXPECT_EQ(dispatch(c.id, c.count), c.answer) << c.id;
    // GetLastError refused without a name, and left the outcome it reports on as it was.
    EXPECT_EQ(vd::gLastError.StatusText(), "$-50:Vandrel_DrawWaveform: This function requires at least 4 parameters.");
}

}  // namespace
}  // namespace vdtest
