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
