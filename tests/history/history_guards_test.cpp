#include "history/rack_world.h"
#include "model/tables.h"

namespace nrv::testing {
namespace {

/// What a step leaves alone, and when.
class HistoryGuards : public RackWorld {
  protected:
    void EditOnce() {
        By(1, [&] { Window(1).Slider2[20].UserMove(Window(1).Slider2[20].Shown() == 7 ? 9 : 7); });
    }
    std::string Note() { return program.List.Devices.RowNote(1); }
    controls::FrmCtrl& form = Window(1);
};

TEST_F(HistoryGuards, AnUndoOfNothingLeavesWhatCanBeGoneAgain) {
    EditOnce();
    const All after = Look(1);
    Undo(1);
    program.Events.Run(UserOutside(), [&] { program.History.Undo(); });
    Redo(1);
    ExpectSame(Look(1), after, "redone");
}

TEST_F(HistoryGuards, WhatFollowedABrokenLoadIsNotGoneAgainWithoutIt) {
    const auto file = AnyFile("Bad.n91");
    Bytes bytes = world.Folder.Read("Bad.n91");
    bytes[model::PeqOffsets[15] + 1] = 130; // a frequency that does not exist
    world.Folder.Write("Bad.n91", bytes);
    Load(1, file);
    EditOnce();
    ASSERT_EQ(Depth(1), 2U);
    Undo(1);
    EXPECT_TRUE(program.Main.Redo.Enabled());
    Undo(1);
    EXPECT_FALSE(program.Main.Redo.Enabled());
}

TEST_F(HistoryGuards, ALoadAndAReadAreWhatTheListComparesWith) {
    EditOnce();
    EXPECT_NE(Note(), "");
    Load(1, AnyFile("Hall.n91"));
    EXPECT_EQ(Note(), "");
    EditOnce();
    EXPECT_NE(Note(), "");
    Read(1, 3);
    EXPECT_EQ(Note(), "");
}

TEST_F(HistoryGuards, AFlatteningGoesOnFromNoDrag) {
    program.History.Gesture = [] { return 1; };
    Flat(1, 2);
    const std::size_t depth = Depth(1);
    By(1, [&] { form.Slider2[20].UserMove(form.Slider2[20].Shown() == 7 ? 9 : 7); }); // the first section of Out 1
    Flat(1, 2);
    EXPECT_EQ(Depth(1), depth + 2);
}

TEST_F(HistoryGuards, ThePointerTellsOfALongWayBackAndOfNoShortOne) {
    std::vector<controls::Pointer> pointers;
    world.Port.Answer = [this, &pointers](const Frame& frame) {
        pointers.push_back(program.Main.Window.MousePointer());
        return Answer(frame);
    };
    EditOnce();
    Load(1, AnyFile("Hall.n91"));
    pointers.clear();
    Undo(1);
    EXPECT_GT(pointers.size(), 50U);
    EXPECT_THAT(pointers, ::testing::Each(controls::Pointer::Hourglass));
    pointers.clear();
    Undo(1);
    EXPECT_THAT(pointers, ::testing::ElementsAre(controls::Pointer::Default));
    EXPECT_EQ(program.Main.Window.MousePointer(), controls::Pointer::Default);
}

TEST_F(HistoryGuards, TheOnlyWindowThatDiesInAnEditRemembersNothing) {
    for (const int slot : {0, 2}) {
        program.Events.Run(UserIn(slot), [&] { program.Control.QueryUnload(slot); });
    }
    EditOnce();
    answers_left = 0;
    EditOnce();
    ASSERT_FALSE(Loaded(1));
    answers_left = -1;
    for (int row = 0; row < Windows; ++row) {
        DoubleClick(row);
        ASSERT_TRUE(Loaded(row));
        EXPECT_EQ(Depth(row), 0U);
        EXPECT_FALSE(program.Main.Undo.Enabled());
    }
}

TEST_F(HistoryGuards, AStoreThatFailsIsNotWhatAnotherWindowIsComparedWith) {
    By(2, [&] { Window(2).Check1[4].UserToggle(); });
    const std::string note = program.List.Devices.RowNote(2);
    EXPECT_NE(note, "");
    answers_left = 5;
    InDialog(1, controls::StorePresetTool, [&] { world.Forms.Store.Command1[1].UserClick(); });
    ASSERT_FALSE(Loaded(1));
    EXPECT_EQ(program.List.Devices.RowNote(2), note);
    answers_left = -1;
    By(2, [&] { Window(2).Check1[4].UserToggle(); });
    EXPECT_EQ(program.List.Devices.RowNote(2), "");
}

TEST_F(HistoryGuards, AWindowOpenedAnewInTheSameOperationBeginsWithNoStep) {
    program.Events.Run(UserIn(1), [&] { program.Control.QueryUnload(1); });
    answers_left = 20; // its bytes do not come, and the window opens all the same
    DoubleClick(1);
    answers_left = -1;
    const int slot = program.Windows.CurrentWindow;
    ASSERT_TRUE(Loaded(slot));
    DoubleClick(1); // it goes and opens anew
    const int anew = program.Windows.CurrentWindow;
    ASSERT_TRUE(Loaded(anew));
    EXPECT_EQ(Depth(anew), 0U);
}

TEST_F(HistoryGuards, ACodeWithoutAnEntryIsNotSentOnTheWayBack) {
    program.Stores.PresetImage[5].PresetBody[model::PeqOffsets[15] + 1] = 130;
    Load(1, AnyFile("Hall.n91"));
    FramesSent();
    Undo(1);
    for (const Frame& frame : world.Port.Sent) {
        EXPECT_FALSE(frame[3] == 5 && frame[4] == 1 && frame[5] == 5) << "the sixth section of In B";
    }
    EXPECT_FALSE(world.Port.Sent.empty());
}

} // namespace
} // namespace nrv::testing
