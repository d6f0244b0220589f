#include "controls/forms.h"
#include "controls/windows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace nrv::testing {
namespace {

using namespace nrv::controls;

TEST(FrmSplash, HasTheTextsOfTheSearch) {
    const FrmSplash splash;
    EXPECT_EQ(splash.Progress.Caption(), "0");
    EXPECT_EQ(splash.Searching.Caption(), "Searching COM: please wait ");
    EXPECT_EQ(splash.Reason.Caption(), "");
    EXPECT_FALSE(splash.Timer1.Running());
}

TEST(MDIFrmMain, HasTitleAndExit) {
    const MDIFrmMain main;
    EXPECT_EQ(main.Window.Caption(), "NRV-718 Multi Device Remote Control");
    EXPECT_EQ(main.Exit.Caption(), "Exit");
    EXPECT_EQ(main.StatusLine.Caption(), "");
    EXPECT_FALSE(main.SerialTimer.Running());
    EXPECT_FALSE(main.Timer1.Running());
    for (const Button* const entry : {&main.Undo, &main.Redo, &main.Compare, &main.Revert}) {
        EXPECT_FALSE(entry->Enabled());
    }
    EXPECT_EQ(main.Undo.Caption(), "Undo");
    EXPECT_EQ(main.Redo.Caption(), "Redo");
    EXPECT_EQ(main.Compare.Caption(), "Compare with the last preset");
    EXPECT_EQ(main.Revert.Caption(), "Revert to the last preset");
}

TEST(FrmSelect, HasTitleFramesAndButtons) {
    const FrmSelect dialog;
    EXPECT_EQ(dialog.Window.Caption(), "Select");
    EXPECT_EQ(dialog.PortFrame.Caption(), "Communication Port");
    EXPECT_EQ(dialog.Link[0].Caption(), "USB");
    EXPECT_EQ(dialog.Link[1].Caption(), "RS485");
    EXPECT_EQ(dialog.ConnectionFrame.Caption(), "Connection");
    EXPECT_EQ(dialog.Connection[0].Caption(), "with one device");
    EXPECT_EQ(dialog.Connection[1].Caption(), "with 2 or max 20 device");
    EXPECT_EQ(dialog.Connection[2].Caption(), "with 2 or max 10 device");
    EXPECT_EQ(dialog.Connection[3].Caption(), "with more device");
    EXPECT_EQ(dialog.IdFrame.Caption(), "ID Select");
    EXPECT_EQ(dialog.ComFrame.Caption(), "COM Select");
    EXPECT_EQ(dialog.Exit.Caption(), "Exit");
    EXPECT_EQ(dialog.Proceed.Caption(), ">>");
}

TEST(FrmSelect, ListsNoneAnd32Ports) {
    const FrmSelect dialog;
    ASSERT_EQ(dialog.ComSelect.Items().size(), 33U);
    EXPECT_EQ(dialog.ComSelect.Items()[0], "NONE");
    EXPECT_EQ(dialog.ComSelect.Items()[1], "COM 1");
    EXPECT_EQ(dialog.ComSelect.Items()[10], "COM 10");
    EXPECT_EQ(dialog.ComSelect.Items()[32], "COM 32");
}

TEST(FrmSelect, ListsTheIds0To32) {
    const FrmSelect dialog;
    ASSERT_EQ(dialog.IdSelect.Items().size(), 33U);
    EXPECT_EQ(dialog.IdSelect.Items().front(), "0");
    EXPECT_EQ(dialog.IdSelect.Items().back(), "32");
    for (const List& ids : dialog.DeviceIds) {
        EXPECT_EQ(ids.Items(), dialog.IdSelect.Items());
    }
}

TEST(FrmSelect, HasTwentyNumberedLinesInTwoFrames) {
    const FrmSelect dialog;
    EXPECT_EQ(dialog.DeviceFrames[0].Caption(), "Set device ID");
    EXPECT_EQ(dialog.DeviceFrames[1].Caption(), "Set device ID");
    EXPECT_EQ(dialog.DeviceLines.size(), 20U);
    EXPECT_EQ(dialog.DeviceIds.size(), 20U);
    EXPECT_EQ(dialog.DeviceLines[0].Caption(), "Device1 with ID:");
    EXPECT_EQ(dialog.DeviceLines[9].Caption(), "Device10 with ID:");
    EXPECT_EQ(dialog.DeviceLines[10].Caption(), "Device11 with ID:");
    EXPECT_EQ(dialog.DeviceLines[19].Caption(), "Device20 with ID:");
}

TEST(FrmSelect, ItsTwoRowsOfOptionsAreGroupsOfTheirOwn) {
    FrmSelect dialog;
    dialog.Link[0].Select();
    dialog.Connection[0].Select();
    dialog.Connection[3].Select();
    EXPECT_TRUE(dialog.Link[0].Selected());
    EXPECT_FALSE(dialog.Connection[0].Selected());
    dialog.Link[1].Select();
    EXPECT_FALSE(dialog.Link[0].Selected());
    EXPECT_TRUE(dialog.Connection[3].Selected());
}

TEST(FrmSelect, HasAWidthForEachMode) {
    EXPECT_EQ(FrmSelect::NarrowWidth, 2805);
    EXPECT_EQ(FrmSelect::TenWidth, 5190);
    EXPECT_EQ(FrmSelect::TwentyWidth, 7600);
    EXPECT_EQ(FrmSelect().Window.Width(), 2805);
}

TEST(FrmSearchNet, HasTitleCaptionToolTipAndNotices) {
    const FrmSearchNet list;
    EXPECT_EQ(list.Window.Caption(), " List ID");
    EXPECT_EQ(list.ListCaption.Caption(), "Name && ID Device");
    EXPECT_EQ(list.Devices.ToolTip(), "Double Click to edit parameters");
    EXPECT_EQ(list.SearchingNotice.Caption(), "Please wait, searcing device......");
    EXPECT_EQ(list.LoadingNotice.Caption(), "Please wait, Loading controls ......");
    EXPECT_EQ(FrmSearchNet::ColumnWidth, 1935);
    EXPECT_FALSE(list.Timer1.Running());
    EXPECT_FALSE(list.Timer2.Running());
}

TEST(Windows, HasElevenFreeSlotsWithARecordEach) {
    Windows windows;
    EXPECT_EQ(windows.WindowSlots.size(), 11U);
    for (std::size_t slot = 0; slot < 11; ++slot) {
        EXPECT_FALSE(windows.WindowSlots[slot].InUse);
        EXPECT_EQ(windows.WindowSlots[slot].DeviceId, 0);
        ASSERT_NE(windows.ControlWindows[slot], nullptr);
        EXPECT_FALSE(windows.Loaded[slot]);
    }
    EXPECT_EQ(windows.CurrentWindow, 0);
    EXPECT_EQ(windows.OpenWindowTop, -1);
    EXPECT_TRUE(windows.FirstWindowPending);
    EXPECT_FALSE(windows.ControlEventsOff);
}

TEST(Windows, CurrentFollowsTheWindowLastActivated) {
    Windows windows;
    EXPECT_EQ(windows.CurrentDevice(), 0);
    windows.WindowSlots[10].DeviceId = 32;
    windows.CurrentWindow = 10;
    EXPECT_EQ(&windows.Current(), windows.ControlWindows[10].get());
    EXPECT_EQ(windows.CurrentDevice(), 32);
}

} // namespace
} // namespace nrv::testing
