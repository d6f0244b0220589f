#include "model/command_window.h"
#include "presets/names_dialog.h"

namespace nrv::testing {
namespace {

class NamesDialogTest : public CommandWindow {
  protected:
    void Open(const std::function<void()>& while_it_stands) { InDialog(controls::EditNamesTool, while_it_stands); }
    Frame NameFrame(int channel, const std::string& six) const {
        std::array<int, 9> payload{0x0E, channel, 0};
        for (std::size_t j = 0; j < 6; ++j) {
            payload[3 + j] = static_cast<std::uint8_t>(six[j]);
        }
        return FrameOf(payload);
    }

    controls::FrmEditLabel& dialog = world.Forms.EditNames;
};

TEST_F(NamesDialogTest, ShowsTheWindowsNames) {
    for (std::size_t c = 0; c < 8; ++c) {
        form.Label300[c].SetCaption("name " + std::to_string(c));
    }
    Open([&] {
        for (std::size_t c = 0; c < 8; ++c) {
            EXPECT_EQ(dialog.Text1[c].Text(), "name " + std::to_string(c));
            EXPECT_EQ(dialog.Text1[c].MaxLength(), 6U);
            EXPECT_EQ(dialog.Text1[c].Locked(), c < 2) << c;
            EXPECT_TRUE(dialog.Text1[c].Enabled());
        }
    });
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_EQ(dialog.Window.Caption(), "NRV-718 Edit Names");
}

TEST_F(NamesDialogTest, NameOfAChannelOpensItToo) {
    program.Events.Run(UserIn(0), [this] { form.Label300[3].UserClick(); });
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("run tool dialog 0"));
}

TEST_F(NamesDialogTest, CancelClosesItWithoutAWord) {
    const model::PresetImageRow before = image;
    Open([this] {
        dialog.Text1[2].UserText("gone");
        dialog.Command1[1].UserClick();
    });
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("run tool dialog 0", "close tool dialog 0"));
    EXPECT_TRUE(world.Boxes.Shown.empty());
    EXPECT_TRUE(world.Port.Sent.empty());
    ExpectChanged(before, {});
}

TEST_F(NamesDialogTest, AnsweredNoStaysOpen) {
    world.Boxes.Answers = {BoxAnswer::No};
    const std::string label = form.Label300[2].Caption();
    Open([this] {
        dialog.Text1[2].UserText("gone");
        dialog.Command1[0].UserClick();
    });
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectBox(world.Boxes.Shown[0], "Edit Names", "               Are you sure ? ", BoxIcon::None, BoxButtons::YesNo);
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("run tool dialog 0"));
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_EQ(form.Label300[2].Caption(), label);
}

TEST_F(NamesDialogTest, YesAppliesTheNamesAndCloses) {
    const model::PresetImageRow before = image;
    Open([this] {
        const std::array<std::string, 8> typed = {"left", "right", "", "X", "ab", "abc", "abcd", "abcdef"};
        for (std::size_t c = 0; c < 8; ++c) {
            dialog.Text1[c].UserText(typed[c]);
        }
        dialog.Command1[0].UserClick();
    });
    ExpectSent({NameFrame(2, "      "), NameFrame(3, "   X  "), NameFrame(4, "  ab  "), NameFrame(5, "  abc "),
                NameFrame(6, " abcd "), NameFrame(7, "abcdef")});
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("run tool dialog 0", "close tool dialog 0"));
    EXPECT_EQ(form.Label300[2].Caption(), "");
    EXPECT_EQ(form.Label300[3].Caption(), "X");
    EXPECT_EQ(form.Frame1[0].Caption(), "left"); // shown, though it is stored nowhere
    EXPECT_EQ(form.Option2[1].Caption(), "Out + left");
    EXPECT_EQ(form.SSTab1.Tab(), 7);
    for (std::size_t n = 0; n < 144; ++n) {
        EXPECT_EQ(image.PresetBody[n], before.PresetBody[n]) << n;
    }
}

TEST_F(NamesDialogTest, EmptyNameShowsItsBlanksAfterTheNextLoad) {
    Open([this] {
        dialog.Text1[2].UserText("");
        dialog.Command1[0].UserClick();
    });
    EXPECT_EQ(form.Label300[2].Caption(), "");
    world.Files.File = world.Folder.Path() / "a.n91";
    form.Command2[1].UserClick();
    form.Command2[0].UserClick();
    EXPECT_EQ(form.Label300[2].Caption(), "      ");
}

TEST_F(NamesDialogTest, ReportedFailureEndsItAndTheDialogCloses) {
    Silence(0x0E);
    Open([this] {
        dialog.Text1[2].UserText("Bass");
        dialog.Command1[0].UserClick();
    });
    EXPECT_EQ(world.Port.CountSent(0x0E), 5);
    EXPECT_NE(form.Label300[2].Caption(), "Bass");
    EXPECT_EQ(image.PresetBody[187], 'B'); // 186 is the blank before it
    EXPECT_FALSE(Loaded(0));
    EXPECT_EQ(world.Host.Log.back(), "close tool dialog 0");
}

TEST_F(NamesDialogTest, IsAsTheLockOfTheDeviceAtHandHasIt) {
    const auto expect_enabled = [&](bool enabled) {
        Open([&] {
            for (const controls::TextBox& box : dialog.Text1) {
                EXPECT_EQ(box.Enabled(), enabled);
            }
            EXPECT_EQ(dialog.Command1[0].Enabled(), enabled);
            EXPECT_TRUE(dialog.Command1[1].Enabled());
        });
    };
    values.LockFlag = 1.0;
    dialog.Text1[2].SetEnabled(true); // as the window of an unlocked device leaves it
    dialog.Command1[0].SetEnabled(true);
    expect_enabled(false);
    values.LockFlag = 0.0;
    expect_enabled(true);
}

} // namespace
} // namespace nrv::testing
