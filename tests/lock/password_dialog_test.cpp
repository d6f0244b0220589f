#include "controls/observed.h"
#include "lock/password_dialog.h"
#include "model/command_window.h"

namespace nrv::testing {
namespace {

/// The password dialog of device 9, whose password is "Abc 1 ".
class PasswordDialogTest : public CommandWindow {
  protected:
    PasswordDialogTest() {
        values.DevicePassword = {'A', 'b', 'c', ' ', '1', ' '};
        image.SystemPage[16] = 0x03;
    }
    void Open(const std::function<void()>& while_it_stands) { InDialog(controls::PasswordTool, while_it_stands); }
    void LogIn(const std::string& text) {
        dialog.Text1.UserText(text);
        dialog.Command1[0].UserClick();
    }
    /// Opened and past the login.
    void OpenSettings(const std::function<void()>& then) {
        Open([this, &then] {
            LogIn("Abc 1");
            ASSERT_EQ(Front(), "settings");
            then();
        });
    }
    void TypeNew(const std::string& first, const std::string& second) {
        dialog.Text2.UserText(first);
        dialog.Text3.UserText(second);
    }
    std::string Front() const {
        std::string front;
        for (const auto& [page, name] : {std::pair{&dialog.Frame3, "login"}, std::pair{&dialog.Frame1, "settings"},
                                         std::pair{&dialog.Frame4, "new"}}) {
            front += page->Visible() ? name : "";
        }
        return front;
    }
    void ExpectTold(const std::string& title, const std::string& text) {
        ASSERT_EQ(world.Boxes.Shown.size(), 1U);
        ExpectBox(world.Boxes.Shown[0], title, text, BoxIcon::Information, BoxButtons::Ok);
        world.Boxes.Shown.clear();
    }
    void ExpectBoxes(const std::string& first, const std::string& second, const std::string& third) {
        EXPECT_EQ(dialog.Text1.Text(), first);
        EXPECT_EQ(dialog.Text2.Text(), second);
        EXPECT_EQ(dialog.Text3.Text(), third);
    }
    Frame Options(int bits) const { return FrameOf({0x11, 0, 16, 0, 0, bits}); }

