// Reading arguments the way every function does, with the host's own data values, and the
// messages the frame's checks leave in the legacy result block.
#include "fmapi/args/arg_count.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/legacy_result.h"

#include <api/values.h>
#include <plugins/memory_blocks.h>

#include <gtest/gtest.h>

#include <string>

namespace vd {
namespace {

FMX_DataVect Args(std::initializer_list<FMX_Data> values) {
    FMX_DataVect v;
    v.items.assign(values.begin(), values.end());
    return v;
}

FMX_Data Text(const std::string& s) { return vdhost::makeTextUtf8(s); }

// The frame's checks write into a host memory block, as they do inside the host.
class LegacyResultTest : public ::testing::Test {
protected:
    void SetUp() override {
        ExternCallBlock block{};
        const auto& memory = vdhost::memoryBlockCallbacks();
        block.newHandle = memory.newHandle;
        block.setHandleSize = memory.setHandleSize;
        block.getHandleSize = memory.getHandleSize;
        block.handleData = memory.handleData;
        block.disposeHandle = memory.disposeHandle;
        KeepMemoryCallbacks(block);
    }
    void TearDown() override { ReleaseLegacyResult(); }

    // What a host would show: the text in the block itself.
    static std::string Shown() { return vdhost::memoryBlockText(LegacyResultBlock()); }
};

TEST(Arguments, BooleanWords) {
    struct Case {
        const char* word;
        bool value;
    };
    const Case cases[] = {
        {"YES", true}, {"Ja", true}, {"o", true}, {"TRUE", true}, {"nein", false}, {"2", false}, {"yes ", false},
    };
    for (const auto& c : cases) {
        auto args = Args({Text(c.word)});
        bool value = !c.value;
        EXPECT_EQ(ArgBoolean(&args, 0, value), 0) << c.word;
        EXPECT_EQ(value, c.value) << '"' << c.word << '"';
    }
    auto args = Args({Text("yes")});
    bool value = false;
    EXPECT_EQ(ArgBoolean(&args, 1, value), -50);
}

TEST_F(LegacyResultTest, TypeCodes) {
    struct Case {
        FMX_Data data;
        int status;
        uint32_t code;
        std::string legacy;
    };
    const Case cases[] = {
        {Text("JPEG"), 0, 0x4A504547, ""},
        {Text("JPEG|PNGf"), 0, 0x4A504547, ""},
        {Text(""), 0, 0, ""},
        {Text("JPG"), 1, 0, "$20101:Image type code must be exactly 4 characters, empty, or start a list of items"},
        {vdhost::makeNumber(1234), 1, 0, "$20102:Image type code must be text"},
    };
    for (const auto& c : cases) {
        ReleaseLegacyResult();
        uint32_t code = 0xDEADBEEF;
        EXPECT_EQ(ArgTypeCode(code, &c.data), c.status) << vdhost::utf8Of(c.data);
        if (c.status == 0) {
            EXPECT_EQ(code, c.code) << vdhost::utf8Of(c.data);
        }
        EXPECT_EQ(Shown(), c.legacy);
    }
}

TEST(Arguments, TextsComeBackWhole) {
    auto args = Args({Text("Gr\xC3\xBC\xC3\x9F \xF0\x9F\x8E\xB5"), vdhost::makeNumber(-2.75)});
    EXPECT_EQ(ArgCText(ArgText(&args, 0)), "Gr\xC3\xBC\xC3\x9F \xF0\x9F\x8E\xB5");
    EXPECT_EQ(ArgUtf16(ArgText(&args, 0)), u"Gr\u00FC\u00DF \U0001F3B5");
    EXPECT_EQ(ArgCount(&args), 2);
    EXPECT_EQ(ArgType(ArgData(&args, 1)), FMX_TYPE_NUMBER);
    // An index past the end is a host failure: it arrives as an exception, never as a crash.
    EXPECT_ANY_THROW(ArgText(&args, 2));
}

TEST_F(LegacyResultTest, CountMessages) {
    struct Case {
        size_t given;
        int expected;
        std::string legacy;
    };
    const Case cases[] = {
        {1, 0, "$20100:Requires no parameters"},
        {0, 1, "$20100:Requires exactly one parameter"},
        {4, 3, "$20100:Requires exactly 3 parameters"},
    };
    for (const auto& c : cases) {
        FMX_DataVect args;
        args.items.resize(c.given);
        EXPECT_EQ(CheckArgCount(&args, c.expected), 1);
        EXPECT_EQ(Shown(), c.legacy);
        EXPECT_EQ(LegacyResultText(), c.legacy);
    }
    FMX_DataVect three;
    three.items.resize(3);
    EXPECT_EQ(CheckArgCount(&three, 3), 0);
    EXPECT_EQ(CheckArgCount(&three, -1), 0);
    EXPECT_EQ(Shown(), "$20100:Requires exactly 3 parameters");  // a passing check leaves it alone
}

}  // namespace
}  // namespace vd
