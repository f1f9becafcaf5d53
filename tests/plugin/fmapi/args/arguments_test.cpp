// Reading arguments the way every function does, with the host's own data values.
#include "fmapi/args/arguments.h"

#include <api/values.h>

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

TEST(Arguments, TextsComeBackWhole) {
    auto args = Args({Text("Gr\xC3\xBC\xC3\x9F \xF0\x9F\x8E\xB5"), vdhost::makeNumber(-2.75)});
    EXPECT_EQ(ArgCText(ArgText(&args, 0)), "Gr\xC3\xBC\xC3\x9F \xF0\x9F\x8E\xB5");
    EXPECT_EQ(ArgUtf16(ArgText(&args, 0)), u"Gr\u00FC\u00DF \U0001F3B5");
    EXPECT_EQ(ArgCount(&args), 2);
    EXPECT_EQ(ArgType(ArgData(&args, 1)), FMX_TYPE_NUMBER);
    // An index past the end is a host failure: it arrives as an exception, never as a crash.
    EXPECT_ANY_THROW(ArgText(&args, 2));
}

}  // namespace
}  // namespace vd
