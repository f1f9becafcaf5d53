// Base64Encode and Base64Decode for texts and for files in containers.
#include "calc_test_support.h"

#include "api/fnam.h"
#include "api/values.h"
#include "calc/base64.h"

#include <random>

namespace vdhost::calc::testing {
namespace {

using Base64Test = CalcTest;

TEST_F(Base64Test, TextsAreEncodedAsUtf8AndInvalidBase64FailsAtTheCall) {
    expectTexts({
        {"Base64Encode ( \"Hello\" )", "SGVsbG8="}, {"Base64Encode ( \"\" )", ""},
        {"Base64Decode ( \"SGVsbG8\" )", "Hello"},           // padding left out
        {"Base64Decode ( \"SGVs¶bG8=\r\n\" )", "Hello"},     // wrapped lines
        {"Base64Decode ( Base64Encode ( \"ü¶😀\" ) )", "ü\r😀"},
    });
    // Invalid base64 is an evaluation error at the call.
    for (const char* input : {"SGVsbG8*", "SGVsb", "SG=VsbG8", "SGVsbG8=x"}) {
        SCOPED_TRACE(input);
        CalcError e = failure(std::string("1 & Base64Decode ( \"") + input + "\" )");
        EXPECT_EQ(e.kind, CalcError::Kind::Evaluation);
        EXPECT_EQ(e.column, 5);
        EXPECT_EQ(e.message, "Base64Decode was given text that is not valid base64");
    }
}

TEST_F(Base64Test, DecodingWithAFileNameMakesAContainerAndContainersEncodeTheirFileStream) {
    FMX_Data file = eval("Base64Decode ( \"AAEC/w==\" ; \"data.bin\" )");
    ASSERT_EQ(file.type, FMX_TYPE_BINARY);
    ASSERT_EQ(file.binary.streams.size(), 2u);
    EXPECT_EQ(streamText(file, "FILE"), std::string("\x00\x01\x02\xff", 4));
    int32_t fnam = file.binary.indexOf(kFnamType);
    ASSERT_GE(fnam, 0);
    EXPECT_EQ(decodeFnam(*file.binary.streams[static_cast<size_t>(fnam)].bytes), u"data.bin");
    EXPECT_EQ(utf8Of(file), "data.bin");

    // And back through a variable, as a script would.
    locals.set(u"$file", file);
    EXPECT_EQ(text("Base64Encode ( $file )"), "AAEC/w==");

    FMX_Data nameless = eval("Base64Decode ( \"AA==\" ; \"\" )");
    EXPECT_EQ(nameless.binary.streams.size(), 1u);
    // Containers encode their file stream, whichever it is.
    struct Case { FMX_Data value; const char* expected; };
    Case cases[] = {
        {container({{"FNAM", encodeFnam(u"a.txt")}, {"JPEG", {'j'}}, {"FILE", {'f'}}}), "Zg=="},
        {container({{"SIZE", {0, 1}}, {"FNAM", encodeFnam(u"a.png")}, {"PNGf", {'p'}}}), "cA=="},
        {container({}, u"image:/refs/photo.jpg"), ""},
    };
    for (auto& c : cases) {
        SCOPED_TRACE(c.expected);
        locals.set(u"$c", c.value);
        EXPECT_EQ(text("Base64Encode ( $c )"), c.expected);
    }
}

TEST(Base64Codec, RoundTripsEveryLengthAndByte) {
    std::mt19937 random(7);
    for (size_t length = 0; length < 70; ++length) {
        Bytes bytes(length);
        for (auto& b : bytes) b = static_cast<uint8_t>(random());
        std::string encoded = base64Encode(bytes.data(), bytes.size());
        EXPECT_EQ(encoded.size() % 4, 0u);
        auto decoded = base64Decode(std::u16string(encoded.begin(), encoded.end()));
        ASSERT_TRUE(decoded) << encoded;
        EXPECT_EQ(*decoded, bytes);
    }
}

}  // namespace
}  // namespace vdhost::calc::testing
