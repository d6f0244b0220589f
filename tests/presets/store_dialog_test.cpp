#include "controls/observed.h"
#include "model/command_window.h"
#include "ports/numbering.h"
#include "presets/store_dialog.h"

#include <random>

namespace nrv::testing {
namespace {

using controls::Aspect;

class StoreDialogTest : public CommandWindow {
  protected:
    StoreDialogTest() {
        for (std::size_t n = 0; n < 432; ++n) {
            image.PresetBody[n] = static_cast<std::uint8_t>(random() % 256);
        }
        image.ViewState[18] = 0x5A;
        for (std::size_t position = 0; position < 8; ++position) {
            values.PresetNames[position] = "Name of place  " + std::to_string(position + 1);
        }
    }
    void Open(const std::function<void()>& while_it_stands) { InDialog(controls::StorePresetTool, while_it_stands); }
    void Store(int position, const std::string& name) {
        std::string text = name;
        program.StoreDialog.StorePreset(position, text);
    }
    Frame Write(int address, int value) const { return FrameOf({0x11, address / 256, address % 256, 0, 0, value}); }
    /// Every frame of a store, from what the device is to hold afterwards.
    std::vector<Frame> Frames(int position, const std::string& padded) const {
        std::vector<Frame> frames{Write(18, 0x5A), Write(48 + position, 0x55)};
        for (int i = 0; i < 16; ++i) {
            frames.push_back(
                Write(64 + 16 * position + i, static_cast<std::uint8_t>(padded[static_cast<std::size_t>(i)])));
        }
        for (int i = 0; i < 432; ++i) {
            frames.push_back(Write(640 + 432 * position + i, image.PresetBody[static_cast<std::size_t>(i)]));
        }
        return frames;
    }
    std::string PageName(int position) const {
        std::string name;
        for (int i = 0; i < 16; ++i) {
            name += static_cast<char>(image.SystemPage[At(64 + 16 * position + i)]);
        }
        return name;
    }

