// Container arguments as the plug-in sees them: classification, stream reads with the image
// normalisation, listings, peeks and removal.
#include "container/stream_types.h"
#include "container/streams.h"
#include "container_test_support.h"

#include <gtest/gtest.h>

namespace vdtest {
namespace {

using vd::container::Bytes;
using vd::container::FourCCText;

std::string Classified(const FMX_Data& d) {
    uint32_t code = vd::container::ClassifyImageContainer(&d);
    return code ? FourCCText(code) : std::string();
}

// "" for no failure, else the code and the message.
std::string Failure(const std::optional<vd::fmapi::Outcome>& failure) {
    if (!failure) return "";
    return std::to_string(failure->Status()) + " " + failure->Message();
}

TEST(ContainerClassification, ImageStreamsDecideAndUnknownTypesBeatJpeg) {
    EXPECT_EQ(Classified(ContainerOf({{"FNAM", "\x01x.jpg"}, {"SIZE", "abcd"}, {"JPEG", "j"}})), "JPEG");
    EXPECT_EQ(Classified(ContainerOf({{"JPEG", "j"}, {"PNGf", "p"}})), "PNGf");
    EXPECT_EQ(Classified(ContainerOf({{"PNGf", "p"}, {"BMPf", "b"}, {"SIZE", "s"}})), "BMPf");  // the last unknown
    EXPECT_EQ(Classified(ContainerOf({{"JPEG", "j"}, {"GIFf", "g"}})), "GIFf");  // the first image stream decides
    EXPECT_EQ(Classified(vdhost::makeContainer({}, u"size:1,1\rimage:x.jpg")), "ref ");
    EXPECT_EQ(Classified(ContainerOf({{"FNAM", "\x01x"}})), "");
    EXPECT_EQ(Classified(vdhost::makeNumber(5)), "");
}

TEST(ContainerImageData, PictGetsItsHeaderBackAndVdImagesTheirInnerType) {
    Bytes bytes;
    uint32_t type = 0;
    for (auto pict : {ContainerOf({{"PICT", "picture"}}), ContainerOf({{"VDIM", "PICTpicture"}})}) {
        ASSERT_EQ(Failure(vd::container::ReadImageData(&pict, bytes, type)), "");
        EXPECT_EQ(FourCCText(type), "PICT");
        ASSERT_EQ(bytes.size(), 512u + 7);
        EXPECT_EQ(std::string(bytes.begin() + 512, bytes.end()), "picture");
    }

    auto innerPng = ContainerOf({{"VDIM", "PNGf\x89PNG"}});
    ASSERT_EQ(Failure(vd::container::ReadImageData(&innerPng, bytes, type)), "");
    EXPECT_EQ(FourCCText(type), "PNGf");
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), "\x89PNG");

    auto tooShort = ContainerOf({{"VDIM", "PN"}});
    EXPECT_EQ(Failure(vd::container::ReadImageData(&tooShort, bytes, type)), "-2001 ");
    EXPECT_TRUE(bytes.empty());

    auto reference = vdhost::makeText(u"image:x.png");
    ASSERT_EQ(Failure(vd::container::ReadImageData(&reference, bytes, type)), "");
    EXPECT_EQ(FourCCText(type), "ref ");
    EXPECT_TRUE(bytes.empty());

    auto neither = ContainerOf({{"FNAM", "\x01x"}});
    EXPECT_EQ(Failure(vd::container::ReadImageData(&neither, bytes, type)), "20400 Parameter must be image or path");
}

TEST(ContainerStreams, MissingStreamsAreReportedNotRead) {
    Bytes bytes;
    auto c = ContainerOf({{"JPEG", "jpeg"}});
    EXPECT_EQ(Failure(vd::container::ReadStreamIntoMemory(&c, vd::container::kFileStream, bytes)),
              "20400 The specified media type is not in the container");
    ASSERT_EQ(Failure(vd::container::ReadStreamIntoMemory(&c, vd::container::kJpegStream, bytes)), "");
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), "jpeg");
}

