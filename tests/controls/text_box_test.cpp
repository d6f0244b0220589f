#include "controls/observed.h"
#include "controls/text_box.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

using namespace nrv::controls;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ATextBox : public ::testing::Test {
  protected:
    TextBox box;
};

TEST_F(ATextBox, SettingTheTextInCodeRunsNothingAndTellsTheView) {
    int keys = 0;
    box.KeyPressed = [&keys](char key) {
        ++keys;
        return key;
    };
    const Observed view(box);
    box.SetText("1000");
    box.SetText("1000");
    EXPECT_EQ(box.Text(), "1000");
    EXPECT_EQ(keys, 0);
    EXPECT_THAT(view.Aspects, ElementsAre(Aspect::Text));
}

TEST_F(ATextBox, WhatIsTypedHoldsWhenItIsEnteredOrSetAndNotBefore) {
    box.SetText("1000");
    EXPECT_FALSE(box.Typed());
    box.UserText("100");
    EXPECT_TRUE(box.Typed());
    const Observed view(box);
    EXPECT_EQ(box.UserKey(EnterKey), EnterKey);
    EXPECT_FALSE(box.Typed());
    EXPECT_THAT(view.Aspects, ElementsAre(Aspect::Text));
    box.UserText("10");
    box.SetText("10"); // no other text, but it holds now
    EXPECT_FALSE(box.Typed());
    EXPECT_THAT(view.Aspects, ElementsAre(Aspect::Text, Aspect::Text));
}

TEST_F(ATextBox, ARefusedEnterAndOtherKeysLeaveItTyped) {
    box.UserText("1");
    box.UserKey('5');
    EXPECT_TRUE(box.Typed());
    box.KeyPressed = [](char) { return KeyEntry('?', true); };
    box.UserKey(EnterKey);
    EXPECT_TRUE(box.Typed());
    box.KeyPressed = [](char) { return KeyEntry(EnterKey, true); };
    box.UserKey(EnterKey);
    EXPECT_TRUE(box.Typed());
}

TEST_F(ATextBox, WhatIsTypedCanBeTakenBack) {
    box.SetText("1000");
    box.UserText("12?");
    const Observed view(box);
    box.TakeBack();
    EXPECT_EQ(box.Text(), "1000");
    EXPECT_FALSE(box.Typed());
    EXPECT_THAT(view.Aspects, ElementsAre(Aspect::Text));
    box.TakeBack();
    EXPECT_THAT(view.Aspects, ElementsAre(Aspect::Text));
}

TEST_F(ATextBox, WhatTheUserMadeOfTheTextIsKeptWithoutTellingTheViewItsOwnWord) {
    box.SetText("1000");
    const Observed view(box);
    box.UserText("10005");
    EXPECT_EQ(box.Text(), "10005");
    EXPECT_THAT(view.Aspects, IsEmpty());
}

TEST_F(ATextBox, KeyGoesInAsItIsWithoutAnEvent) {
    EXPECT_EQ(box.UserKey('x'), 'x');
}

TEST_F(ATextBox, EventDecidesWhatEntersInPlaceOfAKey) {
    box.KeyPressed = [](char key) { return key == EnterKey ? '\0' : key >= '0' && key <= '9' ? key : '?'; };
    EXPECT_EQ(box.UserKey('7'), '7');
    EXPECT_EQ(box.UserKey('x'), '?');
    EXPECT_EQ(box.UserKey(13), '\0');
}

TEST_F(ATextBox, KnowsTheKeysThatAreNoCharacters) {
    EXPECT_EQ(BackspaceKey, 8);
    EXPECT_EQ(EnterKey, 13);
}

TEST_F(ATextBox, LimitLockAndMarkAreForTheView) {
    EXPECT_EQ(box.MaxLength(), TextBox::NoLimit);
    EXPECT_FALSE(box.Locked());
    EXPECT_FALSE(box.Marked());
    const Observed view(box);
    box.SetMaxLength(6);
    box.SetLocked(true);
    box.SetMarked(true);
    box.SetMarked(true);
    EXPECT_EQ(box.MaxLength(), 6U);
    EXPECT_TRUE(box.Locked());
    EXPECT_TRUE(box.Marked());
    EXPECT_THAT(view.Aspects, ElementsAre(Aspect::Items, Aspect::Items, Aspect::Colour));
}

} // namespace
} // namespace nrv::testing