    std::mt19937 random{718};
    controls::FrmStore& dialog = world.Forms.Store;
};

TEST_F(StoreDialogTest, OpensOnTheFirstPosition) {
    dialog.ProgressBar1.SetVisible(true);
    dialog.ProgressBar1.SetValue(77);
    Open([&] {
        EXPECT_THAT(dialog.List1.Items(),
                    ::testing::ElementsAreArray(values.PresetNames.begin(), values.PresetNames.begin() + 8));
        EXPECT_EQ(dialog.List1.Shown(), 0);
        EXPECT_EQ(dialog.Text1.Text(), "Name of place  1");
        EXPECT_EQ(dialog.Text1.MaxLength(), 16U);
        EXPECT_EQ(dialog.Combo1.ShownText(), "1");
        EXPECT_THAT(dialog.Combo1.Items(), ::testing::ElementsAre("1", "2", "3", "4", "5", "6", "7", "8"));
        EXPECT_FALSE(dialog.ProgressBar1.Visible());
        EXPECT_EQ(dialog.ProgressBar1.Value(), 0);
    });
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_EQ(dialog.Window.Caption(), "NRV-718 Store preset");
}

TEST_F(StoreDialogTest, OpenedAgainForgetsTheLastChoice) {
    Open([&] { dialog.List1.UserDoubleClick(5); });
    Open([&] {
        EXPECT_EQ(dialog.List1.Shown(), 0);
        EXPECT_EQ(dialog.Text1.Text(), "Name of place  1");
        EXPECT_EQ(dialog.Combo1.Shown(), 0);
    });
}

TEST_F(StoreDialogTest, DoubleClickCopiesNameAndPositionAndAClickThePositionAlone) {
    Open([&] {
        dialog.List1.UserDoubleClick(6);
        EXPECT_EQ(dialog.Text1.Text(), "Name of place  7");
        EXPECT_EQ(dialog.Combo1.ShownText(), "7");
        dialog.List1.UserSelect(2);
        EXPECT_EQ(dialog.Text1.Text(), "Name of place  7");
        EXPECT_EQ(dialog.Combo1.ShownText(), "3");
        dialog.Combo1.UserSelect(5);
        EXPECT_EQ(dialog.Text1.Text(), "Name of place  7");
        EXPECT_EQ(dialog.List1.Shown(), 5);
    });
}

TEST_F(StoreDialogTest, TheStatusLineTellsWhatIsStoredOverWhat) {
    values.PresetUsed[0] = 85.0;
    values.PresetNames[0] = "Club Main       ";
    std::string asked;
    world.Boxes.WhileItStands = [&] { asked = program.Status.Text(); };
    world.Boxes.Answers = {BoxAnswer::No, BoxAnswer::No};
    Open([&] {
        dialog.Text1.UserText("Hall");
        dialog.Command1[1].UserClick();
        EXPECT_EQ(asked, "Stores \"Hall\" into position 1, over \"Club Main\"");
        EXPECT_EQ(program.Status.Text(), "");
        dialog.List1.UserSelect(1);
        dialog.Command1[1].UserClick();
        EXPECT_EQ(asked, "Stores \"Hall\" into position 2, which is empty");
    });
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(StoreDialogTest, LinesTellTheirNumbersAndEmptyOnesAreDim) {
    values.PresetUsed[2] = 85.0;
    Open([&] {
        ASSERT_EQ(dialog.List1.ItemToolTips().size(), 8U);
        EXPECT_EQ(dialog.List1.ItemToolTips()[2], "Position 3\nDouble click to copy name");
        EXPECT_EQ(dialog.List1.ItemToolTips()[7], "Position 8, empty\nDouble click to copy name");
        EXPECT_THAT(dialog.List1.DimItems(), ::testing::ElementsAre(true, true, false, true, true, true, true, true));
    });
}

TEST_F(StoreDialogTest, CancelClosesIt) {
    Open([&] { dialog.Command1[0].UserClick(); });
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("run tool dialog 1", "close tool dialog 1"));
    EXPECT_TRUE(world.Boxes.Shown.empty());
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(StoreDialogTest, QuestionHasNoAsItsDefaultAndNoLeavesTheDialogOpen) {
    world.Boxes.Answers = {BoxAnswer::No};
    Open([&] { dialog.Command1[1].UserClick(); });
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectBox(world.Boxes.Shown[0], "Store Preset", "               Are you sure ? ", BoxIcon::None, BoxButtons::YesNo);
    EXPECT_EQ(world.Boxes.Shown[0].Default, BoxAnswer::No);
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("run tool dialog 1"));
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_EQ(values.PresetUsed[0], 0.0);
}

TEST_F(StoreDialogTest, YesStoresUnderTheWaitCursorAndCloses) {
    values.PresetUsed[4] = 85.0; // a used position asks nothing more
    std::vector<controls::Pointer> pointers;
    world.Port.Answer = [&](const Frame& frame) {
        pointers.push_back(program.Main.Window.MousePointer());
        return line.Answer(frame);
    };
    Open([&] {
        dialog.Combo1.UserSelect(4);
        dialog.Text1.UserText("Hall");
        dialog.Command1[1].UserClick();
    });
    EXPECT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectSent(Frames(4, "Hall            "));
    EXPECT_THAT(pointers, ::testing::Each(controls::Pointer::Hourglass));
    EXPECT_EQ(program.Main.Window.MousePointer(), controls::Pointer::Default);
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("run tool dialog 1", "close tool dialog 1"));
    EXPECT_EQ(form.Window.Caption(), "ID:9 NRV-718 - Last preset loaded: come from DEVICE - Hall            ");
}

TEST_F(StoreDialogTest, EveryPositionHasItsAddresses) {
    for (int position = 0; position < 8; ++position) {
        Store(position, "Position no. " + std::to_string(position) + "!!");
        const std::vector<Frame> frames = Frames(position, "Position no. " + std::to_string(position) + "!!");
        EXPECT_EQ(frames.size(), 450U);
        ExpectSent(frames);
    }
    // Worked by hand: byte 431 of position 7 lies at 640 + 432 * 7 + 431 = 4095.
    Store(7, "");
    EXPECT_EQ(world.Port.Sent.back(), FrameOf({0x11, 0x0F, 0xFF, 0, 0, image.PresetBody[431]}));
    EXPECT_EQ(world.Port.Sent[18], FrameOf({0x11, 0x0E, 0x50, 0, 0, image.PresetBody[0]})); // 3664
}

TEST_F(StoreDialogTest, ViewBoxGoesWhereTheMutesWere) {
    for (std::size_t channel = 0; channel < 8; ++channel) {
        values.ChannelMute[channel] = channel % 3 == 0 ? 1.0 : 0.0;
    }
    image.SystemPage[18] = 0;
    image.PresetBody[71] = 0;
    Store(0, "x");
    EXPECT_EQ(world.Port.Sent[0], FrameOf({0x11, 0, 18, 0, 0, 0x5A}));
    EXPECT_EQ(image.SystemPage[18], 0x49); // 1 + 8 + 64
    EXPECT_EQ(image.PresetBody[71], 0x49);
    EXPECT_EQ(world.Port.Sent[18 + 71], FrameOf({0x11, 0x02, 0xC7, 0, 0, 0x49})); // 640 + 71 = 711
}

TEST_F(StoreDialogTest, BarGoesTo450Of480AndVanishes) {
    std::vector<int> values_seen;
    bool hidden_on_the_way = false;
    dialog.ProgressBar1.SetValue(13);
    dialog.ProgressBar1.Observe([&](Aspect aspect) {
        if (aspect == Aspect::Repaint && dialog.ProgressBar1.Value() > 0) {
            values_seen.push_back(dialog.ProgressBar1.Value());
            hidden_on_the_way |= !dialog.ProgressBar1.Visible();
        }
    });
    Store(1, "x");
    dialog.ProgressBar1.Observe({});
    ASSERT_EQ(values_seen.size(), 450U);
    for (int n = 0; n < 450; ++n) {
        ASSERT_EQ(values_seen[static_cast<std::size_t>(n)], n + 1);
    }
    EXPECT_FALSE(hidden_on_the_way);
    EXPECT_EQ(dialog.ProgressBar1.Maximum(), 480);
    EXPECT_EQ(dialog.ProgressBar1.Value(), 450);
    EXPECT_FALSE(dialog.ProgressBar1.Visible());
}

TEST_F(StoreDialogTest, NamesArePaddedToSixteen) {
    const std::map<std::string, std::string> names = {{"", "                "},
                                                      {"A", "A               "},
                                                      {"fifteen letters", "fifteen letters "},
                                                      {"sixteen letters!", "sixteen letters!"},
                                                      {"\xC4\xFF", "\xC4\xFF              "}};
    for (const auto& [typed, padded] : names) {
        std::string text = typed;
        program.StoreDialog.StorePreset(3, text);
        EXPECT_EQ(text, padded); // in place
        EXPECT_EQ(values.PresetNames[3], padded);
        EXPECT_EQ(PageName(3), padded);
        EXPECT_EQ(form.Window.Caption(), "ID:9 NRV-718 - Last preset loaded: come from DEVICE - " + padded);
        ExpectSent(Frames(3, padded));
    }
}

TEST_F(StoreDialogTest, LongerNameIsStoredInItsFirstSixteen) {
    std::string text = "seventeen letters";
    program.StoreDialog.StorePreset(0, text);
    EXPECT_EQ(text, "seventeen letters");
    EXPECT_EQ(values.PresetNames[0], "seventeen letter");
    EXPECT_EQ(PageName(0), "seventeen letter");
}

TEST_F(StoreDialogTest, NothingElseOfTheImageChanges) {
    const model::PresetImageRow before = image;
    Store(2, "Hall");
    std::map<std::size_t, int> changed{{71, 0}, {SystemPage + 18, 0}};
    const std::string padded = "Hall            ";
    for (std::size_t i = 0; i < 16; ++i) {
        changed[SystemPage + 96 + i] = static_cast<std::uint8_t>(padded[i]);
    }
    ExpectChanged(before, changed);
    EXPECT_EQ(values.PresetUsed[2], 85.0);
    EXPECT_EQ(values.PresetUsed[1], 0.0);
    EXPECT_EQ(values.PresetUsed[3], 0.0);
}

TEST_F(StoreDialogTest, ReportedFailureLeavesWhatWasDone) {
    const std::string title = form.Window.Caption();
    int frames = 0;
    world.Port.Answer = [&](const Frame& frame) { return ++frames > 20 ? Bytes{} : line.Answer(frame); };
    Open([&] {
        dialog.Combo1.UserSelect(5);
        dialog.Text1.UserText("Half");
        dialog.Command1[1].UserClick();
    });
    EXPECT_EQ(world.Port.Sent.size(), 25U); // the twenty-first five times
    ASSERT_EQ(world.Boxes.Shown.size(), 2U);
    EXPECT_EQ(world.Boxes.Shown[1].Title, "Communication problem");
    EXPECT_EQ(values.PresetNames[5], "Half            ");
    EXPECT_EQ(PageName(5), "Half            ");
    EXPECT_EQ(values.PresetUsed[5], 85.0);
    EXPECT_TRUE(dialog.ProgressBar1.Visible());
    EXPECT_EQ(dialog.ProgressBar1.Value(), 20);
    EXPECT_EQ(form.Window.Caption(), title);
    EXPECT_EQ(program.Main.Window.MousePointer(), controls::Pointer::Default);
    EXPECT_EQ(world.Host.Log.back(), "close tool dialog 1");
}

TEST_F(StoreDialogTest, FailedUsedMarkLeavesThePositionUnused) {
    Silence(0x11);
    Store(5, "None");
    EXPECT_EQ(world.Port.Sent.size(), 5U);
    EXPECT_EQ(values.PresetUsed[5], 0.0);
    EXPECT_EQ(values.PresetNames[5], "None            ");
    EXPECT_EQ(dialog.ProgressBar1.Value(), 0);
    EXPECT_TRUE(dialog.ProgressBar1.Visible());
}

TEST_F(StoreDialogTest, AFailureAtAByteOfTheNameEndsTheStoreWithItsTitleAsItWas) {
    const std::string title = form.Window.Caption();
    int frames = 0;
    world.Port.Answer = [&](const Frame& frame) { return ++frames <= 4 ? line.Answer(frame) : Bytes{}; };
    Store(5, "None"); // the mutes, the mark, and two letters
    EXPECT_EQ(world.Port.Sent.size(), 4U + 5U);
    EXPECT_EQ(form.Window.Caption(), title);
    EXPECT_TRUE(dialog.ProgressBar1.Visible());
}

TEST_F(StoreDialogTest, UnreportedFailureGoesOnToTheEnd) {
    program.Link.ReportLinkFailure = false;
    int frames = 0;
    world.Port.Answer = [&](const Frame& frame) { return ++frames <= 5 ? Bytes{} : line.Answer(frame); };
    Store(0, "x");
    EXPECT_EQ(world.Port.Sent.size(), 454U);
    EXPECT_FALSE(dialog.ProgressBar1.Visible());
}

TEST_F(StoreDialogTest, DemoModeChangesNamesAndTitleAndSendsNothing) {
    program.Link.DemoMode = true;
    Open([&] {
        dialog.Combo1.UserSelect(1);
        dialog.Text1.UserText("Demo");
        dialog.Command1[1].UserClick();
    });
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_EQ(values.PresetNames[1], "Demo            ");
    EXPECT_EQ(values.PresetUsed[1], 85.0);
    EXPECT_EQ(form.Window.Caption(), "ID:9 NRV-718 - Last preset loaded: come from DEVICE - Demo            ");
    Open([&] { EXPECT_EQ(dialog.List1.Items()[1], "Demo            "); });
}

} // namespace
} // namespace nrv::testing