TEST(ContainerListing, TypesInOrderWithTheFileNameAndTheLengthLimit) {
    EXPECT_EQ(vd::container::ListStreamTypes(&static_cast<const FMX_Data&>(vdhost::makeText(u""))), "");
    auto text = vdhost::makeText(u"hello");
    EXPECT_EQ(vd::container::ListStreamTypes(&text), "utxt");
    auto c = ContainerOf({{"FILE", "data"}, {"FNAM", "\x01" "Bericht März.pdf"}, {"SIZE", "abcd"}});
    EXPECT_EQ(vd::container::ListStreamTypes(&c), "FILE|FNAM|Bericht März.pdf|SIZE");

    // 150 streams of 5 characters each: the listing stops once it has passed 594 characters.
    FMX_BinaryData many;
    for (int i = 0; i < 150; ++i) {
        char type[5];
        std::snprintf(type, sizeof type, "T%03d", i);
        many.streams.push_back({vdhost::fourCharCode(type), std::make_shared<const vdhost::StreamBytes>()});
    }
    const auto big = vdhost::makeContainer(std::move(many));
    const std::string list = vd::container::ListStreamTypes(&big);
    EXPECT_NEAR(double(list.size()), 597, 3) << "past 594, by less than one more stream";
    EXPECT_EQ(list.substr(0, 10), "T000|T001|");

    const vdhost::Bytes name = vdhost::encodeFnam(std::u16string(300, u'n'));
    const auto longName = ContainerOf({{"FNAM", std::string(name.begin(), name.end())}});
    EXPECT_EQ(vd::container::ListStreamTypes(&longName), "FNAM|" + std::string(200, 'n'));
}

TEST(ContainerPeek, AtMostSixHundredBytesOfAnyStream) {
    auto empty = vdhost::makeText(u"");
    EXPECT_EQ(vd::container::PeekStream(&empty, "JPEG"), u"$$$Empty container");
    auto text = vdhost::makeText(std::u16string(700, u'x'));
    EXPECT_EQ(vd::container::PeekStream(&text, "JPEG"), u"$$$Text: " + std::u16string(600, u'x'));
    auto c = ContainerOf({{"JPEG", std::string("\xFF\xD8\x00\x01", 4) + std::string(1000, 'a')}, {"FNAM", "\x01" "a.jpg"}});
    std::u16string peek = vd::container::PeekStream(&c, "JPEG");
    ASSERT_EQ(peek.size(), 600u);
    EXPECT_EQ(peek.substr(0, 4), std::u16string(u"\u00FF\u00D8\0\u0001", 4));
    EXPECT_EQ(vd::container::PeekStream(&c, "FNAM"), u"a.jpg");
    EXPECT_EQ(vd::container::PeekStream(&c, "PNGf"), u"$$$That stream type is not in the container");
}

TEST(ContainerRemove, RemovesOneTypeOrReportsItMissing) {
    auto c = ContainerOf({{"JPEG", "j"}, {"SIZE", "abcd"}, {"FNAM", "\x01x"}});
    FMX_Data result;
    ASSERT_EQ(vd::container::RemoveStream(&c, "SIZE").SetValue(&result), 0);
    ASSERT_EQ(result.binary.streams.size(), 2u);
    EXPECT_EQ(vdhost::fourCharText(result.binary.streams[0].type), "JPEG");
    EXPECT_EQ(vdhost::fourCharText(result.binary.streams[1].type), "FNAM");
    EXPECT_EQ(c.binary.streams.size(), 3u);  // the argument is left alone

    for (const char* missing : {"PNGf", "JPG"}) {
        const vd::fmapi::Outcome outcome = vd::container::RemoveStream(&c, missing);
        EXPECT_TRUE(outcome.Failed());
        EXPECT_EQ(outcome.Status(), 20400) << missing;
    }
}

TEST(ContainerResults, SizeStreamIsBigEndianAndEmptyResultsHaveNoStreams) {
    FMX_BinaryData b;
    ASSERT_EQ(vd::container::AddSizeStream(&b, 0x0102, 640), 0);
    EXPECT_EQ(vd::container::AddSizeStream(&b, 1, 1), FMX_ERR_ALREADY_EXISTS);
    ASSERT_EQ(b.streams.size(), 1u);
    EXPECT_EQ(*b.streams[0].bytes, (vdhost::Bytes{0x01, 0x02, 0x02, 0x80}));

    FMX_Data result = vdhost::makeText(u"old");
    ASSERT_EQ(vd::container::EmptyContainerResult(&result), 0);
    EXPECT_EQ(result.type, FMX_TYPE_BINARY);
    EXPECT_TRUE(result.binary.streams.empty());
}

}  // namespace
}  // namespace vdtest
