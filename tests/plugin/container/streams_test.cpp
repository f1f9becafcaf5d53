// Container arguments as the plug-in sees them: classification, stream reads with the image
// normalisation, listings, peeks and removal.
#include "container/stream_types.h"
#include "container/streams.h"
#include "container_test_support.h"
#include "fmapi/errors/vds_error.h"

#include <gtest/gtest.h>

namespace vdtest {
namespace {

using vd::container::Bytes;
using vd::container::FourCCText;

std::string Classified(const FMX_Data& d) {
    uint32_t code = vd::container::ClassifyImageContainer(&d);
    return code ? FourCCText(code) : std::string();
}

TEST(ContainerClassification, ImageStreamsDecideAndUnknownTypesBeatJpeg) {
    vd::Begin("Vandrel_Test");
    EXPECT_EQ(Classified(ContainerOf({{"FNAM", "\x01x.jpg"}, {"SIZE", "abcd"}, {"JPEG", "j"}})), "JPEG");
    EXPECT_EQ(Classified(ContainerOf({{"JPEG", "j"}, {"PNGf", "p"}})), "PNGf");
    EXPECT_EQ(Classified(ContainerOf({{"PNGf", "p"}, {"BMPf", "b"}, {"SIZE", "s"}})), "BMPf");  // the last unknown
    EXPECT_EQ(Classified(ContainerOf({{"JPEG", "j"}, {"GIFf", "g"}})), "GIFf");  // the first image stream decides
    EXPECT_EQ(Classified(vdhost::makeContainer({}, u"size:1,1\rimage:x.jpg")), "ref ");
    EXPECT_EQ(vd::gLastError.Code(), 0);

    EXPECT_EQ(Classified(ContainerOf({{"FNAM", "\x01x"}})), "");
    EXPECT_EQ(vd::gLastError.Code(), 20400);
    EXPECT_EQ(vd::gLastError.Message(), "Vandrel_Test: Parameter must be image or path");
}

TEST(ContainerImageData, PictGetsItsHeaderBackAndVdImagesTheirInnerType) {
    vd::Begin("Vandrel_Test");
    Bytes bytes;
    uint32_t type = 0;
    for (auto pict : {ContainerOf({{"PICT", "picture"}}), ContainerOf({{"VDIM", "PICTpicture"}})}) {
        ASSERT_EQ(vd::container::ReadImageData(&pict, bytes, type), 0);
        EXPECT_EQ(FourCCText(type), "PICT");
        ASSERT_EQ(bytes.size(), 512u + 7);
        EXPECT_EQ(std::string(bytes.begin() + 512, bytes.end()), "picture");
    }

    struct Case { FMX_Data argument; int32_t status; const char* type; std::string bytes; } cases[] = {
        {ContainerOf({{"VDIM", "PNGf\x89PNG"}}), 0, "PNGf", "\x89PNG"},
        {ContainerOf({{"VDIM", "PN"}}), -2001, "", ""},
        {vdhost::makeText(u"image:x.png"), 0, "ref ", ""},
    };
    for (const Case& c : cases) {
        type = 0;
        EXPECT_EQ(vd::container::ReadImageData(&c.argument, bytes, type), c.status) << c.bytes;
        if (c.status == 0) EXPECT_EQ(FourCCText(type), c.type);
        EXPECT_EQ(std::string(bytes.begin(), bytes.end()), c.bytes);
    }
}

TEST(ContainerStreams, MissingStreamsAreReportedNotRead) {
    vd::Begin("Vandrel_Test");
    Bytes bytes;
    auto c = ContainerOf({{"JPEG", "jpeg"}});
    EXPECT_EQ(vd::container::ReadStreamIntoMemory(&c, vd::container::kFileStream, bytes), 20400);
    EXPECT_EQ(vd::gLastError.Message(), "Vandrel_Test: The specified media type is not in the container");
    ASSERT_EQ(vd::container::ReadStreamIntoMemory(&c, vd::container::kJpegStream, bytes), 0);
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
        many.streams.push_back({vdhost::fourCharCode(type), std::make_shared<const vdhost::Bytes>()});
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
    vd::Begin("Vandrel_Test");
    auto c = ContainerOf({{"JPEG", "j"}, {"SIZE", "abcd"}, {"FNAM", "\x01x"}});
    FMX_Data result;
    ASSERT_EQ(vd::container::RemoveStream(&c, "SIZE", &result), 0);
    EXPECT_EQ(vd::container::ListStreamTypes(&result), "JPEG|FNAM|x");
    EXPECT_EQ(c.binary.streams.size(), 3u);  // the argument is left alone

    FMX_Data untouched = vdhost::makeText(u"before");
    EXPECT_EQ(vd::container::RemoveStream(&c, "PNGf", &untouched), 20400);
    EXPECT_EQ(vdhost::utf8Of(untouched), "before");
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
