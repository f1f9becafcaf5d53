// The container layout in the file: round trips, the exact bytes the docs promise, and refusal of
// anything malformed without reading past the end; and which texts are references to files.
#include "temp_folder.h"

#include <db/container_blob.h>
#include <db/database_error.h>
#include <db/reference_text.h>

#include <api/fnam.h>

#include <gmock/gmock.h>

namespace vdhost::db {
namespace {

using testing::bytesOf;
using testing::expectSameContainer;

constexpr uint32_t kJpeg = 0x4A504547;  // 'JPEG'
constexpr uint32_t kSize = 0x53495A45;  // 'SIZE'

FMX_Data sampleContainer() {
    FMX_BinaryData binary;
    binary.streams.push_back({kJpeg, bytesOf(std::string("\xFF\xD8\x00\x01\xFF\xD9", 6))});
    binary.streams.push_back(
        {kFnamType, std::make_shared<const StreamBytes>(encodeFnam(u"Photo \u00E9t\u00E9.jpg"))});
    binary.streams.push_back({kSize, std::make_shared<const StreamBytes>()});
    return makeContainer(std::move(binary), u"Photo \u00E9t\u00E9.jpg");
}

TEST(ContainerBlob, RoundTripKeepsEverything) {
    FMX_BinaryData withoutBytes;
    withoutBytes.streams.push_back({kJpeg, nullptr});  // reads back as an empty stream
    for (const FMX_Data& container :
         {sampleContainer(), makeContainer({}, u"imagemac:/Volumes/Disk/a.png\rimagewin:/C:/a.png"),
          makeContainer({}), makeContainer(std::move(withoutBytes))}) {
        expectSameContainer(decodeContainer(encodeContainer(container)), container);
    }
}

// The layout is part of the file format: other tools and later versions read these bytes.
TEST(ContainerBlob, LayoutIsTheDocumentedOne) {
    FMX_BinaryData binary;
    binary.streams.push_back({kJpeg, bytesOf("xy")});
    // clang-format off
    const Bytes expected = {
        'V', 'D', 'C', 'N',      // magic
        1, 0,                    // version 1
        0, 0,                    // flags: stored in the file
        2, 0, 0, 0,              // own text: 2 bytes
        0xC3, 0xA9,              // "é" in UTF-8
        1, 0, 0, 0,              // one stream
        'J', 'P', 'E', 'G',      // its type, first character first
        2, 0, 0, 0, 0, 0, 0, 0,  // its length
        'x', 'y'};               // its bytes
    // clang-format on
    EXPECT_EQ(encodeContainer(makeContainer(std::move(binary), u"\u00E9")), expected);

    const Bytes reference = {'V', 'D', 'C', 'N', 1, 0, 1, 0, 4, 0, 0, 0, 'u', 'r', 'l', ':', 0, 0, 0, 0};
    EXPECT_EQ(encodeContainer(makeContainer({}, u"url:")), reference);
}

TEST(ContainerBlob, TruncatedAndMalformedBlobsAreRefusedWithAReason) {
    const Bytes full = encodeContainer(sampleContainer());
    for (size_t length = 0; length < full.size(); ++length) {
        SCOPED_TRACE(length);
        // A copy of exactly that length, so a read past its end is caught by the sanitizers.
        const Bytes cut(full.begin(), full.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_THROW(decodeContainer(cut), DatabaseError);
    }
    // Malformed headers and lengths are refused with a reason.
    const Bytes good = encodeContainer(sampleContainer());
    auto refusal = [](Bytes blob) -> std::string {
        try {
            decodeContainer(blob);
        } catch (const DatabaseError& e) {
            return e.what();
        }
        return "accepted";
    };
    auto patched = [&](size_t offset, std::initializer_list<uint8_t> bytes) {
        Bytes b = good;
        std::copy(bytes.begin(), bytes.end(), b.begin() + static_cast<std::ptrdiff_t>(offset));
        return b;
    };
    Bytes trailing = good;
    trailing.push_back(0);
    const std::pair<Bytes, const char*> cases[] = {
        {patched(0, {'X'}), "VDCN"},
        {patched(4, {2, 0}), "version 2"},
        {patched(6, {4, 0}), "unknown flags"},
        {patched(6, {1, 0}), "by reference has streams"},
        {patched(8, {0xFF, 0xFF, 0xFF, 0xFF}), "own text"},
        {trailing, "1 bytes follow the last stream"},
        // Counts and lengths far beyond the blob are refused before any allocation is tried.
        {{'V', 'D', 'C', 'N', 1, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF}, "cannot fit"},
        {{'V', 'D', 'C', 'N', 1, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 'J', 'P', 'E', 'G', 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
          0xFF, 0xFF, 0xFF},
         "stream bytes"},
        {{'V', 'D', 'C', 'N', 1, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0}, "no reference text"},
    };
    for (const auto& [blob, reason] : cases) EXPECT_THAT(refusal(blob), ::testing::HasSubstr(reason));
}

TEST(ReferenceText, OnlyTheFirstLinesExactPrefixCounts) {
    EXPECT_TRUE(isReferenceText(u"size:120,80\rimage:/a.png"));
    EXPECT_TRUE(isReferenceText(u"url:"));

    EXPECT_FALSE(isReferenceText(u""));
    EXPECT_FALSE(isReferenceText(u"File:a.txt"));     // case matters
    EXPECT_FALSE(isReferenceText(u" file:a.txt"));    // at the very start only
    EXPECT_FALSE(isReferenceText(u"file"));           // the colon belongs to the prefix
    EXPECT_FALSE(isReferenceText(u"photo\rfile:a"));  // only the first line counts
}

}  // namespace
}  // namespace vdhost::db