    controls::FrmPassword& dialog = world.Forms.Password;
};

using Six = std::array<std::uint8_t, 6>;

TEST(PasswordBytes, TextIsPaddedWithBlanks) {
    EXPECT_EQ(lock::PasswordBytes(""), (Six{32, 32, 32, 32, 32, 32}));
    EXPECT_EQ(lock::PasswordBytes("a"), (Six{97, 32, 32, 32, 32, 32}));
    EXPECT_EQ(lock::PasswordBytes("Abc 1"), (Six{65, 98, 99, 32, 49, 32}));
    EXPECT_EQ(lock::PasswordBytes("abcdef"), (Six{97, 98, 99, 100, 101, 102}));
    EXPECT_EQ(lock::PasswordBytes("\xE4\xFF"), (Six{0xE4, 0xFF, 32, 32, 32, 32}));
}

TEST_F(PasswordDialogTest, OpensOnTheLoginWithEmptyBoxes) {
    for (const double lock : {1.0, 0.0, 0.5}) {
        values.LockFlag = lock;
        dialog.Text1.SetText("x");
        dialog.Text2.SetText("y");
        dialog.Text3.SetText("z");
        Open([&] {
            EXPECT_EQ(Front(), "login");
            ExpectBoxes("", "", "");
            EXPECT_EQ(dialog.Check1.Checked(), lock == 1.0);
            EXPECT_EQ(dialog.Label2.Caption(), "System Unlock"); // whatever the lock says
        });
    }
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(PasswordDialogTest, TextsOfTheDialog) {
    EXPECT_EQ(dialog.Window.Caption(), "NRV-718 Password");
    EXPECT_EQ(dialog.LoginCaption.Caption(), "Insert Password");
    EXPECT_EQ(dialog.SwitchEnds[0].Caption(), "Unlock");
    EXPECT_EQ(dialog.SwitchEnds[1].Caption(), "Lock");
    EXPECT_EQ(dialog.NewCaption.Caption(), "Insert New Password");
    EXPECT_EQ(dialog.ConfirmCaption.Caption(), "Confirm New Password");
    std::vector<std::string> captions;
    for (const controls::Button& button : dialog.Command1) {
        captions.push_back(button.Caption());
    }
    EXPECT_THAT(captions, ::testing::ElementsAre("OK", "Exit", "Config new password", "Confirm", "Cancel", "OK", "<<"));
    for (const controls::TextBox* box : {&dialog.Text1, &dialog.Text2, &dialog.Text3}) {
        EXPECT_EQ(box->MaxLength(), 6U);
    }
}

TEST_F(PasswordDialogTest, LoginIsAskedForAtEachOpening) {
    OpenSettings([] {});
    Open([this] { EXPECT_EQ(Front(), "login"); });
}

TEST_F(PasswordDialogTest, WrongPasswordIsToldAsOftenAsItIsTyped) {
    Open([this] {
        for (const char* typed : {"", "abc 1", "Abc 2", "Abc", "Abc 1x", "Xbc 1 ", " Abc 1"}) {
            LogIn(typed);
            ExpectTold("Insert Password", "Password incorrect");
            EXPECT_EQ(Front(), "login");
            ExpectBoxes(typed, "", "");
        }
        LogIn("Abc 1 ");
        EXPECT_EQ(Front(), "settings");
    });
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(PasswordDialogTest, BlanksAtTheEndNeedNotBeTyped) {
    Open([this] {
        LogIn("Abc 1");
        EXPECT_EQ(Front(), "settings");
    });
}

TEST_F(PasswordDialogTest, EmptyBoxMatchesSixBlanksAlone) {
    values.DevicePassword.fill(' ');
    Open([this] {
        LogIn("");
        EXPECT_EQ(Front(), "settings");
    });
    values.DevicePassword.fill(0.0);
    Open([this] {
        LogIn("");
        EXPECT_EQ(Front(), "login");
        ExpectTold("Insert Password", "Password incorrect");
    });
}

TEST_F(PasswordDialogTest, EnterInTheLoginIsOkAndOtherKeysAreTyped) {
    Open([this] {
        for (int key = 1; key < 256; ++key) {
            if (key != 13) {
                EXPECT_EQ(dialog.Text1.UserKey(static_cast<char>(key)), static_cast<char>(key));
            }
        }
        EXPECT_EQ(Front(), "login");
        EXPECT_TRUE(world.Boxes.Shown.empty());
        dialog.Text1.UserText("Abc 1");
        dialog.Text1.UserKey(13);
        EXPECT_EQ(Front(), "settings");
    });
}

TEST_F(PasswordDialogTest, DemoDevicesPasswordIsSixZeros) {
    program.Link.DemoMode = true;
    program.Devices.ReadDeviceState(Id);
    Open([this] {
        LogIn("000000");
        EXPECT_EQ(Front(), "settings");
    });
    EXPECT_THAT(program.Stores.ParamValues[20].DevicePassword, ::testing::Each(48.0)); // never read
}

TEST_F(PasswordDialogTest, ButtonsTurnThePages) {
    OpenSettings([this] {
        dialog.Command1[6].UserClick(); // "<<"
        EXPECT_EQ(Front(), "login");
        ExpectBoxes("", "", "");
        LogIn("Abc 1");
        dialog.Command1[2].UserClick(); // "Config new password"
        EXPECT_EQ(Front(), "new");
        TypeNew("one", "two");
        dialog.Command1[4].UserClick(); // "Cancel"
        EXPECT_EQ(Front(), "login");
        ExpectBoxes("", "", "");
        dialog.Command1[1].UserClick(); // "Exit"
    });
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("run tool dialog 3", "close tool dialog 3"));
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(PasswordDialogTest, LockingRebuildsTheOptionBitsAndSendsThem) {
    values.MuteWithPreset = 1.0;
    values.OptionBit5 = 1.0;
    values.DelayUnit = 1.0;
    const model::PresetImageRow before = image;
    OpenSettings([this] {
        dialog.Check1.UserToggle();
        EXPECT_TRUE(world.Port.Sent.empty()); // the switch alone does nothing
        dialog.Command1[3].UserClick();
        EXPECT_EQ(Front(), "settings");
    });
    ExpectSent({Options(0xE4)}); // 4 + 32 + 64 + 128
    EXPECT_EQ(values.LockFlag, 1.0);
    EXPECT_EQ(dialog.Label2.Caption(), "System Lock");
    ExpectChanged(before, {{SystemPage + 16, 0xE4}});
    EXPECT_FALSE(form.Frame5[0].Enabled());
    EXPECT_FALSE(world.Forms.EditNames.Text1[2].Enabled());
}

TEST_F(PasswordDialogTest, UnlockingOpensTheWindow) {
    values.LockFlag = 1.0;
    values.OptionBit3 = 1.0;
    values.InputType = 1.0;
    form.Frame5[0].SetEnabled(false);
    OpenSettings([this] {
        EXPECT_TRUE(dialog.Check1.Checked());
        dialog.Check1.UserToggle();
        dialog.Command1[3].UserClick();
        EXPECT_EQ(Front(), "settings");
    });
    ExpectSent({Options(0x18)}); // 8 + 16
    EXPECT_EQ(image.SystemPage[16], 0x18);
    EXPECT_EQ(values.LockFlag, 0.0);
    EXPECT_EQ(dialog.Label2.Caption(), "System Unlock");
    EXPECT_TRUE(form.Frame5[0].Enabled());
}

TEST_F(PasswordDialogTest, StatusChangesBeforeTheFrameWhenLockingAndAfterItWhenUnlocking) {
    std::vector<std::string> seen;
    std::vector<bool> enabled;
    world.Port.Answer = [&](const Frame& frame) {
        seen.push_back(dialog.Label2.Caption());
        enabled.push_back(form.Frame5[0].Enabled());
        return line.Answer(frame);
    };
    OpenSettings([this] {
        dialog.Check1.SetValue(1);
        dialog.Command1[3].UserClick();
        dialog.Check1.SetValue(0);
        dialog.Command1[3].UserClick();
        EXPECT_EQ(dialog.Label2.Caption(), "System Unlock");
    });
    EXPECT_THAT(seen, ::testing::ElementsAre("System Lock", "System Lock"));
    EXPECT_THAT(enabled, ::testing::ElementsAre(true, false)); // the window follows after the frame
}

TEST_F(PasswordDialogTest, ConfirmWithoutAChangeSendsTheFrameAgain) {
    OpenSettings([this] {
        dialog.Command1[3].UserClick();
        dialog.Command1[3].UserClick();
    });
    ExpectSent({Options(0), Options(0)});
}

TEST_F(PasswordDialogTest, ReportedFailureWhenLockingLeavesTheLockInTheStore) {
    Silence(0x11);
    OpenSettings([this] {
        dialog.Check1.SetValue(1);
        dialog.Command1[3].UserClick();
        EXPECT_EQ(Front(), "settings");
    });
    EXPECT_EQ(world.Port.Sent.size(), 5U);
    EXPECT_EQ(values.LockFlag, 1.0);
    EXPECT_EQ(image.SystemPage[16], 0x80);
    EXPECT_EQ(dialog.Label2.Caption(), "System Lock");
    EXPECT_TRUE(form.Frame5[0].Enabled()); // not greyed
    EXPECT_FALSE(Loaded(0));
}

TEST_F(PasswordDialogTest, ReportedFailureWhenUnlockingLeavesTheStatus) {
    values.LockFlag = 1.0;
    form.Frame5[0].SetEnabled(false);
    dialog.Label2.SetCaption("");
    OpenSettings([this] {
        dialog.Command1[3].UserClick(); // locked once more
        Silence(0x11);
        dialog.Check1.SetValue(0);
        dialog.Command1[3].UserClick();
    });
    EXPECT_EQ(values.LockFlag, 0.0);
    EXPECT_EQ(dialog.Label2.Caption(), "System Lock");
    EXPECT_FALSE(form.Frame5[0].Enabled());
}

TEST_F(PasswordDialogTest, SilentFailureCountsAsMade) {
    program.Link.ReportLinkFailure = false;
    Silence(0x11);
    OpenSettings([this] {
        dialog.Check1.SetValue(1);
        dialog.Command1[3].UserClick();
    });
    EXPECT_TRUE(world.Boxes.Shown.empty());
    EXPECT_FALSE(form.Frame5[0].Enabled());
}

TEST_F(PasswordDialogTest, NewPasswordGoesToTheStoreAndTheDeviceAndNotIntoTheImage) {
    const model::PresetImageRow before = image;
    OpenSettings([this] {
        dialog.Command1[2].UserClick();
        TypeNew("n\xE9w 1 ", "n\xE9w 1 ");
        dialog.Command1[5].UserClick();
        EXPECT_EQ(Front(), "login");
        ExpectBoxes("", "", "");
        LogIn("Abc 1");
        ExpectTold("Insert Password", "Password incorrect");
        LogIn("n\xE9w 1");
        EXPECT_EQ(Front(), "settings");
    });
    ExpectSent({FrameOf({0x11, 0, 26, 0, 0, 'n'}), FrameOf({0x11, 0, 27, 0, 0, 0xE9}),
                FrameOf({0x11, 0, 28, 0, 0, 'w'}), FrameOf({0x11, 0, 29, 0, 0, ' '}), FrameOf({0x11, 0, 30, 0, 0, '1'}),
                FrameOf({0x11, 0, 31, 0, 0, ' '})});
    EXPECT_THAT(values.DevicePassword, ::testing::ElementsAre(110, 233, 119, 32, 49, 32));
    ExpectChanged(before, {});
}

TEST_F(PasswordDialogTest, EnterInEitherNewBoxIsOkToo) {
    const std::array<controls::TextBox*, 2> boxes = {&dialog.Text2, &dialog.Text3};
    for (controls::TextBox* box : boxes) {
        values.DevicePassword = {'A', 'b', 'c', ' ', '1', ' '};
        OpenSettings([this, box] {
            dialog.Command1[2].UserClick();
            TypeNew("secret", "secret");
            EXPECT_EQ(box->UserKey('x'), 'x');
            EXPECT_EQ(box->UserKey(8), 8);
            EXPECT_EQ(Front(), "new");
            box->UserKey(13);
            EXPECT_EQ(Front(), "login");
        });
        EXPECT_EQ(values.DevicePassword[0], 's');
    }
}

TEST_F(PasswordDialogTest, ShortNewPasswordIsRefused) {
    OpenSettings([this] {
        dialog.Command1[2].UserClick();
        for (const auto& [first, second] : {std::pair{"", ""}, std::pair{"five5", "five55"},
                                            std::pair{"five55", "five5"}, std::pair{"five5", "five5"}}) {
            TypeNew(first, second);
            dialog.Command1[5].UserClick();
            ExpectTold("Password incorrect", "Insert 6 character");
            EXPECT_EQ(Front(), "new");
            ExpectBoxes("Abc 1", first, second);
        }
    });
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_EQ(values.DevicePassword[0], 'A');
}

TEST_F(PasswordDialogTest, NewPasswordsThatDifferAreRefused) {
    OpenSettings([this] {
        dialog.Command1[2].UserClick();
        TypeNew("secret", "Secret");
        dialog.Command1[5].UserClick();
        ExpectTold("New Password", "Passwords don't match ");
        EXPECT_EQ(Front(), "new");
        ExpectBoxes("Abc 1", "secret", "Secret");
    });
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_EQ(values.DevicePassword[0], 'A');
}

TEST_F(PasswordDialogTest, ReportedFailureKeepsTheFirstPositionsOfTheNewPassword) {
    int writes = 0;
    world.Port.Answer = [&](const Frame& frame) {
        return frame[3] == 0x11 && ++writes > 2 ? Bytes{} : line.Answer(frame);
    };
    OpenSettings([this] {
        dialog.Command1[2].UserClick();
        TypeNew("secret", "secret");
        dialog.Command1[5].UserClick();
        EXPECT_EQ(Front(), "new");
        ExpectBoxes("Abc 1", "secret", "secret");
    });
    EXPECT_EQ(world.Port.Sent.size(), 7U);
    EXPECT_THAT(values.DevicePassword, ::testing::ElementsAre('s', 'e', 'c', ' ', '1', ' '));
    EXPECT_FALSE(Loaded(0));
}

TEST_F(PasswordDialogTest, DemoModeWorksOnTheWindowAlone) {
    program.Link.DemoMode = true;
    OpenSettings([this] {
        dialog.Check1.SetValue(1);
        dialog.Command1[3].UserClick();
        EXPECT_FALSE(form.Frame1[16].Enabled());
        dialog.Command1[2].UserClick();
        TypeNew("secret", "secret");
        dialog.Command1[5].UserClick();
        LogIn("secret");
        EXPECT_EQ(Front(), "settings");
        dialog.Check1.SetValue(0);
        dialog.Command1[3].UserClick();
        EXPECT_TRUE(form.Frame1[16].Enabled());
    });
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_TRUE(world.Boxes.Shown.empty());
}

} // namespace
} // namespace nrv::testing
