// The effect descriptions: the block behind a settings text, the readable form that names the
// same block, and the refusals of what names no effect.
#include "image/effects/effect_settings.h"
#include "util/settings_text.h"

#include <gtest/gtest.h>

namespace vdtest {
namespace {

using namespace vd::image;

std::vector<uint8_t> BlockOf(const std::string& description) {
    EffectSettings settings;
    std::string message;
    EXPECT_EQ(ParseDescription(description, settings, message), 0) << description << ": " << message;
    return settings.effect ? EncodeBlock(settings) : std::vector<uint8_t>{};
}

std::string Refusal(const std::string& description) {
    EffectSettings settings;
    std::string message;
    const int status = ParseDescription(description, settings, message);
    return std::to_string(status) + " " + message;
}

TEST(EffectSettings, TheBlockIsTheCodeAndBigEndianParameters) {
    EXPECT_EQ(BlockOf("blur radius=2.5"), (std::vector<uint8_t>{'b', 'l', 'u', 'r', 0, 2, 0x80, 0}));
    EXPECT_EQ(BlockOf("TINT amount=0.25 color=#A05020"),
              (std::vector<uint8_t>{'t', 'i', 'n', 't', 0, 0xA0, 0x50, 0x20, 0, 0, 0x40, 0}));
    EXPECT_EQ(BlockOf("brightness brightness=-0.5"),
              (std::vector<uint8_t>{'b', 'r', 'c', 't', 0xFF, 0xFF, 0x80, 0, 0, 1, 0, 0}));  // contrast keeps 1
    EXPECT_EQ(BlockOf("invert"), (std::vector<uint8_t>{'i', 'n', 'v', 't'}));
}

TEST(EffectSettings, EveryEffectRoundTripsThroughItsSettingsText) {
    for (const vd::image::EffectDefinition& effect : vd::image::Effects()) {
        EffectSettings settings = vd::image::DefaultSettings(effect);
        // A value off the defaults that the block cannot hold exactly shows any loss on the way.
        for (size_t i = 0; i < settings.values.size(); ++i)
            settings.values[i] = vd::image::BlockValue(effect.parameters[i], (effect.parameters[i].minimum * 2 +
                                                                               effect.parameters[i].maximum) / 3.0);
        std::string text;
        ASSERT_EQ(vd::image::ToSettingsText(settings, text), 0);
        ASSERT_TRUE(text.starts_with("<hex>") && text.ends_with("</hex>")) << text;
        EXPECT_EQ(BlockOf(text), EncodeBlock(settings)) << effect.name;
        // The readable name (any case) and the code give the same defaults.
        EXPECT_EQ(BlockOf(effect.name), BlockOf(std::string(effect.code, 4))) << effect.name;
    }
    EXPECT_EQ(BlockOf("  gamma   gamma=2.5  "), BlockOf("gamm gamma=+2.5"));
    EXPECT_EQ(BlockOf("tint color=red"), BlockOf("tint color=#ff0000 amount=0.5"));
}

TEST(EffectSettings, WhatNamesNoEffectIsRefusedWithTheReason) {
    EXPECT_EQ(Refusal("blur sigma=2"), "-50 blur has no parameter \"sigma\"; its parameters are radius");
    EXPECT_EQ(Refusal("invert amount=1"), "-50 invert has no parameter \"amount\"; it takes none");
    EXPECT_EQ(Refusal("blur radius=80"), "-50 blur's radius must be between 0.1 and 50, not 80");
    EXPECT_EQ(Refusal("blur radius=0"), "-50 blur's radius must be between 0.1 and 50, not 0");
    EXPECT_EQ(Refusal("blur radius=2px"), "-50 blur's radius \"2px\" is no number");
    EXPECT_EQ(Refusal("blur radius"), "-50 blur's radius is given as radius=value");
    EXPECT_EQ(Refusal("blur radius=1 radius=2"), "-50 blur's radius is given twice");
    EXPECT_EQ(Refusal("tint color=#12345"), "-50 tint's color \"#12345\" is no colour");
    EXPECT_EQ(Refusal(""), "-50 the effect description is empty");

    std::string unknown, shortBlur, outOfRange;
    ASSERT_EQ(vd::util::SettingsToHexText({'w', 'h', 'a', 't'}, unknown), 0);
    ASSERT_EQ(vd::util::SettingsToHexText({'b', 'l', 'u', 'r', 0, 2}, shortBlur), 0);
    ASSERT_EQ(vd::util::SettingsToHexText({'g', 'a', 'm', 'm', 0, 100, 0, 0}, outOfRange), 0);
    EXPECT_EQ(Refusal(unknown), "-50 the effect description names no effect we know");
    EXPECT_EQ(Refusal(shortBlur), "-50 the description of blur has 6 bytes, not 8");
    EXPECT_EQ(Refusal(outOfRange), "-50 gamma's gamma must be between 0.1 and 10, not 100");
}

}  // namespace
}  // namespace vdtest
