#include "util/settings_text.h"

#include <cctype>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <zlib.h>

#include "util/hex_text.h"
#include "util/settings_pack.h"

namespace {

using namespace vd::util;

std::vector<uint8_t> RandomBytes(std::mt19937& random, size_t size) {
    // Half the buffers compress well (runs), half hardly at all, so both paths of deflate are used.
    std::vector<uint8_t> bytes(size);
    const bool runs = random() % 2 == 0;
    for (size_t i = 0; i < size; ++i) {
        bytes[i] = runs ? static_cast<uint8_t>((i / 37) % 5) : static_cast<uint8_t>(random());
    }
    return bytes;
}

std::string Text(const std::vector<uint8_t>& settings) {
    std::string text;
    EXPECT_EQ(SettingsToHexText(settings, text), 0);
    return text;
}

TEST(SettingsTextTest, RoundTripsRandomSettingsOfManyLengths) {
    std::mt19937 random(20240611);
    std::vector<size_t> sizes{0, 1, 2, 3, 4, 126, 127, 128, 253, 254, 255, 1000, 5000};
    for (int i = 0; i < 60; ++i) sizes.push_back(random() % 5001);
    for (const size_t size : sizes) {
        const std::vector<uint8_t> settings = RandomBytes(random, size);
        const std::string text = Text(settings);
        std::vector<uint8_t> back{0xEE};
        ASSERT_EQ(HexTextToSettings(text, back), 0) << size;
        EXPECT_EQ(back, settings) << size;
    }
}

TEST(SettingsTextTest, WritesUpperCaseDigitsOnlyBetweenTheTagsAndReadsEitherCase) {
    std::mt19937 random(7);
    const std::vector<uint8_t> settings = RandomBytes(random, 3000);
    std::string text = Text(settings);
    ASSERT_TRUE(text.starts_with("<hex>") && text.ends_with("</hex>"));
    const std::string hex = text.substr(5, text.size() - 11);
    for (const char c : hex) EXPECT_TRUE(std::isdigit(c) || (c >= 'A' && c <= 'F')) << c;
    for (char& c : text) c = static_cast<char>(c >= 'A' && c <= 'F' ? c - 'A' + 'a' : c);
    std::vector<uint8_t> back;
    ASSERT_EQ(HexTextToSettings(text, back), 0);
    EXPECT_EQ(back, settings);

    std::string encoded;
    const uint8_t bytes[] = {0x00, 0x9F, 0xAB, 0xFF, 0x10};
    ASSERT_EQ(HexEncode(bytes, sizeof bytes, encoded), 0);
    EXPECT_EQ(encoded, "009FABFF10");
    EXPECT_EQ(HexEncode(nullptr, 3, encoded), -50);
}

TEST(SettingsTextTest, EveryFormatFaultIsAParameterErrorWithNoOutput) {
    const std::string good = Text({10, 20, 30, 40, 50});
    const std::string hex = good.substr(5, good.size() - 11);
    const std::string faults[] = {
        "",
        "<hex></hex>",  // the tags alone: an empty block cannot be unpacked
        " " + good,     // the opening tag must be at the very start
        good + " ",     // and the closing tag at the very end
        hex,
        "<hex>" + hex,
        hex + "</hex>",
        "<HEX>" + hex + "</HEX>",
        "<hex>" + hex.substr(1) + "</hex>",  // odd number of digits
        "<hex>ABC</hex>",
        "<hex>" + hex.substr(0, hex.size() - 2) + "G0</hex>",
        "<hex> " + hex.substr(1) + "</hex>",
        "<hex>" + hex + "</hex></hex>",
        "<hex>" + hex.substr(0, hex.size() - 2) + "</hex>",  // stream cut short
        "<hex>" + hex + "00</hex>",                          // a byte after the stream
        "<hex>00000000</hex>",
        "<hex>" + hex + "</hex",
    };
    for (const std::string& text : faults) {
        std::vector<uint8_t> settings{1, 2, 3};
        EXPECT_EQ(HexTextToSettings(text, settings), -50) << text;
        EXPECT_TRUE(settings.empty()) << text;
    }
}

TEST(SettingsTextTest, DecodingIsWholeAtEveryChunkBoundary) {
    std::mt19937 random(99);
    for (const size_t digits : {0u, 2u, 252u, 254u, 256u, 508u, 510u, 1000u, 5082u}) {
        std::string hex;
        const std::vector<uint8_t> bytes = RandomBytes(random, digits / 2);
        ASSERT_EQ(HexEncode(bytes.data(), bytes.size(), hex), 0);
        std::vector<uint8_t> decoded(bytes.size());
        ASSERT_EQ(HexDecode(hex, decoded.data()), 0);
        EXPECT_EQ(decoded, bytes) << digits;
    }
    // A bad digit in a later chunk is found as surely as one in the first.
    std::string hex(600, 'A');
    hex[599] = 'x';
    std::vector<uint8_t> out(300);
    EXPECT_EQ(HexDecode(hex, out.data()), -50);
}

TEST(SettingsPackTest, BlockIsTheBigEndianLengthAndAPlainZlibStream) {
    std::mt19937 random(5);
    const std::vector<uint8_t> settings = RandomBytes(random, 70000);
    std::vector<uint8_t> block = settings;
    ASSERT_EQ(PackSettings(block), 0);
    ASSERT_GT(block.size(), 4u);
    EXPECT_EQ(std::vector<uint8_t>(block.begin(), block.begin() + 4), (std::vector<uint8_t>{0x00, 0x01, 0x11, 0x70}));
    std::vector<uint8_t> inflated(settings.size());
    uLongf length = inflated.size();
    ASSERT_EQ(uncompress(inflated.data(), &length, block.data() + 4, block.size() - 4), Z_OK);
    EXPECT_EQ(inflated, settings);
}

TEST(SettingsPackTest, ImplausibleLengthsAreRefusedBeforeAllocating) {
    struct Case {
        uint32_t claimed;
        int status;
    };
    for (const Case c : {Case{0, 0}, Case{0xFFFFFFFF, -108}, Case{(256u << 20) + 1, -108}, Case{9000, -50}, Case{1, -50}}) {
        // The length, then zlib's stream of nothing.
        std::vector<uint8_t> block{static_cast<uint8_t>(c.claimed >> 24), static_cast<uint8_t>(c.claimed >> 16),
                                   static_cast<uint8_t>(c.claimed >> 8),  static_cast<uint8_t>(c.claimed),
                                   0x78, 0x9C, 0x03, 0x00, 0x00, 0x00, 0x00, 0x01};
        const std::vector<uint8_t> before = block;
        EXPECT_EQ(UnpackSettings(block), c.status) << c.claimed;
        if (c.status != 0) {
            EXPECT_EQ(block, before) << "a failed unpack leaves the block alone";
        }
    }
    for (const size_t size : {0u, 1u, 3u}) {
        std::vector<uint8_t> shortBlock(size, 0);
        EXPECT_EQ(UnpackSettings(shortBlock), -50) << size;
    }
}

}  // namespace
