// UTF-8 and UTF-16 conversions and their limits.
#include "fmapi/args/text_conversion.h"

#include <gtest/gtest.h>

namespace vd {
namespace {

TEST(TextConversion, RoundTripsEveryPlane) {
    const std::u16string samples[] = {u"", u"Gr\u00FC\u00DFe \u20AC \u65E5\u672C \U0001F3B5",
                                      std::u16string(1, u'\0') + u"after nul"};
    for (const auto& units : samples) {
        auto utf8 = Utf16ToUtf8(units);
        ASSERT_TRUE(utf8.has_value());
        EXPECT_EQ(Utf8ToUtf16(*utf8), units);
    }
    EXPECT_EQ(Utf16ToUtf8(u"\U0001F3B5"), "\xF0\x9F\x8E\xB5");
}

TEST(TextConversion, RefusesWhatIsNotText) {
    const char* badUtf8[] = {"a\xE2\x82", "\xC0\xAF" /* overlong "/" */, "\xED\xA0\x80" /* a surrogate */,
                             "\xF4\x90\x80\x80" /* past U+10FFFF */};
    for (const char* bytes : badUtf8) EXPECT_FALSE(Utf8ToUtf16(bytes).has_value()) << bytes;

    EXPECT_FALSE(Utf16ToUtf8(u"a\xD800").has_value());      // high surrogate at the end
    EXPECT_FALSE(Utf16ToUtf8(u"\xDC00 b").has_value());     // low surrogate alone
    EXPECT_FALSE(Utf16ToUtf8(u"\xD800\x0041").has_value()); // high surrogate without its pair
}

TEST(TextConversion, Utf16ToUtf8StopsAtItsSizeLimit) {
    std::u16string longest(kUtf16ToUtf8MaxUnits, u'\u00E9');
    auto utf8 = Utf16ToUtf8(longest);
    ASSERT_TRUE(utf8.has_value());
    EXPECT_EQ(utf8->size(), 2 * kUtf16ToUtf8MaxUnits);
    EXPECT_FALSE(Utf16ToUtf8(longest + u"x").has_value());
}

TEST(TextConversion, CutAtReturn) {
    struct Case {
        std::string in, out;
    };
    const Case cases[] = {{"one\rtwo\rthree", "one"}, {"\rleading", ""}, {"line\nfeed stays", "line\nfeed stays"}};
    for (auto c : cases) {
        CutAtReturn(c.in);
        EXPECT_EQ(c.in, c.out);
    }
}

}  // namespace
}  // namespace vd
