// A script's answers to an effect's form: values for sliders and colours, checked against what
// the form offers.
#include "platform/ui/effect_form.h"

#include <gtest/gtest.h>

namespace vdtest {
namespace {

using vd::platform::ui::EffectAnswerFromLine;
using vd::platform::ui::EffectFormRequest;

EffectFormRequest TintForm() {
    EffectFormRequest form;
    form.title = "Tint";
    form.controls = {{"color", "Colour", true, 0, 0xFFFFFF, 1, 0xA05020}, {"amount", "Amount", false, 0, 1, 0.01, 0.5}};
    return form;
}

std::string Answer(const std::string& line) {
    const auto answer = EffectAnswerFromLine(line, TintForm());
    if (answer.status != 0) return std::to_string(answer.status) + " " + answer.detail;
    std::string values;
    for (double v : answer.values) values += (values.empty() ? "" : " ") + std::to_string(v);
    return values;
}

TEST(EffectForm, AScriptSetsSlidersAndColoursWithinTheirRanges) {
    EXPECT_EQ(Answer("ok"), std::to_string(double(0xA05020)) + " 0.500000");
    EXPECT_EQ(Answer("ok  AMOUNT=0.25   color=#336699"), std::to_string(double(0x336699)) + " 0.250000");
    EXPECT_EQ(Answer("ok color=navy"), std::to_string(double(0x000080)) + " 0.500000");
    EXPECT_EQ(Answer("cancel"), "-128 ");
    EXPECT_EQ(Answer("ok amount=1.5"), "-50 (the UI script gives amount 1.5; it goes from 0 to 1)");
    EXPECT_EQ(Answer("ok amount=half"), "-50 (the UI script gives amount \"half\", which is no number)");
    EXPECT_EQ(Answer("ok color=#12"), "-50 (the UI script gives color \"#12\", which is no colour)");
    EXPECT_EQ(Answer("ok radius=2"), "-50 (the UI script sets \"radius\", which the Tint dialog does not have: color, amount)");
    EXPECT_EQ(Answer("ok amount"), "-50 (the UI script gives \"amount\" to the Tint dialog; settings are given as name=value)");
    EXPECT_EQ(Answer("choose-file /x"), "-50 (the UI script answers \"choose-file /x\" to the Tint dialog)");
}

}  // namespace
}  // namespace vdtest
