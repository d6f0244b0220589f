#include "support/scripted_ports.h"

#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

TEST(AreYouSure, AsksWithTheNameOfTheOperationAsTitle) {
    ScriptedBoxes boxes;
    EXPECT_TRUE(boxes.AreYouSure("Load Preset"));
    ASSERT_EQ(boxes.Shown.size(), 1U);
    const MessageBox& box = boxes.Shown[0];
    EXPECT_EQ(box.Text, std::string(15, ' ') + "Are you sure ? ");
    EXPECT_EQ(box.Title, "Load Preset");
    EXPECT_EQ(box.Icon, BoxIcon::None);
    EXPECT_EQ(box.Buttons, BoxButtons::YesNo);
    EXPECT_EQ(box.Default, BoxAnswer::Yes);
}

TEST(AreYouSure, CanPreselectNo) {
    ScriptedBoxes boxes;
    boxes.AreYouSure("Exit", BoxAnswer::No);
    EXPECT_EQ(boxes.Shown.at(0).Default, BoxAnswer::No);
}

TEST(AreYouSure, IsTrueOnYesAlone) {
    ScriptedBoxes boxes;
    boxes.Answers = {BoxAnswer::No, BoxAnswer::Yes, BoxAnswer::Ok};
    EXPECT_FALSE(boxes.AreYouSure("Exit"));
    EXPECT_TRUE(boxes.AreYouSure("Exit"));
    EXPECT_FALSE(boxes.AreYouSure("Exit"));
}

TEST(MessageBox, IsAPlainOneWithOneButtonUnlessToldOtherwise) {
    MessageBox box;
    box.Text = "text";
    EXPECT_EQ(box.Icon, BoxIcon::None);
    EXPECT_EQ(box.Buttons, BoxButtons::Ok);
}

} // namespace
} // namespace nrv::testing
